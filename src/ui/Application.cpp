#include "ui/Application.h"

#include "ui/Conversions.h"
#include "ui/style/Appearance.h"

#include <QApplication>
#include <QDebug>
#include <QIcon>
#include <QTimer>

namespace kpx {

Ports QtPorts::ports() {
    return {alerts, windows, workspace, defaults, notifications, clock, system, web, preview, bundle};
}

Application::Application() : m_delegate(m_ports.ports()) {
    installStyle(*qApp);
    showAppearance(*qApp, m_ports.system.isDark());
    QObject::connect(&m_ports.system, &QtSystemInformation::darkChanged, qApp,
                     [](bool dark) { showAppearance(*qApp, dark); });
    QLocale::setDefault(QLocale(qstring(m_ports.system.region().localeName())));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/velmora.svg")));

    m_window.emplace();
    m_binder.emplace(m_delegate, *m_window);
    for (const std::string& mismatch : m_binder->mismatches()) {
        qCritical().noquote() << "The window does not fit the program:" << qstring(mismatch);
    }
#ifndef NDEBUG
    if (!m_binder->mismatches().empty()) {
        qFatal("The window does not fit the program; see above.");
    }
#endif
    m_ports.windows.setMainWindow(&*m_window);
    m_ports.windows.widgetForControl = [this](const Control& control) { return m_binder->widgetForControl(control); };
    m_ports.alerts.widgetForWindow = [this](const std::string& name) { return m_binder->widgetForWindow(name); };
    QObject::connect(&*m_window, &MainWindow::firstPainted, qApp, [this] { start(); });
    QObject::connect(&*m_window, &MainWindow::closed, qApp, [this] {
        m_delegate.windowWillClose();
        // Other windows, such as previews, do not keep the program alive.
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    });
}

Application::~Application() = default;

void Application::show() {
    m_window->show();
    // A window that is never drawn, on a desktop out of sight, must not keep the program from starting.
    constexpr int patienceInMilliseconds = 1500;
    QTimer::singleShot(patienceInMilliseconds, &*m_window, [this] { start(); });
}

void Application::start() {
    if (!m_started) {
        m_started = true;
        std::optional<UserNotification> launchNotification;
        if (!m_clickedBeforeStart.empty()) {
            launchNotification = m_clickedBeforeStart.front();
            m_clickedBeforeStart.erase(m_clickedBeforeStart.begin());
        }
        m_delegate.applicationDidFinishLaunching(launchNotification);
        setToolTipDelay(*qApp, static_cast<int>(m_ports.defaults.integer("NSInitialToolTipDelay")));
        for (const UserNotification& reminder : m_clickedBeforeStart) {
            open(reminder);
        }
    }
}

void Application::raise() {
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_ports.windows.makeMainWindowKeyAndFront(true);
}

void Application::open(const UserNotification& reminder) {
    if (!m_started) {
        m_clickedBeforeStart.push_back(reminder);
    } else if (m_ports.notifications.didActivateNotification) {
        m_ports.notifications.didActivateNotification(reminder);
    }
}

}  // namespace kpx
