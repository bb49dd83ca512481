#include "tests/ui/Dragging.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/DWKButtonHover.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/SheetDialog.h"

#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace kpx;
using namespace kpx::test;

/// What is the program's own affair where it may place its windows, and where an open pop-up has the whole mouse.
class X11Test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
        QVERIFY(moveWindow(m_program->window(), {100, 100}));
    }
    void cleanup() {
        m_program->window().close();
        m_program.reset();
    }

    void theCalendarStaysOnTheScreen() {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        MainWindow& window = m_program->window();
        m_program->delegate().outlets.theTabView.selectTab(3);
        QVERIFY(moveWindow(window, screen.bottomRight() -
                                       QPoint(window.frameGeometry().width() - 1, window.frameGeometry().height())));
        for (const char* trigger : {"popOverTriggerTab4BeginDate", "popOverTriggerTab4EndDate"}) {
            QTest::mouseClick(find<DWKButtonHover>(trigger), Qt::LeftButton);
            QTRY_VERIFY(popover().isVisible());
            QVERIFY2(screen.contains(popover().frameGeometry()), trigger);
            popover().hide();
        }
        // Hardly anything of the window is left on the screen: there is no room to the right.
        m_program->delegate().outlets.theTabView.selectTab(0);
        auto* trigger = find<DWKButtonHover>("popOverTriggerTab1DispenseDate");
        const int inWindow = trigger->mapTo(&window, QPoint(trigger->width(), 0)).x();
        QVERIFY(moveWindow(window, {screen.right() - inWindow - 20, 300}));
        QTest::mouseClick(trigger, Qt::LeftButton);
        QTRY_VERIFY(popover().isVisible());
        QVERIFY(screen.contains(popover().frameGeometry()));
        QVERIFY(popover().frameGeometry().right() < trigger->mapToGlobal(QPoint()).x());
        popover().hide();
    }

    void aClickBehindTheSheetOnlyClosesTheCalendar() {
        QTest::mouseClick(find<QPushButton>("filterBtnTab1"), Qt::LeftButton);
        auto* sheet = find<SheetDialog>("theFilterSheetTab1");
        QTRY_VERIFY(sheet->isVisible());
        QVERIFY(waitUntilActive(sheet));
        QVERIFY(clickMouse(*find<DWKButtonHover>("fromDateFilterCalIcon")));
        QTRY_VERIFY(popover().isVisible());
        QVERIFY(clickMouse(*find<DWKButtonHover>("popOverTriggerTab1DispenseDate")));
        QTRY_VERIFY(!popover().isVisible());
        QTest::qWait(100);
        QVERIFY(!popover().isVisible());
        QVERIFY(sheet->isVisible());
        QTest::keyClick(sheet, Qt::Key_Escape);
        QTRY_VERIFY(!sheet->isVisible());
    }

private:
    template <class Widget>
    Widget* find(const char* name) {
        return widgetNamed<Widget>(m_program->window(), name);
    }
    PopoverFrame& popover() { return *find<PopoverFrame>("thePopOver"); }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(X11Test)
#include "X11Test.moc"
