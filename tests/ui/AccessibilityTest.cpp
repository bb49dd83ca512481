#include "region/DateUtilities.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/views/AlertBox.h"
#include "ui/views/PopUpCombo.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/RecordTableView.h"
#include "ui/views/SheetDialog.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

using namespace kpx;
using namespace kpx::test;

/// What assistive technology meets in the windows, and that its acts are acts.
class AccessibilityTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    void cleanup() { m_program.reset(); }

    void everyFocusableControlHasARoleAndAName() {
        QTest::mouseClick(find<QAbstractButton>("showPrintTableListBtn"), Qt::LeftButton);
        const auto previews = m_program->ports().preview.windows();
        QCOMPARE(previews.size(), std::size_t{1});
        m_focusable = 0;
        walk(m_program->window());
        QVERIFY(m_focusable > 150);
        for (auto* sheet : m_program->window().findChildren<SheetDialog*>()) {
            walk(*sheet);
        }
        for (auto* popover : m_program->window().findChildren<PopoverFrame*>()) {
            walk(*popover);
        }
        walk(*previews.front());
    }

    void aPopUpIsChosenByItsItems() {
        PopUpButton& type = outlets().fillTypeTab1;
        QAccessibleInterface* popUp = accessible(find<QWidget>("fillTypeTab1"));
        press(itemNamed(popUp, QStringLiteral("Refill")));
        QTRY_COMPARE(type.indexOfSelectedItem(), 1);
        press(itemNamed(popUp, QStringLiteral("Initial")));
        QTRY_COMPARE(type.indexOfSelectedItem(), 0);
        // Out of the open list too.
        auto* combo = find<PopUpCombo>("fillTypeTab1");
        popUp->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        QTRY_VERIFY(combo->view()->isVisible());
        press(itemNamed(popUp, QStringLiteral("Refill")));
        QTRY_COMPARE(type.indexOfSelectedItem(), 1);
        QTRY_VERIFY(!combo->view()->isVisible());
    }

    void theItemThatIsChosenCanBeChosenAgain() {
        PopUpButton& patients = outlets().patientPopTab1;
        QAccessibleInterface* popUp = accessible(find<QWidget>("patientPopTab1"));
        auto* sheet = find<SheetDialog>("thepatientSheet");
        for (int time = 0; time < 2; ++time) {
            press(itemNamed(popUp, qstring(*patients.items().back())));
            QTRY_VERIFY(sheet->isVisible());
            sheet->reject();
            QTRY_VERIFY(!sheet->isVisible());
        }
        auto* combo = find<PopUpCombo>("patientPopTab1");
        combo->showPopup();
        QTRY_VERIFY(combo->view()->isVisible());
        press(itemNamed(popUp, qstring(*patients.items().back())));
        QTRY_VERIFY(sheet->isVisible());
    }

    void aPopUpThatIsGreyedIsNotChosen() {
        outlets().fillTypeTab1.setEnabled(false);
        press(itemNamed(accessible(find<QWidget>("fillTypeTab1")), QStringLiteral("Refill")));
        QCoreApplication::processEvents();
        QCOMPARE(outlets().fillTypeTab1.indexOfSelectedItem(), 0);
        QCOMPARE(find<QComboBox>("fillTypeTab1")->currentIndex(), 0);
    }

    void whatLiesBehindASheetIsOutOfReach() {
        press(accessible(find<QWidget>("filterBtnTab1")));
        QTRY_VERIFY(find<SheetDialog>("theFilterSheetTab1")->isVisible());
        QAccessibleInterface* cell = accessible(find<QWidget>("tableViewTab1"))->tableInterface()->cellAt(0, 0);
        act(cell, QAccessibleActionInterface::pressAction());
        QCOMPARE(outlets().rxNumberTab1.text(), std::string());
        press(itemNamed(accessible(find<QWidget>("fillTypeTab1")), QStringLiteral("Refill")));
        QCOMPARE(outlets().fillTypeTab1.indexOfSelectedItem(), 0);
        press(accessible(find<QWidget>("addBtnTab1")));
        QVERIFY(noAlertShows());
        const QDate before = dayShown("dispenseDateTab1");
        accessible(find<QWidget>("dispenseDateTab1"))->valueInterface()->setCurrentValue(2460000);
        QCOMPARE(dayShown("dispenseDateTab1"), before);
        QCOMPARE(find<QDateTimeEdit>("dispenseDateTab1")->date(), before);
        accessible(find<QWidget>("totalCostTab1"))->editableTextInterface()->insertText(0, QStringLiteral("5"));
        accessible(find<QWidget>("scriptNoteTab1"))->setText(QAccessible::Value, QStringLiteral("behind"));
        for (const char* field : {"totalCostTab1", "scriptNoteTab1"}) {
            QCOMPARE(find<QLineEdit>(field)->text(), QString());
        }
        QCOMPARE(outlets().scriptNoteTab1.text(), std::string());
        auto* tabs = find<QTabWidget>("theTabView");
        press(childNamed(accessible(tabs->tabBar()), tabs->tabText(3)));
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(outlets().theTabView.selectedTab(), 0);
        act(accessible(find<QWidget>("fillTypeTab1")), QAccessibleActionInterface::showMenuAction());
        QVERIFY(!find<PopUpCombo>("fillTypeTab1")->view()->isVisible());
        accessible(find<QMenu>("menuFile"))
            ->child(0)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(!find<SheetDialog>("theEarlierStatesSheet")->isVisible());
        QMenu* standing = find<QMenu>("standingReminder");
        accessible(standing)->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(outlets().standingReminder.indexOfSelectedItem(), 0);
        QVERIFY(standing->actions().at(0)->isChecked());
        // What lies on the sheet is not.
        press(accessible(find<QWidget>("closeBtnFilterSheet")));
        QTRY_VERIFY(!find<SheetDialog>("theFilterSheetTab1")->isVisible());
    }

    void whatIsFilledInOnASheetIsNotThrownAwayUnasked() {
        press(
            itemNamed(accessible(find<QWidget>("patientPopTab1")), qstring(*outlets().patientPopTab1.items().back())));
        auto* sheet = find<SheetDialog>("thepatientSheet");
        QTRY_VERIFY(sheet->isVisible());
        accessible(find<QWidget>("patientCitypatientSheet"))
            ->setText(QAccessible::Value, QStringLiteral("Springfield"));
        // The question waits for its answer.
        bool asked = false;
        QTimer::singleShot(0, sheet, [&asked] {
            AlertBox* question = waitForAlert();
            asked = question != nullptr;
            if (question) {
                question->reject();
            }
        });
        QTest::keyClick(sheet, Qt::Key_Escape);
        QVERIFY(asked);
        QVERIFY(sheet->isVisible());
        QCOMPARE(find<QLineEdit>("patientCitypatientSheet")->text(), QStringLiteral("Springfield"));
    }

    void whatIsNotSeenIsOutOfReach() {
        QAccessibleInterface* box = accessible(find<QWidget>("reportsTab4_4"));
        act(box, QAccessibleActionInterface::toggleAction());
        QVERIFY(!outlets().reportsTab4.isOn(4));
        QVERIFY(!find<QAbstractButton>("reportsTab4_4")->isChecked());
        press(accessible(find<QWidget>("closeBtnFilterSheet")));
        press(accessible(find<QWidget>("addBtnDrugSheet")));
        QVERIFY(noAlertShows());
        find<QTabWidget>("theTabView")->setCurrentIndex(3);
        act(box, QAccessibleActionInterface::toggleAction());
        QVERIFY(outlets().reportsTab4.isOn(4));
    }

    void aRowIsSelectedLoadedAndHasItsMenu() {
        QAccessibleTableInterface* table = accessible(find<QWidget>("tableViewTab1"))->tableInterface();
        QVERIFY(table);
        QAccessibleInterface* cell = table->cellAt(2, 2);
        act(cell, QAccessibleActionInterface::toggleAction());
        QCOMPARE(outlets().tableViewTab1.selectedRow(), 2);
        QVERIFY(!outlets().changeBtnTab1.isEnabled());
        act(cell, QAccessibleActionInterface::pressAction());
        QCOMPARE(qstring(outlets().rxNumberTab1.text()), cell->text(QAccessible::Name));
        QVERIFY(outlets().changeBtnTab1.isEnabled());
        // As with the mouse, a click is a click on the selected row too.
        act(cell, QAccessibleActionInterface::toggleAction());
        QVERIFY(!outlets().changeBtnTab1.isEnabled());
        act(table->cellAt(4, 0), QAccessibleActionInterface::showMenuAction());
        auto* menu = find<QMenu>("contextMenuTab1");
        QTRY_VERIFY(menu->isVisible());
        QCOMPARE(outlets().tableViewTab1.selectedRow(), 4);
        menu->close();
    }

    void theReceiptButtonHasItsMenu() {
        QAccessibleInterface* button = accessible(find<QWidget>("dropButton"));
        QCOMPARE(button->role(), QAccessible::Button);
        act(button, QAccessibleActionInterface::showMenuAction());
        auto* menu = find<QMenu>("contextMenuReceipt");
        QTRY_VERIFY(menu->isVisible());
        // It is found in the tree, and goes when an item is pressed.
        QAccessibleInterface* window = accessible(&m_program->window());
        QCOMPARE(window->role(), QAccessible::Window);
        const int index = window->indexOfChild(accessible(menu));
        QVERIFY(index >= 0 && index == window->childCount() - 1);
        QAccessibleInterface* shown = window->child(index);
        QCOMPARE(shown, accessible(menu));
        QGuiApplication::clipboard()->setText(QStringLiteral("no file"));
        press(childNamed(shown, QStringLiteral("Paste")));
        QTRY_VERIFY(!menu->isVisible());
        QCOMPARE(window->indexOfChild(accessible(menu)), -1);
        QCOMPARE(outlets().statusText.text(), std::string("The clipboard holds no file."));
        press(button);
        QTRY_VERIFY(find<PopoverFrame>("receiptPopover")->isVisible());
        find<PopoverFrame>("receiptPopover")->hide();
    }

    void aHeaderSorts() {
        QAccessibleInterface* table = accessible(find<QWidget>("tableViewTab1"));
        QAccessibleInterface* header = table->child(1);
        QCOMPARE(header->role(), QAccessible::ColumnHeader);
        QCOMPARE(header->text(QAccessible::Name), QStringLiteral("Patient"));
        for (const bool ascending : {true, false}) {
            act(header, QAccessibleActionInterface::pressAction());
            const auto& order = outlets().tableViewTab1.sortDescriptors();
            QVERIFY(!order.empty());
            QCOMPARE(order.front().key, std::string("patient"));
            QCOMPARE(order.front().ascending, ascending);
        }
    }

    void whatHasTheFocusInATableIsTold() {
        auto* view = find<RecordTableView>("tableViewTab1");
        view->setFocus();
        view->setCurrentIndex(view->model()->index(3, 1));
        QAccessibleInterface* table = accessible(view);
        QCOMPARE(table->focusChild(), table->tableInterface()->cellAt(3, 1));
        // As the toolkit counts when it tells of the focus.
        QCOMPARE(table->child((3 + 1) * (view->model()->columnCount() + 1) + 1 + 1), table->focusChild());
        QCOMPARE(table->indexOfChild(table->focusChild()), (3 + 1) * (view->model()->columnCount() + 1) + 2);
    }

    void cellsOutliveTheirRows() {
        QAccessibleTableInterface* table = accessible(find<QWidget>("tableViewTab1"))->tableInterface();
        QAccessibleInterface* last = table->cellAt(table->rowCount() - 1, 0);
        QVERIFY(last->isValid());
        m_program->delegate().maintArrayForTVTab1.clear();
        outlets().tableViewTab1.reloadData();
        QVERIFY(!last->isValid());
        QVERIFY(last->text(QAccessible::Name).isEmpty());
        last->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(outlets().rxNumberTab1.text(), std::string());
        QCOMPARE(table->rowCount(), 0);
        QVERIFY(accessible(find<QWidget>("tableViewTab1"))
                    ->text(QAccessible::Description)
                    .startsWith(QStringLiteral("No prescriptions to show")));
    }

    void aDateIsSetAsATextAndBySteps() {
        auto* field = find<QDateTimeEdit>("dispenseDateTab1");
        QAccessibleInterface* date = accessible(field);
        QVERIFY(date->editableTextInterface());
        const QString typed = field->locale().toString(QDate(2026, 3, 9), field->displayFormat());
        date->editableTextInterface()->replaceText(0, static_cast<int>(field->text().size()), typed);
        QCOMPARE(field->date(), QDate(2026, 3, 9));
        QCOMPARE(dayShown("dispenseDateTab1"), QDate(2026, 3, 9));
        const QDate before = dayShown("dispenseDateTab1");
        QAccessibleValueInterface* value = date->valueInterface();
        value->setCurrentValue(value->currentValue().toInt() + value->minimumStepSize().toInt());
        QCOMPARE(dayShown("dispenseDateTab1"), before.addDays(1));
        value->setCurrentValue(value->currentValue().toInt() - 1);
        QCOMPARE(dayShown("dispenseDateTab1"), before);
        // What is no date is none.
        date->setText(QAccessible::Value, QStringLiteral("never"));
        QCOMPARE(dayShown("dispenseDateTab1"), before);
        QCOMPARE(date->text(QAccessible::Value), typed);
    }

    void theCalendarsDaysHaveNamesAndArePicked() {
        outlets().expirationDateTab1.setDate(dateOnDay({2026, 11, 22}, outlets().expirationDateTab1.date(), here()));
        act(accessible(find<QWidget>("popOverTriggerTab1ExpirationDate")), QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(find<PopoverFrame>("thePopOver")->isVisible());
        auto* calendar = find<QCalendarWidget>("theDatePicker");
        QCOMPARE(calendar->selectedDate(), QDate(2026, 11, 22));
        QAccessibleInterface* days =
            accessible(calendar->findChild<QWidget*>(QStringLiteral("qt_calendar_calendarview")));
        struct Row {
            const char* name;
            QDate day;
        };
        for (const Row& row :
             {Row{"Monday, November 23, 2026", QDate(2026, 11, 23)},
              Row{"Sunday, November 1, 2026", QDate(2026, 11, 1)}, Row{"Tuesday, December 1, 2026", QDate(2026, 12, 1)},
              Row{"Monday, November 30, 2026", QDate(2026, 11, 30)},
              Row{"Saturday, October 31, 2026", QDate(2026, 10, 31)}}) {
            QAccessibleInterface* cell = childNamed(days, QLatin1String(row.name));
            if (!cell && row.day.month() != 11) {
                continue;  // which days of the neighbours are seen is the calendar's
            }
            QVERIFY2(cell, row.name);
            act(cell, QAccessibleActionInterface::toggleAction());
            QCOMPARE(dayShown("expirationDateTab1"), row.day);
            calendar->setCurrentPage(2026, 11);
        }
        act(accessible(calendar->findChild<QWidget*>(QStringLiteral("qt_calendar_nextmonth"))),
            QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(calendar->monthShown(), 12);
    }

private:
    Outlets& outlets() { return m_program->delegate().outlets; }
    Environment here() { return m_program->delegate().environment(); }
    template <class Widget>
    Widget* find(const char* name) {
        return widgetNamed<Widget>(m_program->window(), name);
    }
    QDate dayShown(const char* name) {
        const auto& field = dynamic_cast<const DateField&>(*outlets().find(name));
        const CalendarDay day = yearMonthDayFromDate(field.date(), here());
        return {day.year, day.month, day.day};
    }

    static QAccessibleInterface* accessible(QObject* object) { return QAccessible::queryAccessibleInterface(object); }
    static void act(QAccessibleInterface* interface, const QString& action) {
        QVERIFY(interface && interface->actionInterface());
        QVERIFY2(interface->actionInterface()->actionNames().contains(action), qPrintable(action));
        interface->actionInterface()->doAction(action);
    }
    static void press(QAccessibleInterface* item) { act(item, QAccessibleActionInterface::pressAction()); }
    static QAccessibleInterface* childNamed(QAccessibleInterface* parent, const QString& name) {
        for (int index = 0; index < parent->childCount(); ++index) {
            QAccessibleInterface* child = parent->child(index);
            if (child && child->text(QAccessible::Name) == name) {
                return child;
            }
        }
        return nullptr;
    }
    /// The list is the pop-up's first child.
    static QAccessibleInterface* itemNamed(QAccessibleInterface* popUp, const QString& name) {
        return childNamed(popUp->child(0), name);
    }

    void walk(QWidget& window) { visit(accessible(&window), window.objectName()); }

    void visit(QAccessibleInterface* interface, const QString& path) {
        QVERIFY2(interface, qPrintable(path));
        const QString name = interface->text(QAccessible::Name);
        const QObject* object = interface->object();
        const QString here =
            path + QLatin1Char('/') + (object && !object->objectName().isEmpty() ? object->objectName() : name);
        QVERIFY2(interface->isValid(), qPrintable(here));
        if (interface->state().focusable) {
            ++m_focusable;
            QVERIFY2(interface->role() != QAccessible::NoRole, qPrintable(here));
            QVERIFY2(!name.isEmpty() || isCell(interface), qPrintable(here + QStringLiteral(" has no name")));
            if (interface->role() == QAccessible::ComboBox) {
                const auto labels = interface->relations(QAccessible::Label);
                QVERIFY2(!labels.isEmpty() || !interface->text(QAccessible::Description).isEmpty(),
                         qPrintable(here + QStringLiteral(" does not say what it is for")));
            }
            if (isActor(interface->role())) {
                QVERIFY2(interface->actionInterface() || interface->editableTextInterface(),
                         qPrintable(here + QStringLiteral(" cannot be acted upon")));
            }
        }
        for (int index = 0; index < interface->childCount(); ++index) {
            visit(interface->child(index), here);
        }
    }
    static bool isCell(const QAccessibleInterface* interface) {
        // A field of a record may be empty.
        return interface->role() == QAccessible::Cell;
    }
    static bool isActor(QAccessible::Role role) {
        return role == QAccessible::PushButton || role == QAccessible::CheckBox || role == QAccessible::RadioButton ||
               role == QAccessible::ComboBox || role == QAccessible::PageTab || role == QAccessible::SpinBox ||
               role == QAccessible::EditableText || role == QAccessible::MenuItem;
    }

    int m_focusable = 0;
    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(AccessibilityTest)
#include "AccessibilityTest.moc"
