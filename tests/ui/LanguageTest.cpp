#include "core/DataFiles.h"
#include "core/Keys.h"
#include "core/StoredWords.h"
#include "schedule/Reminder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/Dragging.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/preview/PagesView.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/views/AlertBox.h"
#include "ui/views/DayCalendar.h"
#include "ui/views/EmptyState.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <memory>
#include <set>

using namespace kpx;
using namespace kpx::test;

namespace {

/// The windows in the language of a made-up table, for as long as it lives.
class MadeLanguage {
public:
    MadeLanguage(const char* language, std::string_view table) {
        const TemporaryFolder resources;
        const auto folder = resources.path() / (std::string(language) + ".lproj");
        std::filesystem::create_directory(folder);
        writeFile(folder / "Localizable.strings", table);
        m_translations.emplace(LocalizedStrings(resources.path(), language), language);
    }

private:
    std::optional<Translations> m_translations;
};

constexpr char german[] = R"(
    "&Add" = "&Hinzufügen";
    "Change" = "Ändern";
    "History" = "Verlauf";
    "&Help" = "&Hilfe";
    "Patient" = "Wer";
    "Drug Name" = "Arzneimittel";
    "Initial" = "Erstes";
    "tablet" = "Tablette";
    "Calendar" = "Kalender";
    "Filter…" = "Auswahl…";
)";

/// Where the text of a field begins, in pixels from its left edge.
int leftmostInk(QLineEdit& field) {
    const QImage image = field.grab().toImage();
    const QColor ground = image.pixelColor(image.width() / 2, 1);
    for (int x = 2; x < image.width() - 2; ++x) {
        for (int y = 2; y < image.height() - 2; ++y) {
            if (qAbs(image.pixelColor(x, y).lightness() - ground.lightness()) > 60) {
                return x;
            }
        }
    }
    return image.width();
}

/// Whether the ink of an arrow's middle line lies further right than that of its ends.
bool pointsToTheRight(const QIcon& arrow) {
    const QImage image = arrow.pixmap(48).toImage();
    const auto meanOfInk = [&](int top, int bottom) {
        double ink = 0;
        double sum = 0;
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < image.width(); ++x) {
                ink += image.pixelColor(x, y).alphaF();
                sum += x * image.pixelColor(x, y).alphaF();
            }
        }
        return sum / ink;
    };
    const int middle = image.height() / 2;
    return meanOfInk(middle - 2, middle + 2) > meanOfInk(0, image.height());
}

constexpr QSize cellSize(150, 24);

QImage blankCell() {
    QImage image(cellSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

template <class Option>
Option optionFor(Qt::LayoutDirection direction) {
    Option option;
    option.rect = QRect(QPoint(), cellSize);
    option.direction = direction;
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.palette = QGuiApplication::palette();
    option.fontMetrics = QFontMetrics(QGuiApplication::font());
    return option;
}

QImage drawnControl(QStyle::ControlElement element, const QStyleOption& option) {
    QImage image = blankCell();
    QPainter painter(&image);
    painter.setLayoutDirection(option.direction);
    QApplication::style()->drawControl(element, &option, &painter);
    return image;
}

/// An item of a list or a table, at the right of its cell.
QImage drawnItem(const QString& text, Qt::LayoutDirection direction) {
    auto item = optionFor<QStyleOptionViewItem>(direction);
    item.text = text;
    item.features = QStyleOptionViewItem::HasDisplay;
    item.textElideMode = Qt::ElideRight;
    item.displayAlignment = (direction == Qt::RightToLeft ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
    return drawnControl(QStyle::CE_ItemViewItem, item);
}

/// The colours in the drawing of an empty list, whose heading is a filled square.
std::set<QRgb> inksOfEmptyState() {
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    drawEmptyState(painter, image.rect(), QGuiApplication::palette(), QGuiApplication::font(), QStringLiteral("■"),
                   QString());
    std::set<QRgb> inks;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            inks.insert(image.pixel(x, y));
        }
    }
    return inks;
}

/// Where the slider of a scroll bar that lies across begins and ends.
std::pair<int, int> sliderOf(QScrollBar& bar) {
    const QImage image = bar.grab().toImage();
    const double scale = image.devicePixelRatio();
    const int y = image.height() / 2;
    const auto isInk = [&](int x) { return image.pixelColor(x, y) != image.pixelColor(image.width() - 1, 0); };
    int left = 0;
    int right = image.width() - 1;
    while (left < right && !isInk(left)) {
        ++left;
    }
    while (right > left && !isInk(right)) {
        --right;
    }
    return {qRound(left / scale), qRound(right / scale)};
}

QString shownIn(const QTableView& table, const QString& heading) {
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        if (table.model()->headerData(column, Qt::Horizontal).toString() == heading) {
            return table.model()->index(table.model()->rowCount() - 1, column).data().toString();
        }
    }
    return QStringLiteral("no such column");
}

