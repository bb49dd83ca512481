#include "core/DataFiles.h"
#include "core/Keys.h"
#include "region/DateUtilities.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/views/AlertBox.h"
#include "ui/views/CellText.h"
#include "ui/views/DayField.h"
#include "ui/views/RecordTableView.h"

#include <QCalendarWidget>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <ctime>
#include <limits>
#include <memory>

using namespace kpx;
using namespace kpx::test;

/// What the window shows and stores where people write dates and numbers in their own ways.
class RegionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() {
        m_program.reset();
        live("America/New_York", "en_US.UTF-8");
    }

    void aChangeWithoutAnEditKeepsCentsAndDays_data() {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("cost");
        QTest::newRow("Mexico") << QByteArray("America/Mexico_City") << QByteArray("es_MX.UTF-8") << "66.78";
        QTest::newRow("Germany") << QByteArray(":Europe/Berlin") << QByteArray("de_DE.UTF-8") << "66.78";
        QTest::newRow("Egypt") << QByteArray("Africa/Cairo") << QByteArray("ar_EG.UTF-8") << "66.78";
        QTest::newRow("Iran") << QByteArray("Asia/Tehran") << QByteArray("fa_IR.UTF-8") << "66.78";
        QTest::newRow("Thailand") << QByteArray("Asia/Bangkok") << QByteArray("th_TH.UTF-8") << "66.78";
        QTest::newRow("Nepal") << QByteArray("/usr/share/zoneinfo/Asia/Kathmandu") << QByteArray("ne_NP.UTF-8")
                               << "66.78";
        QTest::newRow("Greenland") << QByteArray("America/Scoresbysund") << QByteArray("kl_GL.UTF-8") << "66.78";
        QTest::newRow("a rule") << QByteArray("CET-1CEST,M3.5.0,M10.5.0/3") << QByteArray("fr_CH.UTF-8") << "66.78";
        QTest::newRow("Bangladesh") << QByteArray("Asia/Dhaka") << QByteArray("bn_BD.UTF-8") << "66.78";
        QTest::newRow("Maharashtra") << QByteArray("Asia/Kolkata") << QByteArray("mr_IN.UTF-8") << "66.78";
        QTest::newRow("Kazakhstan") << QByteArray("Asia/Almaty") << QByteArray("de_AT.UTF-8") << "66.78";
        QTest::newRow("Nuuk") << QByteArray("America/Nuuk") << QByteArray("en_DK.UTF-8") << "66.78";
        QTest::newRow("nowhere") << QByteArray("Nowhere/Land") << QByteArray("C.UTF-8") << "66.78";
    }
    void aChangeWithoutAnEditKeepsCentsAndDays() {
        QFETCH(QByteArray, zone);
        QFETCH(QByteArray, locale);
        QFETCH(QString, cost);
        live(zone, locale);
        writeOneFill("20240710");
        QVERIFY(open());
        const Records before = history();
        QCOMPARE(numbersOf(cell("dispensedate")), numbersOf(QStringLiteral("2024 7 10")));
        QCOMPARE(cell("cost"), cost);

        clickRow(*table(), 0, true);
        QCOMPARE(numbersOf(dispensed()->text()), numbersOf(cell("dispensedate")));
        QCOMPARE(dispensed()->date(), QDate(2024, 7, 10));
        QCOMPARE(field("totalCostTab1")->text(), cost);
        QTest::mouseClick(button("changeBtnTab1"), Qt::LeftButton);
        QCOMPARE(history(), before);
        QCOMPARE(numbersOf(cell("dispensedate")), numbersOf(QStringLiteral("2024 7 10")));

        // The day that is typed is the day that is stored and shown.
        clickRow(*table(), 0, true);
        dispensed()->setDate(QDate(2024, 7, 12));
        QTest::mouseClick(button("changeBtnTab1"), Qt::LeftButton);
        QCOMPARE(history().front().text(MHDispenseDateKey), Text("20240712"));
        QCOMPARE(numbersOf(cell("dispensedate")), numbersOf(QStringLiteral("2024 7 12")));
    }

    void aCommaIsTypedAsPeopleOfTheRegionDo() {
        live("Europe/Berlin", "de_DE.UTF-8");
        writeOneFill("20240305");
        QVERIFY(open());
        QLineEdit* cost = field("totalCostTab1");
        cost->setFocus();
        type(*cost, QStringLiteral("1.234,50"));
        QCOMPARE(cost->text(), QStringLiteral("1234.50"));
        QCOMPARE(cost->cursorPosition(), 7);
        // In the middle the points before the cursor go, and what stands behind stays.
        cost->clear();
        type(*cost, QStringLiteral("1.23450"));
        cost->setCursorPosition(5);
        QTest::keyClick(cost, Qt::Key_Comma, Qt::KeypadModifier);
        QCOMPARE(cost->text(), QStringLiteral("1234.50"));
        QCOMPARE(cost->cursorPosition(), 5);
        QCOMPARE(outlets().totalCostTab1.text(), std::string("1234.50"));
        // What is selected gives way.
        cost->selectAll();
        QTest::keyClick(cost, Qt::Key_Comma);
        QCOMPARE(cost->text(), QStringLiteral("."));
        // An input method types as well.
        QInputMethodEvent composed;
        composed.setCommitString(QStringLiteral("٧"));
        QCoreApplication::sendEvent(cost, &composed);
        QCOMPARE(cost->text(), QStringLiteral(".7"));
        // Pasted text goes to the rules as it is.
        cost->clear();
        cost->insert(QStringLiteral("1,5"));
        QCOMPARE(cost->text(), QString());
    }

    void digitsOfAnyScriptAreLatinOnes() {
        live("Africa/Cairo", "ar_EG.UTF-8");
        writeOneFill("20240305");
        QVERIFY(open());
        type(*field("daysSupply"), QStringLiteral("٣٠"));
        QCOMPARE(field("daysSupply")->text(), QStringLiteral("30"));
        type(*field("initialRefillsTab1"), QStringLiteral("۲"));
        QCOMPARE(field("initialRefillsTab1")->text(), QStringLiteral("2"));
        // One of two units, of Adlam.
        field("daysSupply")->clear();
        composeDigit(*field("daysSupply"), QStringLiteral("\U0001E957"));
        QCOMPARE(field("daysSupply")->text(), QStringLiteral("7"));
        type(*field("scriptNoteTab1"), QStringLiteral("٣"));
        QCOMPARE(field("scriptNoteTab1")->text(), QStringLiteral("٣"));
        QCOMPARE(dispensed()->displayFormat(), QStringLiteral("d/M/yyyy"));
        dispensed()->setFocus();
        dispensed()->selectAll();
        type(*dispensed(), QStringLiteral("٠٧/٠٨/٢٠٢٣"));
        dispensed()->readText();
        QCOMPARE(dispensed()->date(), QDate(2023, 8, 7));
    }

    void everyDayWithFourDigitsOfAYearCanBeSet() {
        live("Europe/Berlin", "de_DE.UTF-8");
        writeOneFill("20240305");
        QVERIFY(open());
        for (const QDate& day : {QDate(1000, 1, 1), QDate(1582, 10, 10), QDate(1752, 9, 13), QDate(9999, 12, 31)}) {
            dispensed()->setDate(day);
            const Environment here = m_program->delegate().environment();
            QCOMPARE(qstring(YYYYMMDDStrFromDate(outlets().dispenseDateTab1.date(), here)),
                     day.toString(QStringLiteral("yyyyMMdd")));
        }
    }

    void anEarlierDayIsShownAsItIsStored() {
        live("Europe/Berlin", "de_DE.UTF-8");
        writeOneFill("02240305");
        QVERIFY(open());
        clickRow(*table(), 0, true);
        QCOMPARE(dispensed()->text(), QStringLiteral("05.03.0224"));
        const Records before = history();
        QTest::mouseClick(button("changeBtnTab1"), Qt::LeftButton);
        QCOMPARE(history().front().text(MHDispenseDateKey), before.front().text(MHDispenseDateKey));
        AlertBox* alert = waitForAlert();
        QVERIFY(alert);
        alert->reject();
        clickRow(*table(), 0, true);
        dispensed()->setDate(QDate(2024, 3, 5));
        QCOMPARE(dispensed()->text(), QStringLiteral("05.03.2024"));
    }

    void noFieldHasALengthOfItsOwn() {
        live("America/New_York", "en_US.UTF-8");
        writeOneFill("20240305");
        QVERIFY(open());
        const QString note(100000, QLatin1Char('x'));
        field("scriptNoteTab1")->insert(note);
        QCOMPARE(outlets().scriptNoteTab1.text().size(), std::size_t{100000});
        outlets().scriptNoteTab1.setText(std::string(200000, 'y'));
        QCOMPARE(field("scriptNoteTab1")->text().size(), 200000);
        const auto fields = m_program->window().findChildren<QLineEdit*>();
        QVERIFY(fields.size() > 20);
        for (const QLineEdit* each : fields) {
            const bool isOfTheToolkit = each->objectName().startsWith(QStringLiteral("qt_"));
            QVERIFY2(isOfTheToolkit || each->maxLength() == std::numeric_limits<int>::max(),
                     qPrintable(each->objectName()));
        }
    }

    void pagesAreInTheLanguageOfTheirTexts() {
        // English where there is no table, whatever the region.
        live("Asia/Tehran", "fa_IR.UTF-8");
        QVERIFY(open());
        QCOMPARE(m_program->ports().preview.language, QStringLiteral("en"));
    }

    void aNumberOfAlertsAndATimeOfDayAreWrittenAsInTheFields_data() {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("count");
        QTest::addColumn<QString>("time");
        QTest::newRow("Germany") << QByteArray("de_DE.UTF-8") << QStringLiteral("1\u202F234")
                                 << QStringLiteral("13:30");
        QTest::newRow("Egypt") << QByteArray("ar_EG.UTF-8") << QStringLiteral("1,234") << QStringLiteral("1:30");
        QTest::newRow("Iran") << QByteArray("fa_IR.UTF-8") << QStringLiteral("1,234") << QStringLiteral("13:30");
        QTest::newRow("America") << QByteArray("en_US.UTF-8") << QStringLiteral("1,234") << QStringLiteral("1:30");
    }
    void aNumberOfAlertsAndATimeOfDayAreWrittenAsInTheFields() {
        QFETCH(QByteArray, locale);
        QFETCH(QString, count);
        QFETCH(QString, time);
        live("Africa/Cairo", locale);
        writeOneFill("20240305");
        QVERIFY(open());
        QCOMPARE(m_program->ports().alerts.writtenCount(1234), count);
        const Environment here = m_program->delegate().environment();
        const Date halfPastOne = dateFromYYMMDDStr("20240305", here).addingSeconds(13.5 * 3600);
        const QString shown = cellText("when", halfPastOne, here);
        QVERIFY2(shown.contains(time), qPrintable(shown));
        QVERIFY(!std::any_of(shown.begin(), shown.end(), [](QChar c) { return c.isDigit() && c.unicode() > 0x7F; }));
    }

    void theCalendarWritesTheYearAsTheFieldsDo() {
        live("Africa/Cairo", "ar_EG.UTF-8");
        writeOneFill("20240305");
        QVERIFY(open());
        auto* calendar = widgetNamed<QCalendarWidget>(m_program->window(), "theDatePicker");
        auto* year = calendar->findChild<QToolButton*>(QStringLiteral("qt_calendar_yearbutton"));
        outlets().theDatePicker.setDate(dateFromYYMMDDStr("20230705", m_program->delegate().environment()));
        QCOMPARE(calendar->selectedDate(), QDate(2023, 7, 5));
        QCOMPARE(year->text(), QStringLiteral("2023"));
    }

