#pragma once

#include "app/KPXAppDelegate.h"
#include "ui/Translations.h"
#include "ui/bindings/Binder.h"
#include "ui/ports/QtAlertPresenter.h"
#include "ui/ports/QtBundle.h"
#include "ui/ports/QtClipboard.h"
#include "ui/ports/QtClock.h"
#include "ui/ports/QtFileChooser.h"
#include "ui/ports/QtPrintPreview.h"
#include "ui/ports/QtSystemInformation.h"
#include "ui/ports/QtUserDefaults.h"
#include "ui/ports/QtUserNotificationCenter.h"
#include "ui/ports/QtWebFetch.h"
#include "ui/ports/QtWindowPresenter.h"
#include "ui/ports/QtWorkspace.h"
#include "ui/views/MainWindow.h"
#include "ui/views/ReminderWindow.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kpx {

/// The platform's ports, one of each.
struct QtPorts {
    QtAlertPresenter alerts;
    QtWindowPresenter windows;
    QtWorkspace workspace;
    QtUserDefaults defaults;
    QtSystemInformation system;
    QtClock clock;
    QtUserNotificationCenter notifications{[this] { return Environment{clock.now(), system.region()}; }};
    QtWebFetch web;
    QtPrintPreview preview;
    QtBundle bundle;
    QtFileChooser files;
    QtClipboard clipboard;

    Ports ports();
};

/// The program put together: ports, controller, window. REQUIRES a QApplication.
class Application {
public:
    Application();
    ~Application();

    /// Shows the main window; the start-up sequence runs once it has been drawn.
    void show();
    /// Brings the main window to the front, out of the task bar if need be.
    void raise();
    /// Shows what a clicked reminder speaks of, and withdraws it. When the click came with the start, the
    /// start-up sequence does so at its end.
    void open(const UserNotification& reminder);
    /// Shows a reminder that the desktop cannot show, in a window of its own.
    void showReminder(const UserNotification& reminder);

    /// Turns to the refill schedule; before the start-up sequence has run, at its end.
    void showSchedule();

    QtPorts& ports() { return m_ports; }
    KPXAppDelegate& delegate() { return m_delegate; }
    MainWindow& window() { return *m_window; }
    const Binder& binder() const { return *m_binder; }
    /// Whether the start-up sequence has run.
    bool hasStarted() const { return m_started; }

private:
    void start();
    void quit();
    /// Previews that are not yet saved or printed keep it running, and reminders that nobody has answered.
    void endUnlessSomethingStays();
    static void endSoon();

    QtPorts m_ports;
    std::string m_language;  ///< of the texts
    Translations m_translations;
    KPXAppDelegate m_delegate;
    std::optional<MainWindow> m_window;
    std::optional<Binder> m_binder;
    std::vector<UserNotification> m_clickedBeforeStart;
    std::map<std::string, std::unique_ptr<ReminderWindow>> m_reminderWindows;  // by the reminder's identifier
    bool m_scheduleWanted = false;
    bool m_started = false;
};

}  // namespace kpx