void speak(const char* language, const char* locale) {
    qputenv("LC_ALL", locale);
    qputenv("LANGUAGE", language);
}

/// What the words of that key are in the data file.
std::set<std::string> wordsInFile(std::string_view key) {
    std::set<std::string> words;
    const auto history = copyArrayFromDataFile(dataFolder(), prescriptionHistoryFile);
    for (const Record& fill : history.value_or(Records())) {
        words.insert(fill.text(key).value_or("none").string());
    }
    return words;
}

/// Takes the word of that place for the newest fill, and gives the text that was shown of it.
std::string changeNewestFillTo(KPXAppDelegate& delegate, int word) {
    Outlets& outlets = delegate.outlets;
    outlets.tableViewTab1.userDoubleClickRow(0);
    outlets.drugTypeOrMeasureTab1.userChoose(word);
    const std::string shown = outlets.drugTypeOrMeasureTab1.titleOfSelectedItem().value_or("nothing");
    outlets.changeBtnTab1.userClick();
    return shown;
}

/// Schedules a reminder for the first row that is not due yet, and gives what was put away for the agent.
std::optional<UserNotification> remindOfRowToCome(Application& program) {
    KPXAppDelegate& delegate = program.delegate();
    const std::size_t before = program.ports().notifications.scheduledNotifications().size();
    delegate.outlets.theTabView.selectTab(Outlets::scheduleTab);
    delegate.outlets.showBtnTab2.userClick();
    const Records& rows = delegate.maintDueArrayForTV;
    const Date now = program.ports().clock.now();
    const auto toCome = std::ranges::find_if(rows, [&](const Record& row) {
        const auto next = row.date("nextdate");
        return next && now < *next;
    });
    delegate.outlets.tableViewTab2.userClickRow(static_cast<int>(toCome - rows.begin()));
    constexpr int remindItem = 1;
    delegate.respondToContextMenuTab2(remindItem);
    if (AlertBox* alert = waitForAlert()) {
        alert->reject();
    }
    const auto scheduled = program.ports().notifications.scheduledNotifications();
    return scheduled.size() == before + 1 ? std::optional(scheduled.back()) : std::nullopt;
}

}  // namespace

