#pragma once

#include "app/KPXAppDelegate.h"
#include "ui/bindings/Binder.h"
#include "ui/ports/QtAlertPresenter.h"
#include "ui/ports/QtBundle.h"
#include "ui/ports/QtClock.h"
#include "ui/ports/QtPrintPreview.h"
#include "ui/ports/QtSystemInformation.h"
#include "ui/ports/QtUserDefaults.h"
#include "ui/ports/QtUserNotificationCenter.h"
#include "ui/ports/QtWebFetch.h"
#include "ui/ports/QtWindowPresenter.h"
#include "ui/ports/QtWorkspace.h"
#include "ui/views/MainWindow.h"

#include <optional>
#include <vector>

namespace kpx {

/// The platform's ports, one of each.
struct QtPorts {
    QtAlertPresenter alerts;
    QtWindowPresenter windows;
    QtWorkspace workspace;
    QtUserDefaults defaults;
    QtUserNotificationCenter notifications;
    QtClock clock;
    QtSystemInformation system;
    QtWebFetch web;
    QtPrintPreview preview;
    QtBundle bundle;

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

    QtPorts& ports() { return m_ports; }
    KPXAppDelegate& delegate() { return m_delegate; }
    MainWindow& window() { return *m_window; }
    const Binder& binder() const { return *m_binder; }
    /// Whether the start-up sequence has run.
    bool hasStarted() const { return m_started; }

private:
    void start();

    QtPorts m_ports;
    KPXAppDelegate m_delegate;
    std::optional<MainWindow> m_window;
    std::optional<Binder> m_binder;
    std::vector<UserNotification> m_clickedBeforeStart;
    bool m_started = false;
};

}  // namespace kpx
