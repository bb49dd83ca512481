#include "tests/ui/Dragging.h"
#include "tests/ui/Instants.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/views/AlertBox.h"
#include "ui/views/RecordTableView.h"

#include <QAccessible>
#include <QClipboard>
#include <QDateTimeEdit>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

#include <memory>

using namespace kpx;
using namespace kpx::test;

/// What the user types arrives as keystrokes; what the program writes does not.
class TypingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    void cleanup() { m_program.reset(); }

    void typingReachesTheControlAndSwitchesDeleteOff() {
        outlets().deleteBtnTab1.setEnabled(true);
        QVERIFY(button("deleteBtnTab1")->isEnabled());
        type(*field("scriptNoteTab1"), QStringLiteral("Zoë’s note"));
        QCOMPARE(outlets().scriptNoteTab1.text(), std::string("Zoë’s note"));
        QVERIFY(outlets().scriptNoteTab1.isBeingEdited());
        QVERIFY(!button("deleteBtnTab1")->isEnabled());
    }

    void aTextThatTheProgramWritesIsNoKeystroke() {
        outlets().deleteBtnTab1.setEnabled(true);
        outlets().daysSupply.setText("not a number");
        QCOMPARE(field("daysSupply")->text(), QStringLiteral("not a number"));
        QVERIFY(!outlets().daysSupply.isBeingEdited());
        QVERIFY(button("deleteBtnTab1")->isEnabled());
    }

    void theNumberFieldsDropTheirLastCharacter() {
        field("daysSupply")->setFocus();
        type(*field("daysSupply"), QStringLiteral("12a"));
        QCOMPARE(field("daysSupply")->text(), QStringLiteral("12"));
        QCOMPARE(field("daysSupply")->cursorPosition(), 2);
        type(*field("daysSupply"), QStringLiteral("345"));
        QCOMPARE(field("daysSupply")->text(), QStringLiteral("123"));
    }

    void theCostFieldKeepsItsTextAndCursorWhenItRefuses() {
        QLineEdit* cost = field("totalCostTab1");
        cost->setFocus();
        type(*cost, QStringLiteral("1234.5"));
        cost->setCursorPosition(2);
        type(*cost, QStringLiteral("x"));
        QCOMPARE(cost->text(), QStringLiteral("1234.5"));
        QCOMPARE(cost->cursorPosition(), 2);
    }

    void theGuardsHoldForWhatIsPastedDroppedComposedAndUndone() {
        QLineEdit* days = field("daysSupply");
        QLineEdit* cost = field("totalCostTab1");
        days->setFocus();
        QGuiApplication::clipboard()->setText(QStringLiteral("12345"));
        days->paste();
        // The last character goes, whatever came.
        QCOMPARE(days->text(), QStringLiteral("1234"));
        QCOMPARE(outlets().daysSupply.text(), std::string("1234"));
        days->undo();
        QCOMPARE(utf8(days->text()), outlets().daysSupply.text());
        days->selectAll();
        QInputMethodEvent composed;
        composed.setCommitString(QStringLiteral("7日"));
        QCoreApplication::sendEvent(days, &composed);
        QCOMPARE(days->text(), QStringLiteral("7"));
        QCOMPARE(outlets().daysSupply.text(), std::string("7"));

        QGuiApplication::clipboard()->setText(QStringLiteral("$12.50"));
        cost->paste();
        QVERIFY(cost->text().isEmpty());
        QMimeData dropped;
        dropped.setText(QStringLiteral("12,50"));
        drop(*cost, dropped);
        QVERIFY(cost->text().isEmpty());
        dropped.setText(QStringLiteral("12.50"));
        drop(*cost, dropped);
        QCOMPARE(cost->text(), QStringLiteral("12.50"));
        QCOMPARE(outlets().totalCostTab1.text(), std::string("12.50"));
    }

    void leavingTheCostFieldFormatsIt() {
        QLineEdit* cost = field("totalCostTab1");
        cost->setFocus();
        type(*cost, QStringLiteral("1234.5"));
        QTest::keyClick(cost, Qt::Key_Tab);
        QCOMPARE(cost->text(), QStringLiteral("1,234.50"));
    }

    void aButtonPressedByItsShortcutEndsTheEditingFirst() {
        QLineEdit* cost = field("totalCostTab1");
        cost->setFocus();
        type(*cost, QStringLiteral("7"));
        QVERIFY(pressKeys(QStringLiteral("alt+a")));
        QTRY_COMPARE(outlets().totalCostTab1.text(), std::string("7.00"));
    }

    void aDateKeepsItsTimeOfDayWhenTheDayIsTyped() {
        auto* date = widgetNamed<QDateTimeEdit>(m_program->window(), "dispenseDateTab1");
        const Date before = outlets().dispenseDateTab1.date();
        date->setFocus();
        date->setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClick(date, Qt::Key_Up);
        const double seconds = outlets().dispenseDateTab1.date().secondsSince(before);
        // One day on, but for a clock change; to the millisecond in which dates are shown.
        QVERIFY2(std::abs(std::abs(seconds) - 86400) < 3600.01 || std::abs(seconds) > 27 * 86400.0,
                 qPrintable(QString::number(seconds)));
        const double ofDay = std::fmod(std::abs(seconds), 3600.0);
        QVERIFY(ofDay < 0.002 || ofDay > 3599.998);
    }

    void theWheelLeavesADateAloneAndTakesNoFocus() {
        auto* date = widgetNamed<QDateTimeEdit>(m_program->window(), "dispenseDateTab1");
        const QDate before = date->date();
        field("rxNumberTab1")->setFocus();
        const QPointF middle = date->rect().center();
        QWheelEvent wheel(middle, date->mapToGlobal(middle), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(date, &wheel);
        QCOMPARE(date->date(), before);
        QVERIFY(field("rxNumberTab1")->hasFocus());
    }

    void aYearOfTwoDigitsIsOfThisCentury() {
        auto* date = widgetNamed<QDateTimeEdit>(m_program->window(), "dispenseDateTab1");
        typeYear(*date, QStringLiteral("24"));
        QTest::keyClick(date, Qt::Key_Tab);
        QCOMPARE(date->date().year(), 2024);
        QCOMPARE(qdateTime(outlets().dispenseDateTab1.date()).date().year(), 2024);
    }

    void aDateIsTypedWithItsSeparators() {
        auto* date = widgetNamed<QDateTimeEdit>(m_program->window(), "dispenseDateTab1");
        QCOMPARE(date->displayFormat(), QStringLiteral("M/d/yyyy"));
        const struct {
            const char* typed;
            QDate day;
        } rows[] = {{"2/14/2025", {2025, 2, 14}},
                    {"12/1/24", {2024, 12, 1}},
                    {"1/31/2026", {2026, 1, 31}},
                    {"3/5/2023", {2023, 3, 5}}};
        for (const auto& row : rows) {
            date->setFocus();
            date->setSelectedSection(QDateTimeEdit::MonthSection);
            type(*date, QString::fromLatin1(row.typed));
            QTest::keyClick(date, Qt::Key_Tab);
            QCOMPARE(date->date(), row.day);
        }
    }

    void aDateIsTypedOverAllOfTheLastOne() {
        auto* date = widgetNamed<QDateTimeEdit>(m_program->window(), "dispenseDateTab1");
        date->setDate(QDate(2025, 1, 1));
        date->setFocus();
        QTest::keyClick(date, Qt::Key_A, Qt::ControlModifier);
        type(*date, QStringLiteral("12/31/2026"));
        QTest::keyClick(date, Qt::Key_Tab);
        QCOMPARE(date->date(), QDate(2026, 12, 31));
        QCOMPARE(qdateTime(outlets().dispenseDateTab1.date()).date(), QDate(2026, 12, 31));
    }

    void aDateTypedInPartIsReadBeforeAButtonActs() {
        auto* date = widgetNamed<QDateTimeEdit>(m_program->window(), "dispenseDateTab1");
        typeYear(*date, QStringLiteral("24"));
        QVERIFY(date->hasFocus());
        // Refused, as the form is empty; the date is read all the same.
        QVERIFY(pressKeys(QStringLiteral("alt+a")));
        QTRY_COMPARE(qdateTime(outlets().dispenseDateTab1.date()).date().year(), 2024);
        AlertBox* alert = waitForAlert();
        QVERIFY(alert);
        QTest::keyClick(alert, Qt::Key_Return);
    }

    void whatAssistiveTechnologySetsReachesTheControl() {
        QAccessibleInterface* cost = QAccessible::queryAccessibleInterface(field("totalCostTab1"));
        cost->setText(QAccessible::Value, QStringLiteral("1234.5"));
        QCOMPARE(outlets().totalCostTab1.text(), std::string("1,234.50"));
        QCOMPARE(field("totalCostTab1")->text(), QStringLiteral("1,234.50"));
        cost->setText(QAccessible::Value, QStringLiteral("twelve"));
        QCOMPARE(outlets().totalCostTab1.text(), std::string("1,234.50"));
        QCOMPARE(field("totalCostTab1")->text(), QStringLiteral("1,234.50"));
    }

private:
    static void drop(QWidget& widget, const QMimeData& data) {
        QDragEnterEvent entered(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &entered);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }

    static void typeYear(QDateTimeEdit& date, const QString& digits) {
        date.setFocus();
        date.setSelectedSection(QDateTimeEdit::YearSection);
        for (const QChar digit : digits) {
            QTest::keyClick(&date, digit.toLatin1());
        }
    }

    Outlets& outlets() { return m_program->delegate().outlets; }
    QLineEdit* field(const char* name) { return widgetNamed<QLineEdit>(m_program->window(), name); }
    QPushButton* button(const char* name) { return widgetNamed<QPushButton>(m_program->window(), name); }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(TypingTest)
#include "TypingTest.moc"
