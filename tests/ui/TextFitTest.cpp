#include "core/StoredWords.h"
#include "plist/PropertyList.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/Fit.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/Translations.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/views/AlertBox.h"
#include "ui/views/ReminderWindow.h"
#include "ui/views/SheetDialog.h"
#include "ui/views/SplashWindow.h"

#include <QDir>
#include <QLocale>
#include <QMenu>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>
#include <QTest>

#include <memory>

using namespace kpx;
using namespace kpx::test;

namespace {

/// A code that no language has.
const QString madeUp = QStringLiteral("qps");

QDir resources() { return QDir(qstring(QtBundle().resources().string())); }

/// All that have a folder.
QStringList languages() {
    QStringList codes = resources().entryList({QStringLiteral("*.lproj")}, QDir::Dirs);
    for (QString& code : codes) {
        code = code.section(QLatin1Char('.'), 0, 0);
    }
    return codes;
}

void addRows(const QStringList& languages) {
    QTest::addColumn<QString>("language");
    for (const QString& language : languages) {
        QTest::newRow(qPrintable(language)) << language;
    }
}

std::filesystem::path tableOf(const QString& language) {
    return QtBundle().resources() / (language + QStringLiteral(".lproj")).toStdString() / "Localizable.strings";
}

/// About as much longer as translations from English are, and in brackets.
/// Words for pop-ups are chosen short.
std::string lengthened(std::string_view english) {
    if (isStoredWord("typemeasure", english) || isStoredWord("whentotake", english)) {
        return "[" + std::string(english) + "]";
    }
    const std::size_t end = english.find_last_not_of(" :…\r\n") + 1;
    const std::size_t more = english.size() < 12 ? 1 + english.size() / 4 : english.size() / 3;
    std::string longer = "[" + std::string(english.substr(0, end));
    for (std::size_t count = 0; count < more; ++count) {
        longer += count % 8 == 7 ? ' ' : 'o';
    }
    return longer + "]" + std::string(english.substr(end));
}

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char character : text) {
        result += character == '\r'                       ? "\\r"
                  : character == '"' || character == '\\' ? std::string("\\") + character
                                                          : std::string(1, character);
    }
    return result + "\"";
}

/// Of all texts that any language has.
void writeMadeUpTable() {
    const auto table = readPropertyList(readFile(tableOf(QStringLiteral("de"))));
    const Record* entries = table ? table->as<Record>() : nullptr;
    if (!entries || entries->empty()) {
        qFatal("there is no table to make one from");
    }
    std::string made;
    for (const auto& [key, value] : *entries) {
        made += inQuotes(key.string()) + " = " + inQuotes(lengthened(key.string())) + ";\n";
    }
    std::filesystem::create_directories(tableOf(madeUp).parent_path());
    writeFile(tableOf(madeUp), made);
}

}  // namespace

/// Every window and sheet in every language there is, and in a made-up one of longer texts. With
/// VELMORA_TEST_PICTURES=FOLDER each is left there as a picture, for those who read a translation back:
/// FOLDER/<language>/<what it is>.png.
class TextFitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        writeMadeUpTable();
        writeSmallHousehold();
    }
    void cleanup() {
        m_program.reset();
        speak(QStringLiteral("en"));
    }

    void nothingIsCut_data() { addRows(languages()); }
    void nothingIsCut() {
        QFETCH(QString, language);
        lookAtAllIn(language);
    }

    /// As large as a desktop's large text.
    void nothingIsCutInLargeText_data() { addRows(languages()); }
    void nothingIsCutInLargeText() {
        QFETCH(QString, language);
        QFont large = m_usualFont;
        large.setPointSizeF(m_usualFont.pointSizeF() * 1.5);
        QApplication::setFont(large);
        lookAtAllIn(language);
        QApplication::setFont(m_usualFont);
    }

    /// In the smallest window, in text of ten points, which many desktops have.
    void noTabScrollsSideways_data() {
        QStringList ours = languages();
        ours.removeOne(madeUp);
        addRows(ours);
    }
    void noTabScrollsSideways() {
        QFETCH(QString, language);
        QFont common = m_usualFont;
        common.setPointSizeF(10);
        QApplication::setFont(common);
        speak(language);
        m_program = std::make_unique<Application>();
        QVERIFY(startUp(*m_program));
        MainWindow& window = m_program->window();
        window.resize(window.minimumSize());
        QStringList wide;
        for (int tab = 0; tab < m_program->delegate().outlets.theTabView.numberOfTabs(); ++tab) {
            m_program->delegate().outlets.theTabView.selectTab(tab);
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            for (const QScrollArea* area : window.findChildren<QScrollArea*>()) {
                const int hidden = area->isVisible() ? area->horizontalScrollBar()->maximum() : 0;
                if (hidden > 0) {
                    wide.append(QStringLiteral("tab %1 by %2 px").arg(tab + 1).arg(hidden));
                }
            }
        }
        QApplication::setFont(m_usualFont);
        QVERIFY2(wide.isEmpty(), qPrintable(wide.join(QStringLiteral(", "))));
    }

