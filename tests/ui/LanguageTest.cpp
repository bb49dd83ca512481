#include "tests/support/TemporaryFolder.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/DayCalendar.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QPushButton>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <memory>

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

QString shownIn(const QTableView& table, const QString& heading) {
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        if (table.model()->headerData(column, Qt::Horizontal).toString() == heading) {
            return table.model()->index(table.model()->rowCount() - 1, column).data().toString();
        }
    }
    return QStringLiteral("no such column");
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
            QCOMPARE(table.model()->index(0, 9).data().toString(), QStringLiteral("\u200E.80"));
            QVERIFY(!program->window().style()->styleHint(QStyle::SH_UnderlineShortcut));
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
