#pragma once

#include "app/KPXAppDelegate.h"
#include "tests/runner/Script.h"
#include "tests/support/TestPlatform.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kpx::runner {

using test::Json;

/// The answer of a command that was carried out.
inline Json done() { return Json{{"ok", true}}; }
/// The answer of one that was not.
inline Json refused(const std::string& error) { return Json{{"ok", false}, {"error", error}}; }

/// One run of the application on a platform of test doubles, as its user meets it: knows what can be
/// reached at the moment and what else an act brings about.
class Session {
public:
    /// The sink receives the events.
    Session(const test::Surroundings& surroundings, test::EventSink sink);

    test::TestPlatform platform;

    bool hasStarted() const { return m_application != nullptr; }
    bool hasTerminated() const { return platform.windows.hasTerminated(); }
    bool isWindowOpen() const { return hasStarted() && !hasTerminated(); }

    /// False, with nothing started or written, when another program holds the data folder.
    /// REQUIRES: not started.
    bool start(const std::optional<UserNotification>& launchNotification);
    /// REQUIRES: started.
    KPXAppDelegate& application() { return *m_application; }
    /// Before the start, the controls as the interface defines them.
    Outlets& outlets() { return m_application ? m_application->outlets : m_outletsBeforeStart; }
    /// The rows that a table shows; null for one that the program does not know.
    const Records* rowsOf(const TableView& table) const;

    /// Why the user cannot act on the control now; null when nothing is in the way.
    ///
    /// | what is in the way                         | of what                                      |
    /// |--------------------------------------------|----------------------------------------------|
    /// | the control is disabled                    | itself                                       |
    /// | an unanswered alert                        | the window or sheet it hangs from            |
    /// | an open sheet                              | the main window, all tabs included           |
    /// | another tab, a closed sheet or popover     | what lies there                              |
    ///
    /// The menu bar is not part of the window: nothing blocks it, but an item that opens a sheet needs
    /// the window free. A popover is blocked as the window or sheet is in which it is anchored.
    std::optional<std::string> obstacle(const Control& control);
    /// The same for the main window itself.
    std::optional<std::string> obstacleOnMainWindow();

    /// What an act on the control brings about before it takes effect: popovers that the control does
    /// not lie in close, an open context menu closes, and the field being edited, if another one, loses
    /// the focus. A menu command leaves the focus where it is. Null is an act on no control.
    void beginAct(const Control* control);

    /// The context menu that a right click opened.
    Menu* openMenu() const { return m_openMenu; }
    void setOpenMenu(Menu* menu) { m_openMenu = menu; }

private:
    void reportSheetsAndPopovers();
    std::optional<std::string> obstacleOnSheet(Place place);
    std::optional<std::string> obstacleOnPopover(const Popover& popover);

    test::EventSink m_sink;
    Outlets m_outletsBeforeStart;
    std::unique_ptr<KPXAppDelegate> m_application;
    Menu* m_openMenu = nullptr;
};

}  // namespace kpx::runner
