#include "tests/ui/Dragging.h"
#include "tests/ui/Instants.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/views/DWKButtonHover.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/SheetDialog.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCalendarWidget>
#include <QCursor>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace kpx;
using namespace kpx::test;

/// The shared calendar of the eight date fields, and the small buttons that open it.
class PickerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        m_portal.start(QCoreApplication::applicationDirPath() + QStringLiteral("/settings_portal"), QStringList());
        QVERIFY(m_portal.waitForStarted());
        setScheme("light");
    }
    void cleanupTestCase() {
        m_portal.closeWriteChannel();
        QVERIFY(m_portal.waitForFinished());
    }
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
        QVERIFY(moveWindow(m_program->window(), {100, 100}));
        m_program->delegate().outlets.theTabView.selectTab(0);
    }
    void cleanup() {
        m_program->delegate().outlets.theTabView.selectTab(0);
        m_program->window().close();
        m_program.reset();
    }

    void eachTriggerServesItsFieldAndNoOther() {
        Outlets& outlets = m_program->delegate().outlets;
        const struct {
            int tab;
            bool onFilterSheet;
            const char* trigger;
            DateField* field;
        } rows[] = {{0, false, "popOverTriggerTab1DispenseDate", &outlets.dispenseDateTab1},
                    {0, false, "popOverTriggerTab1ExpirationDate", &outlets.expirationDateTab1},
                    {0, true, "fromDateFilterCalIcon", &outlets.beginDateForShowTab1},
                    {0, true, "toDateFilterCalIcon", &outlets.endDateForShowTab1},
                    {2, false, "popOverTriggerTab3BeginDate", &outlets.beginDateTab3},
                    {2, false, "popOverTriggerTab3EndDate", &outlets.endDateTab3},
                    {3, false, "popOverTriggerTab4BeginDate", &outlets.beginDateTab4},
                    {3, false, "popOverTriggerTab4EndDate", &outlets.endDateTab4}};
        int day = 3;
        for (const auto& row : rows) {
            outlets.theTabView.selectTab(row.tab);
            auto* sheet = find<SheetDialog>("theFilterSheetTab1");
            if (row.onFilterSheet && !sheet->isVisible()) {
                QTest::mouseClick(find<QPushButton>("filterBtnTab1"), Qt::LeftButton);
                QTRY_VERIFY(sheet->isVisible());
                QVERIFY(waitUntilActive(sheet));
            } else if (!row.onFilterSheet && sheet->isVisible()) {
                QTest::keyClick(sheet, Qt::Key_Escape);
                QTRY_VERIFY(!sheet->isVisible());
                QVERIFY(waitUntilActive(&m_program->window()));
            }
            const QTime timeOfDay(7, 8, 9);
            row.field->setDate(dateFromQDateTime(QDateTime(QDate(2024, 5, ++day), timeOfDay)));
            std::vector<Date> before;
            for (const auto& each : rows) {
                before.push_back(each.field->date());
            }

            auto* trigger = find<DWKButtonHover>(row.trigger);
            QVERIFY2(!trigger->accessibleName().isEmpty(), row.trigger);
            QVERIFY2(clickMouse(*trigger), row.trigger);
            QTRY_VERIFY2(popover().isVisible(), row.trigger);
            QVERIFY2(popover().parentWidget() == trigger->window(), row.trigger);
            QVERIFY2(!trigger->isChecked(), row.trigger);
            QCOMPARE(calendar().selectedDate(), QDate(2024, 5, day));
            QVERIFY(popover().screen()->availableGeometry().contains(popover().frameGeometry()));
            const int triggersRight = trigger->mapToGlobal(QPoint(trigger->width(), 0)).x();
            QVERIFY2(popover().x() >= triggersRight && popover().x() < triggersRight + 12, row.trigger);

            // Several picks in a row, without another click first: the days take the keys at once.
            pressInPopover(Qt::Key_Right);
            QTRY_COMPARE(qdateTime(row.field->date()), QDateTime(QDate(2024, 5, day + 1), timeOfDay));
            pressInPopover(Qt::Key_Down);
            QTRY_COMPARE(qdateTime(row.field->date()), QDateTime(QDate(2024, 5, day + 8), timeOfDay));
            QVERIFY(popover().isVisible());
            for (std::size_t index = 0; index < before.size(); ++index) {
                QVERIFY2(rows[index].field == row.field || rows[index].field->date() == before[index], row.trigger);
            }
            pressInPopover(Qt::Key_Escape);
            QTRY_VERIFY(!popover().isVisible());
            QCOMPARE(qdateTime(row.field->date()), QDateTime(QDate(2024, 5, day + 8), timeOfDay));
        }
    }

    void aMouseClickPicksADayAndTheNextTriggerTakesThePopoverOver() {
        Outlets& outlets = m_program->delegate().outlets;
        outlets.dispenseDateTab1.setDate(dateFromQDateTime(QDateTime(QDate(2024, 5, 15), QTime(23, 59, 58))));
        outlets.expirationDateTab1.setDate(dateFromQDateTime(QDateTime(QDate(2025, 2, 1), QTime(0, 0))));
        auto* first = find<DWKButtonHover>("popOverTriggerTab1DispenseDate");
        auto* second = find<DWKButtonHover>("popOverTriggerTab1ExpirationDate");
        QVERIFY(clickMouse(*first));
        QTRY_VERIFY(popover().isVisible());
        auto* days = calendar().findChild<QAbstractItemView*>(QStringLiteral("qt_calendar_calendarview"));
        // 21 May lies one row below and one column before the 15th.
        const QModelIndex shown = days->currentIndex();
        const QRect cell = days->visualRect(shown.sibling(shown.row() + 1, shown.column() - 1));
        QVERIFY(clickMouse(*days->viewport(), cell.center()));
        QTRY_COMPARE(qdateTime(outlets.dispenseDateTab1.date()), QDateTime(QDate(2024, 5, 21), QTime(23, 59, 58)));
        QVERIFY(popover().isVisible());
        QVERIFY(clickMouse(*second));
        QTRY_COMPARE(outlets.thePopOver.anchor(),
                     static_cast<const Control*>(outlets.find(utf8(second->objectName()))));
        QVERIFY(popover().isVisible());
        QCOMPARE(calendar().selectedDate(), QDate(2025, 2, 1));
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        QVERIFY(clickMouse(*second));
        QTRY_VERIFY(!popover().isVisible());
    }

    void aClickOnAButtonElsewhereClosesTheCalendarAndActs() {
        QVERIFY(clickMouse(*find<DWKButtonHover>("popOverTriggerTab1DispenseDate")));
        QTRY_VERIFY(popover().isVisible());
        auto* filter = find<QPushButton>("filterBtnTab1");
        QVERIFY(clickMouse(*filter));
        auto* sheet = find<SheetDialog>("theFilterSheetTab1");
        QTRY_VERIFY(sheet->isVisible());
        QVERIFY(waitUntilActive(sheet));
        QVERIFY(!popover().isVisible());
        QVERIFY(!filter->isDown());
        QTest::keyClick(sheet, Qt::Key_Escape);
        QTRY_VERIFY(!sheet->isVisible());
    }

    void theNameOfTheMonthStaysReadableWhenTheMouseHasLeftIt() {
        QVERIFY(clickMouse(*find<DWKButtonHover>("popOverTriggerTab1DispenseDate")));
        QTRY_VERIFY(popover().isVisible());
        auto* month = calendar().findChild<QAbstractButton*>(QStringLiteral("qt_calendar_monthbutton"));
        auto* days = calendar().findChild<QAbstractItemView*>(QStringLiteral("qt_calendar_calendarview"));
        const QImage before = month->grab().toImage();
        QVERIFY(moveMouseTo(*month));
        QTRY_VERIFY(month->grab().toImage() != before);
        QVERIFY(moveMouseTo(*days));
        QTRY_COMPARE(month->grab().toImage(), before);
        QVERIFY(contains(before, calendar().palette().color(QPalette::Text)));
    }

    void theYearIsReadableWhileItIsTyped() {
        QVERIFY(clickMouse(*find<DWKButtonHover>("popOverTriggerTab1DispenseDate")));
        QTRY_VERIFY(popover().isVisible());
        auto* year = calendar().findChild<QAbstractButton*>(QStringLiteral("qt_calendar_yearbutton"));
        QVERIFY(clickMouse(*year));
        auto* edit = calendar().findChild<QAbstractSpinBox*>(QStringLiteral("qt_calendar_yearedit"));
        QTRY_VERIFY(edit->isVisible());
        const QPalette& colours = edit->findChild<QLineEdit*>()->palette();
        QCOMPARE(colours.color(QPalette::HighlightedText), calendar().palette().color(QPalette::HighlightedText));
        QVERIFY(colours.color(QPalette::HighlightedText) != colours.color(QPalette::Text));
    }

    void aDigitOpensNoFurtherWindowOverTheDays() {
        QVERIFY(clickMouse(*find<DWKButtonHover>("popOverTriggerTab1DispenseDate")));
        QTRY_VERIFY(popover().isVisible());
        const auto visible = [this] {
            const auto widgets = popover().findChildren<QWidget*>();
            return std::ranges::count_if(widgets, [](const QWidget* widget) { return widget->isVisible(); });
        };
        const auto before = visible();
        pressInPopover(Qt::Key_3);
        QCOMPARE(visible(), before);
    }

    void allTenIconsFollowTheDesktop() {
        const char* names[] = {"popOverTriggerTab1DispenseDate", "popOverTriggerTab1ExpirationDate",
                               "popOverTriggerTab1BeginDate",    "popOverTriggerTab1EndDate",
                               "popOverTriggerTab3BeginDate",    "popOverTriggerTab3EndDate",
                               "popOverTriggerTab4BeginDate",    "popOverTriggerTab4EndDate",
                               "fromDateFilterCalIcon",          "toDateFilterCalIcon"};
        const auto all = [&](const std::string& image) {
            return std::ranges::all_of(names, [&](const char* name) {
                const auto* button = dynamic_cast<const Button*>(m_program->delegate().outlets.find(name));
                return button->image() == image && !find<DWKButtonHover>(name)->icon().isNull();
            });
        };
        QVERIFY(all("calIcon.png"));
        const QImage light = find<DWKButtonHover>(names[0])->icon().pixmap(20).toImage();
        setScheme("dark");
        QTRY_VERIFY(all("calIcon_dark.png"));
        QVERIFY(find<DWKButtonHover>(names[0])->icon().pixmap(20).toImage() != light);
        setScheme("light");
        QTRY_VERIFY(all("calIcon.png"));
        QCOMPARE(find<DWKButtonHover>(names[0])->icon().pixmap(20).toImage(), light);
    }

    void theButtonLightsUpUnderTheMouse() {
        auto* button = find<DWKButtonHover>("popOverTriggerTab1DispenseDate");
        auto* elsewhere = find<QWidget>("scriptNoteTab1");
        QVERIFY(moveMouseTo(*elsewhere));
        const QImage quiet = button->grab().toImage();
        QVERIFY(moveMouseTo(*button));
        QTRY_VERIFY(button->grab().toImage() != quiet);
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
        QVERIFY(moveMouseTo(*elsewhere));
        QTRY_COMPARE(button->grab().toImage(), quiet);

        Button& control = m_program->delegate().outlets.popOverTriggerTab1DispenseDate;
        control.setEnabled(false);
        const QImage off = button->grab().toImage();
        QVERIFY(moveMouseTo(*button));
        QCOMPARE(button->grab().toImage(), off);
        QCOMPARE(button->cursor().shape(), Qt::ArrowCursor);
        control.setEnabled(true);
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    }

private:
    void setScheme(const QByteArray& scheme) {
        m_portal.write(scheme + '\n');
        QVERIFY(m_portal.waitForReadyRead());
        QCOMPARE(m_portal.readLine().trimmed(), scheme);
    }
    static bool contains(const QImage& picture, const QColor& colour) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == colour) {
                    return true;
                }
            }
        }
        return false;
    }
    template <class Widget>
    Widget* find(const char* name) {
        return widgetNamed<Widget>(m_program->window(), name);
    }
    PopoverFrame& popover() { return *find<PopoverFrame>("thePopOver"); }
    QCalendarWidget& calendar() { return *find<QCalendarWidget>("theDatePicker"); }
    /// The key goes where the keyboard leads, as it does for the user.
    void pressInPopover(Qt::Key key) { QTest::keyClick(popover().windowHandle(), key); }

    QProcess m_portal;
    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(PickerTest)
#include "PickerTest.moc"