private:
    static void composeDigit(QLineEdit& field, const QString& digit) {
        QInputMethodEvent composed;
        composed.setCommitString(digit);
        QCoreApplication::sendEvent(&field, &composed);
    }
    static void live(const QByteArray& zone, const QByteArray& locale) {
        qputenv("TZ", zone);
        qputenv("LC_ALL", locale);
        tzset();
    }
    bool open() {
        m_program = startWithoutSplash();
        return m_program != nullptr;
    }
    static void writeOneFill(const std::string& day) {
        removeHousehold();
        std::filesystem::create_directories(dataFolder());
        const auto list = [&](std::string_view file, const char* key, const char* name) {
            QVERIFY(writeArray(Records{Record{{key, name}}}, dataFolder(), file));
        };
        list(patientFile, patientNameKey, "Ann");
        list(pharmacyFile, pharmacyNameKey, "Corner");
        list(drugFile, DrugNameKey, "Zinc");
        list(prescriberFile, PrescriberNameKey, "Adams");
        const Record fill{{MHPatientKey, "Ann"},
                          {MHPharmacyKey, "Corner"},
                          {MHDrugKey, "Zinc"},
                          {MHPrescriberKey, "Adams"},
                          {MHRxNumberKey, "90"},
                          {MHDaysSupplyKey, 30},
                          {MHTotalCostKey, "66.78"},
                          {MHRefillsKey, 2},
                          {MHRefillsRemainKey, 2},
                          {MHDispenseDateKey, day},
                          {MHExpireDateKey, "20991231"},
                          {MHTakeNbrKey, 1},
                          {MHDrugTypeMeasureKey, "ml"},
                          {MHEveryIntervalKey, 1},
                          {MHWhenToTakeDrugKey, "day"},
                          {MHFillTypeKey, "Initial"},
                          {MHNoteKey, ""}};
        QVERIFY(writeArray(Records{fill}, dataFolder(), prescriptionHistoryFile));
    }
    static Records history() {
        return copyArrayFromDataFile(dataFolder(), prescriptionHistoryFile).value_or(Records());
    }
    /// Day, month and the year's last two digits, from the smallest.
    static QList<int> numbersOf(const QString& text) {
        QList<int> numbers;
        QRegularExpressionMatchIterator matches = QRegularExpression(QStringLiteral("[0-9]+")).globalMatch(text);
        while (matches.hasNext()) {
            numbers.append(matches.next().captured().toInt() % 100);
        }
        std::sort(numbers.begin(), numbers.end());
        return numbers;
    }
    Outlets& outlets() { return m_program->delegate().outlets; }
    RecordTableView* table() { return widgetNamed<RecordTableView>(m_program->window(), "tableViewTab1"); }
    DayField* dispensed() { return widgetNamed<DayField>(m_program->window(), "dispenseDateTab1"); }
    QLineEdit* field(const char* name) { return widgetNamed<QLineEdit>(m_program->window(), name); }
    QPushButton* button(const char* name) { return widgetNamed<QPushButton>(m_program->window(), name); }
    QString cell(const std::string& column) {
        const auto& columns = outlets().tableViewTab1.columns();
        for (int index = 0; index < static_cast<int>(columns.size()); ++index) {
            if (columns[static_cast<std::size_t>(index)].identifier == column) {
                return table()->model()->index(0, index).data().toString();
            }
        }
        return {};
    }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(RegionTest)
#include "RegionTest.moc"
