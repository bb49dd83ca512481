#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTest>

#include <memory>

using namespace kpx;
using namespace kpx::test;

/// The forms and the outlets fit, and everything in the window can be reached and named.
class BinderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = std::make_unique<Application>();
    }
    void cleanup() { m_program.reset(); }

    void everyControlHasItsWidget() {
        QVERIFY(m_program->delegate().outlets.controls().size() > 100);
        for (const std::string& mismatch : m_program->binder().mismatches()) {
            QFAIL(mismatch.c_str());
        }
    }

    void missingAndSuperfluousWidgetsAreFound() {
        KPXAppDelegate delegate(m_program->ports().ports());
        MainWindow window;
        widgetNamed<QLineEdit>(window, "daysSupply")->setObjectName(QStringLiteral("daysSuply"));
        const Binder binder(delegate, window);
        const std::vector<std::string> expected = {"daysSupply has no widget", "the widget daysSuply has no control"};
        QCOMPARE(binder.mismatches(), expected);
    }

    void widgetsOfAnotherKindAreFound() {
        KPXAppDelegate delegate(m_program->ports().ports());
        MainWindow window;
        auto* note = widgetNamed<QLineEdit>(window, "scriptNoteTab1");
        auto* cost = widgetNamed<QComboBox>(window, "takeNumberTab1");
        note->setObjectName(QStringLiteral("takeNumberTab1"));
        cost->setObjectName(QStringLiteral("scriptNoteTab1"));
        const Binder binder(delegate, window);
        const std::vector<std::string> expected = {"takeNumberTab1 has a widget of another kind",
                                                   "scriptNoteTab1 has a widget of another kind"};
        QCOMPARE(binder.mismatches(), expected);
    }

    void anotherTitleIsFound() {
        KPXAppDelegate delegate(m_program->ports().ports());
        MainWindow window;
        widgetNamed<QAbstractButton>(window, "addBtnTab1")->setText(QStringLiteral("&Append"));
        const Binder binder(delegate, window);
        const std::vector<std::string> expected = {"addBtnTab1 has a widget with another title"};
        QCOMPARE(binder.mismatches(), expected);
    }

    void everyControlHasAnAccessibleName() {
        for (const Control* control : m_program->delegate().outlets.controls()) {
            QWidget* widget = m_program->binder().widgetForControl(*control);
            if (!widget || dynamic_cast<const Popover*>(control) || dynamic_cast<const Menu*>(control) ||
                dynamic_cast<const Label*>(control) || dynamic_cast<const Bar*>(control) ||
                control->name() == "standingReminder") {
                continue;
            }
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
            QVERIFY2(accessible, control->name().c_str());
            QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(), control->name().c_str());
        }
    }

    void mnemonicsAreUniqueOnEachTabAndSheet() {
        QStringList menus;
        for (const QAction* action : m_program->window().menuBar()->actions()) {
            menus += mnemonic(action->text());
        }
        auto* tabs = widgetNamed<QTabWidget>(m_program->window(), "theTabView");
        for (int index = 0; index < tabs->count(); ++index) {
            compareUnique(*tabs->widget(index), menus);
        }
        for (const QDialog* sheet : m_program->window().findChildren<QDialog*>()) {
            compareUnique(*sheet, {});
        }
    }

    void tabOrderFollowsTheEyes() {
        QVERIFY(startUp(*m_program));
        m_program->ports().windows.closeSplash();
        m_program->window().activateWindow();
        const QStringList order = {"patientPopTab1",     "drugPopTab1",
                                   "prescriberPopTab1",  "pharmacyPopTab1",
                                   "rxNumberTab1",       "fillTypeTab1",
                                   "dispenseDateTab1",   "popOverTriggerTab1DispenseDate",
                                   "expirationDateTab1", "popOverTriggerTab1ExpirationDate",
                                   "daysSupply",         "initialRefillsTab1",
                                   "totalCostTab1",      "remainingRefillsTab1",
                                   "takeNumberTab1",     "drugTypeOrMeasureTab1",
                                   "everyIntervalTab1",  "whenToTakeDrugTab1",
                                   "dropButton",         "scriptNoteTab1",
                                   "addBtnTab1",         "allBtnTab1",
                                   "filterBtnTab1",      "showPrintTableListBtn",
                                   "tableViewTab1"};
        widgetNamed<QWidget>(m_program->window(), "patientPopTab1")->setFocus();
        for (const QString& name : order) {
            QVERIFY(QApplication::focusWidget());
            QCOMPARE(QApplication::focusWidget()->objectName(), name);
            // A date is one stop.
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
    }

private:
    static QString mnemonic(const QString& text) { return QKeySequence::mnemonic(text).toString(); }

    void compareUnique(const QWidget& page, QStringList taken) {
        for (const QWidget* widget : page.findChildren<QWidget*>()) {
            QString key;
            if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
                key = mnemonic(button->text());
            } else if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy()) {
                key = mnemonic(label->text());
            }
            QVERIFY2(key.isEmpty() || !taken.contains(key),
                     qPrintable(page.objectName() + QLatin1Char(' ') + key + QLatin1Char(' ') + widget->objectName()));
            taken += key;
        }
    }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(BinderTest)
#include "BinderTest.moc"