/// The widgets' own texts in the language of a table.
class LanguageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { writeSmallHousehold(); }

    void formsMenusAndNamesAreTranslated() {
        const MadeLanguage language("de", german);
        Application program;
        QVERIFY(program.binder().mismatches().empty());
        MainWindow& window = program.window();
        QCOMPARE(widgetNamed<QAbstractButton>(window, "addBtnTab1")->text(), QStringLiteral("&Hinzufügen"));
        // In the table without its mnemonic.
        QCOMPARE(widgetNamed<QAbstractButton>(window, "changeBtnTab1")->text(), QStringLiteral("Ändern"));
        // Not in the table at all.
        QCOMPARE(widgetNamed<QAbstractButton>(window, "deleteBtnTab1")->text().remove(u'&'), QStringLiteral("Delete"));
        QCOMPARE(widgetNamed<QTabWidget>(window, "theTabView")->tabText(0), QStringLiteral("Verlauf"));
        QCOMPARE(widgetNamed<QComboBox>(window, "patientPopTab1")->accessibleName(), QStringLiteral("Wer"));
        QCOMPARE(widgetNamed<QWidget>(window, "theDatePicker")->accessibleName(), QStringLiteral("Kalender"));
        bool help = false;
        for (const QAction* menu : window.menuBar()->actions()) {
            help |= menu->text() == QStringLiteral("&Hilfe");
        }
        QVERIFY(help);
    }

    void tablesShowHeadingsAndStoredWordsTranslated() {
        const MadeLanguage language("de", german);
        const auto program = startWithoutSplash();
        QVERIFY(program);
        const auto& table = *widgetNamed<QTableView>(program->window(), "tableViewTab1");
        QCOMPARE(shownIn(table, QStringLiteral("Type")), QStringLiteral("Erstes"));
        QCOMPARE(shownIn(table, QStringLiteral("Form")), QStringLiteral("Tablette"));
        QVERIFY(shownIn(table, QStringLiteral("Wer")) != QStringLiteral("no such column"));
        QVERIFY(shownIn(table, QStringLiteral("Arzneimittel")) != QStringLiteral("no such column"));
    }

    /// One after the other, with the tables that are installed.
    void languagesShareOneHousehold() {
        std::optional<UserNotification> reminder;
        std::set<std::string> texts;
        int word = 9;  // the household has none of those that follow
        for (const auto& [language, locale] :
             {std::pair("de", "de_DE.UTF-8"), {"ar", "ar_EG.UTF-8"}, {"ja", "ja_JP.UTF-8"}}) {
            speak(language, locale);
            const auto program = startWithoutSplash();
            QVERIFY(program);
            Outlets& outlets = program->delegate().outlets;
            const std::string stored = storedWords(MHDrugTypeMeasureKey)[static_cast<std::size_t>(++word)];
            const std::string shown = changeNewestFillTo(program->delegate(), word);
            QVERIFY2(shown != stored, shown.c_str());
            QVERIFY(wordsInFile(MHDrugTypeMeasureKey).contains(stored));
            QVERIFY(!wordsInFile(MHDrugTypeMeasureKey).contains(shown));
            if (reminder) {
                program->open(*reminder);
                const auto prescription = prescriptionFromReminderText(reminder->informativeText);
                QCOMPARE(outlets.patientPopTab2.titleOfSelectedItem().value_or(""), prescription->patient);
                QCOMPARE(outlets.drugNamePopTab2.titleOfSelectedItem().value_or(""), prescription->drug);
                QCOMPARE(outlets.tableViewTab2.numberOfRows(), 1);
                QVERIFY(program->ports().notifications.scheduledNotifications().empty());
                outlets.patientPopTab2.userChoose(outlets.patientPopTab2.numberOfItems() - 1);
            }
            reminder = remindOfRowToCome(*program);
            QVERIFY(reminder);
            QVERIFY(texts.insert(reminder->informativeText).second);
        }
        speak("en", "en_US.UTF-8");
        QCOMPARE(wordsInFile(MHFillTypeKey), (std::set<std::string>{"Initial", "Refill"}));
        for (const std::string_view key : {MHDrugTypeMeasureKey, MHWhenToTakeDrugKey}) {
            for (const std::string& inFile : wordsInFile(key)) {
                QVERIFY2(isStoredWord(key, inFile), inFile.c_str());
            }
        }
    }

    /// Small characters of many strokes fill up in bold.
    void headingsAreBoldOrHaveAColor_data() {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<bool>("bold");
        QTest::newRow("en") << QByteArray("en_US.UTF-8") << true;
        QTest::newRow("ar") << QByteArray("ar_EG.UTF-8") << true;
        QTest::newRow("ja") << QByteArray("ja_JP.UTF-8") << false;
        QTest::newRow("zh") << QByteArray("zh_CN.UTF-8") << false;
    }
    void headingsAreBoldOrHaveAColor() {
        QFETCH(QByteArray, locale);
        QFETCH(bool, bold);
        speak(QTest::currentDataTag(), locale.constData());
        Application program;
        speak("en", "en_US.UTF-8");
        for (const char* name : {"labelSection1", "labelSection24", "labelSection38"}) {
            const auto* heading = widgetNamed<QLabel>(program.window(), name);
            QCOMPARE(heading->font().bold(), bold);
            QCOMPARE(heading->foregroundRole(), bold ? QPalette::WindowText : QPalette::Highlight);
        }
        QVERIFY(!widgetNamed<QLabel>(program.window(), "labelPatientPopTab1")->font().bold());
        Alert alert;
        alert.messageText = "heading";
        const AlertBox box(alert, &program.window());
        const auto* message = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        QVERIFY(message->font().bold());
        QCOMPARE(inksOfEmptyState().contains(QGuiApplication::palette().color(QPalette::Highlight).rgb()), !bold);
    }

    void aToolBarShowsNoLettersInBrackets() {
        const MadeLanguage language("ja", "\"&Print…\" = \"印刷(&P)…\";");
        const PreviewWindow window({}, QStringLiteral("ja"));
        auto* print = window.findChild<QAction*>(QStringLiteral("printCommand"));
        const auto* button =
            qobject_cast<QToolButton*>(window.findChild<QToolBar*>(QStringLiteral("tools"))->widgetForAction(print));
        QCOMPARE(print->text(), QStringLiteral("印刷(&P)…"));
        QCOMPARE(button->text(), QStringLiteral("印刷…"));
    }

    void theToolkitsOwnTextsAreTheToolkits() {
        const auto cancel = [] {
            return QDialogButtonBox(QDialogButtonBox::Cancel).button(QDialogButtonBox::Cancel)->text();
        };
        QCOMPARE(cancel().remove(QLatin1Char('&')), QStringLiteral("Cancel"));
        {
            const MadeLanguage language("de", german);
            QCOMPARE(cancel().remove(QLatin1Char('&')), QStringLiteral("Abbrechen"));
        }
        QCOMPARE(cancel().remove(QLatin1Char('&')), QStringLiteral("Cancel"));
    }

    void aLanguageWithoutTableStaysEnglish() {
        const MadeLanguage language("ar", "");
        Application program;
        QCOMPARE(program.window().layoutDirection(), Qt::LeftToRight);
        QCOMPARE(widgetNamed<QAbstractButton>(program.window(), "addBtnTab1")->text(), QStringLiteral("&Add"));
        QCOMPARE(QDialogButtonBox(QDialogButtonBox::Cancel).button(QDialogButtonBox::Cancel)->text().remove(u'&'),
                 QStringLiteral("Cancel"));
    }

    void theCalendarHasYearAndMonthInTheOrderOfADate() {
        for (const auto& [language, yearIsFirst] : {std::pair("ja_JP", true), {"de_DE", false}}) {
            const QLocale before;
            QLocale::setDefault(QLocale(QLatin1String(language)));
            DayCalendar calendar;
            QLocale::setDefault(before);
            calendar.show();
            const auto* year = calendar.findChild<QWidget*>(QStringLiteral("qt_calendar_yearbutton"));
            const auto* month = calendar.findChild<QWidget*>(QStringLiteral("qt_calendar_monthbutton"));
            QCOMPARE(year->x() < month->x(), yearIsFirst);
            QVERIFY(!year->geometry().intersects(month->geometry()));
        }
    }

    void theArrowsOfTheCalendarPointOutwards() {
        for (const auto& [language, isMirrored] : {std::pair("de", false), {"ar", true}}) {
            const MadeLanguage made(language, "\"Previous month\" = \"x\";");
            DayCalendar calendar;
            calendar.show();
            auto* previous = calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_prevmonth"));
            auto* next = calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_nextmonth"));
            QVERIFY(previous && next);
            QCOMPARE(previous->x() > next->x(), isMirrored);
            QCOMPARE(pointsToTheRight(previous->icon()), isMirrored);
            QCOMPARE(pointsToTheRight(next->icon()), !isMirrored);
        }
    }

    void whatIsWrittenFromTheLeftStaysSoInAWindowReadFromTheRight() {
        const Application program;  // brings the style
        for (const char* text : {"7 Elm Avenue", "Amoxicillin/Clavulanic acid oral suspension", ".80", "صرف أول"}) {
            const QString shown = QString::fromUtf8(text);
            QVERIFY(drawnItem(shown, Qt::RightToLeft) != blankCell());
            QVERIFY2(drawnItem(shown, Qt::RightToLeft) == drawnItem(shown, Qt::LeftToRight), text);
        }
        // The text of a pop-up button and the keys in a menu stand on other sides than in a window read from the left.
        auto popUp = optionFor<QStyleOptionComboBox>(Qt::RightToLeft);
        popUp.currentText = QStringLiteral("7 Elm Avenue");
        QImage expected = blankCell();
        QPainter painter(&expected);
        painter.setPen(popUp.palette.color(QPalette::Text));
        painter.drawText(
            QApplication::style()->subControlRect(QStyle::CC_ComboBox, &popUp, QStyle::SC_ComboBoxEditField),
            Qt::AlignRight | Qt::AlignVCenter, popUp.currentText);
        painter.end();
        QVERIFY(drawnControl(QStyle::CE_ComboBoxLabel, popUp) == expected);
        auto item = optionFor<QStyleOptionMenuItem>(Qt::RightToLeft);
        item.menuItemType = QStyleOptionMenuItem::Normal;
        item.reservedShortcutWidth = 60;
        item.text = QStringLiteral("\tCtrl+?");
        const QImage keys = drawnControl(QStyle::CE_MenuItem, item);
        item.text = QStringLiteral("\t\u202ACtrl+?");
        QVERIFY(keys == drawnControl(QStyle::CE_MenuItem, item));
        item.text = QStringLiteral("\t?+Ctrl");
        QVERIFY(keys != drawnControl(QStyle::CE_MenuItem, item));
    }

    void theCalendarOpensWhereReadingGoesOn() {
        const MadeLanguage language("ar", "\"&Add\" = \"إضافة\";");
        const auto program = startWithoutSplash();
        QVERIFY(program);
        DateField& day = program->delegate().outlets.dispenseDateTab1;
        const Date before = day.date();
        const auto* trigger = widgetNamed<QWidget>(program->window(), "popOverTriggerTab1DispenseDate");
        QVERIFY(waitUntilActive(&program->window()));
        QVERIFY(clickMouse(*trigger));
        const auto* popover = widgetNamed<QWidget>(program->window(), "thePopOver");
        QTRY_VERIFY(popover->isVisible());
        const int gap = trigger->mapToGlobal(QPoint()).x() - popover->frameGeometry().right();
        QVERIFY2(gap > 0 && gap < 12, qPrintable(QString::number(gap)));
        // The day to the right is the one before.
        QVERIFY(pressKeys(QStringLiteral("Right")));
        constexpr double secondsPerDay = 86400;
        QTRY_COMPARE(qRound(before.secondsSince(day.date()) / secondsPerDay), 1);
        QVERIFY(pressKeys(QStringLiteral("Escape")));
        QTRY_VERIFY(!popover->isVisible());
    }

    void aScrollBarBeginsWhereReadingDoes() {
        const MadeLanguage language("ar", "\"&Add\" = \"إضافة\";");
        const auto program = startWithoutSplash();
        QVERIFY(program);
        program->window().resize(program->window().minimumSize());
        const auto* table = widgetNamed<QTableView>(program->window(), "tableViewTab1");
        QScrollBar& bar = *table->horizontalScrollBar();
        QTRY_VERIFY(bar.maximum() > 0);
        const int first = table->columnViewportPosition(0);
        const auto [left, right] = sliderOf(bar);
        QVERIFY(left > bar.width() / 4 && bar.width() - right < 10);
        // The slider goes with the mouse, and the columns the other way.
        const QPoint middle((left + right) / 2, bar.height() / 2);
        constexpr int step = 40;
        QTest::mousePress(&bar, Qt::LeftButton, {}, middle);
        QTest::mouseMove(&bar, middle - QPoint(step, 0));
        QTest::mouseRelease(&bar, Qt::LeftButton, {}, middle - QPoint(step, 0));
        QVERIFY(bar.value() > 0);
        QVERIFY(qAbs(sliderOf(bar).first - (left - step)) <= 2);
        QVERIFY(table->columnViewportPosition(0) > first);
        // A click beside the slider brings what lies there.
        const int before = bar.value();
        QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(bar.width() - 3, bar.height() / 2));
        QVERIFY(bar.value() < before);
    }

    void thePageOfThePreviewBeginsAtTheLeft() {
        const MadeLanguage language("ar", "\"&Add\" = \"إضافة\";");
        const auto program = startWithoutSplash();
        QVERIFY(program);
        program->delegate().outlets.theTabView.selectTab(3);
        program->delegate().outlets.reportsTab4.userClick(4, true);
        program->delegate().outlets.printBtnTab4.userClick();
        PreviewWindow& preview = *program->ports().preview.windows().front();
        QTRY_VERIFY(preview.isVisible());
        auto* pages = preview.findChild<PagesView*>();
        QVERIFY(pages);
        for (int step = 0; step < 6; ++step) {
            pages->zoomIn();
        }
        QScrollBar& bar = *pages->horizontalScrollBar();
        QTRY_VERIFY(bar.maximum() > 0 && bar.isVisible());
        bar.setValue(0);
        QVERIFY(sliderOf(bar).first < 10);
        preview.close();
    }

    void aLanguageReadFromTheRightMirrorsTheWindow() {
        const auto leftOf = [](QWidget& window, const char* one, const char* other) {
            const auto x = [&](const char* name) {
                const QWidget* widget = widgetNamed<QWidget>(window, name);
                return widget->mapTo(&window, widget->rect().center()).x();
            };
            return x(one) < x(other);
        };
        {
            const MadeLanguage language("ar", "\"&Add\" = \"إضافة\";");
            const auto program = startWithoutSplash();
            QVERIFY(program);
            QCOMPARE(program->window().layoutDirection(), Qt::RightToLeft);
            QVERIFY(leftOf(program->window(), "patientPopTab1", "labelPatientPopTab1"));
            QVERIFY(leftOf(program->window(), "changeBtnTab1", "addBtnTab1"));
            // A number that begins with its period stays one, and no underline tears letters apart.
            const auto& table = *widgetNamed<QTableView>(program->window(), "tableViewTab1");
            const QModelIndex cost = table.model()->index(0, 9);
            QCOMPARE(cost.data().toString(), QStringLiteral("\u200E.80"));
            // The digits of a column line up; names stand where a line begins.
            for (const QModelIndex& cell : {cost, table.model()->index(0, 0)}) {
                const auto alignment = cell.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
                QVERIFY(QStyle::visualAlignment(Qt::RightToLeft, alignment).testFlag(Qt::AlignRight));
            }
            QVERIFY(!program->window().style()->styleHint(QStyle::SH_UnderlineShortcut));
            // So does what is typed, beside what it is called.
            program->delegate().outlets.rxNumberTab1.setText("77");
            auto* number = widgetNamed<QLineEdit>(program->window(), "rxNumberTab1");
            QVERIFY(leftmostInk(*number) > number->width() / 2);
            // What is said below a field stands right, in figures and in words.
            widgetNamed<QTabWidget>(program->window(), "theTabView")->setCurrentIndex(2);
            for (const char* text : {"12.50", "عدد الوصفات"}) {
                program->delegate().outlets.howManyDBRecords.setText(text);
                auto* summary = widgetNamed<QLineEdit>(program->window(), "howManyDBRecords");
                const int ink = leftmostInk(*summary);
                QVERIFY(ink > summary->width() / 2 && ink < summary->width());
            }
        }
        const auto program = startWithoutSplash();
        QVERIFY(program);
        QCOMPARE(program->window().layoutDirection(), Qt::LeftToRight);
        QVERIFY(leftOf(program->window(), "labelPatientPopTab1", "patientPopTab1"));
        QVERIFY(leftOf(program->window(), "addBtnTab1", "changeBtnTab1"));
    }
};

QTEST_MAIN(LanguageTest)
#include "LanguageTest.moc"