private:
    void lookAtAllIn(const QString& language) {
        speak(language);
        m_program = std::make_unique<Application>();
        QVERIFY(startUp(*m_program));
        m_faults.clear();
        lookAtSplash();
        lookAtTabs();
        lookAtSheets();
        lookAtPopovers();
        lookAtAlert();
        lookAtReminder();
        lookAtPreview();
        lookAtFirstSteps();
        QVERIFY2(m_faults.isEmpty(), qPrintable(QLatin1Char('\n') + m_faults.join(QLatin1Char('\n'))));
    }

    static void speak(const QString& language) {
        const bool isReal = language != madeUp;
        qputenv("LC_ALL", (isReal ? QLocale(language).name() : QStringLiteral("en_US")).toUtf8() + ".UTF-8");
        qputenv("LANGUAGE", language.toUtf8());
    }

    static void picture(QWidget& window, const QString& name) {
        const QString folder = qEnvironmentVariable("VELMORA_TEST_PICTURES");
        if (!folder.isEmpty()) {
            const QDir pictures(folder + QLatin1Char('/') + qEnvironmentVariable("LANGUAGE"));
            QVERIFY(pictures.mkpath(QStringLiteral(".")));
            QVERIFY(window.grab().save(pictures.filePath(name + QStringLiteral(".png"))));
        }
    }

    void lookAt(QWidget& window, const QString& where) {
        // Twice: what a new size brings about may ask for another.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        if (qEnvironmentVariable("LANGUAGE") == madeUp) {
            for (const QString& text : textsOf(window)) {
                // What is not in brackets was not looked up, or was glued.
                if (text.contains(QRegularExpression(QStringLiteral("[A-Za-z]{2}"))) &&
                    !text.contains(QLatin1Char('[')) && text != QStringLiteral("Velmora")) {
                    m_faults.append(where + QStringLiteral(": English: ") + text);
                }
            }
        }
        for (const QString& fault : faultsOf(window)) {
            m_faults.append(where + QStringLiteral(": ") + fault);
        }
        picture(window, where);
    }

    void lookAtSplash() {
        lookAt(*m_program->window().findChild<SplashWindow*>(), QStringLiteral("splash"));
        m_program->ports().windows.closeSplash();
    }

    void lookAtTabs() {
        Outlets& outlets = m_program->delegate().outlets;
        MainWindow& window = m_program->window();
        for (const QSize size : {window.size(), window.minimumSize()}) {
            window.resize(size);
            for (int tab = 0; tab < outlets.theTabView.numberOfTabs(); ++tab) {
                outlets.theTabView.selectTab(tab);
                if (tab == 1) {
                    outlets.showBtnTab2.userClick();
                } else if (tab == 2) {
                    outlets.showBtnTab3.userClick();
                }
                outlets.unreadableBar.setText(
                    m_program->delegate().localized("The list of prescribers cannot be read."));
                // Where there is no room for the longest word of a pop-up it is cut, and told by the pointer.
                if (size != window.minimumSize() && QApplication::font() == m_usualFont) {
                    m_faults += wordsWithoutRoom(window);
                }
                lookAt(window, QStringLiteral("%1 px, tab %2").arg(window.width()).arg(tab + 1));
            }
        }
        outlets.theTabView.selectTab(0);
        lookAtWordsInTable();
        for (QMenu* menu : window.findChildren<QMenu*>()) {
            picture(*menu, QStringLiteral("menu ") + menu->objectName());
        }
    }

    void lookAtWordsInTable() {
        const auto& table = *widgetNamed<QTableView>(m_program->window(), "tableViewTab1");
        const auto& columns = m_program->delegate().outlets.tableViewTab1.columns();
        constexpr int margins = 12;
        for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
            for (const std::string& word : storedWords(columns[static_cast<std::size_t>(column)].identifier)) {
                if (table.fontMetrics().horizontalAdvance(translated(word)) + margins > table.columnWidth(column)) {
                    m_faults.append(QStringLiteral("table: no room for ") + translated(word));
                }
            }
        }
    }

    void lookAtSheets() {
        for (SheetDialog* sheet : m_program->window().findChildren<SheetDialog*>()) {
            sheet->open();
            lookAt(*sheet, sheet->objectName());
            sheet->endSheet();
        }
    }

    void lookAtPopovers() {
        for (const char* name : {"thePopOver", "receiptPopover"}) {
            auto* popover = widgetNamed<QWidget>(m_program->window(), name);
            popover->show();
            lookAt(*popover, QLatin1String(name));
            if (const auto* days = popover->findChild<QTableView*>(QStringLiteral("qt_calendar_calendarview"))) {
                lookAtWeekdays(*days);
            }
            popover->hide();
        }
    }

    void lookAtWeekdays(const QTableView& days) {
        constexpr int margins = 6;
        for (int day = 1; day <= 7; ++day) {
            const QString name = days.locale().dayName(day, QLocale::ShortFormat);
            if (days.fontMetrics().horizontalAdvance(name) + margins > days.columnWidth(1)) {
                m_faults.append(QStringLiteral("calendar: no room for ") + name);
            }
        }
    }

    void lookAtAlert() {
        m_program->delegate().outlets.tableViewTab1.userDoubleClickRow(0);
        m_program->delegate().outlets.deleteBtnTab1.userClick();
        AlertBox* alert = waitForAlert();
        QVERIFY(alert);
        lookAt(*alert, QStringLiteral("alert"));
        alert->reject();
    }

    void lookAtReminder() {
        ReminderWindow window(qstring(m_program->delegate().localized("Prescription 'Next Fill Date' Reminder")),
                              QStringLiteral("[…]"));
        window.show();
        lookAt(window, QStringLiteral("reminder"));
    }

    /// A household that is empty yet: the card in place of the history.
    void lookAtFirstSteps() {
        m_program.reset();
        removeHousehold();
        m_program = std::make_unique<Application>();
        QVERIFY(startUp(*m_program));
        m_program->ports().windows.closeSplash();
        MainWindow& window = m_program->window();
        QVERIFY(widgetNamed<QWidget>(window, "firstSteps")->isVisible());
        for (const QSize size : {window.size(), window.minimumSize()}) {
            window.resize(size);
            lookAt(window, QStringLiteral("first steps, %1 px").arg(size.width()));
        }
        writeSmallHousehold();
    }

    void lookAtPreview() {
        Outlets& outlets = m_program->delegate().outlets;
        outlets.reportsTab4.userClick(4, true);
        outlets.reportsTab4.userClick(7, true);
        outlets.printBtnTab4.userClick();
        const auto windows = m_program->ports().preview.windows();
        QCOMPARE(windows.size(), std::size_t{1});
        lookAt(*windows.front(), QStringLiteral("preview"));
        lookBelowClosingButtons(*windows.front()->findChild<QTabBar*>());
        windows.front()->close();
    }

    /// No title runs on below the button that closes its tab.
    static void lookBelowClosingButtons(QTabBar& tabs) {
        for (int index = 0; index < tabs.count(); ++index) {
            QWidget* button = tabs.tabButton(index, QTabBar::RightSide);
            button->hide();
            const QImage below = tabs.grab(button->geometry()).toImage();
            button->show();
            QCOMPARE(below, below.copy(0, 0, 1, 1).scaled(below.size()));
        }
    }

    std::unique_ptr<Application> m_program;
    QStringList m_faults;
    const QFont m_usualFont = QApplication::font();
};

QTEST_MAIN(TextFitTest)
#include "TextFitTest.moc"
