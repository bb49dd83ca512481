#include "ui/Application.h"

#include "region/Numbers.h"
#include "ui/Conversions.h"
#include "ui/WindowState.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/style/Appearance.h"

#include <QApplication>
#include <QDebug>
#include <QIcon>
#include <QTimer>

#include <algorithm>

namespace kpx {

Ports QtPorts::ports() {
    return {alerts, windows, workspace, defaults, notifications, clock, system, web, preview, bundle, files, clipboard};
}

Application::Application()
    : m_language(languageOfTexts(m_ports.bundle.resources(), m_ports.system.region().languageCodes())),
      m_translations(LocalizedStrings(m_ports.bundle.resources(), m_language), m_language),
      m_delegate(m_ports.ports(), m_translations.texts()) {
    installStyle(*qApp, m_language);
    showAppearance(*qApp, m_ports.system.scheme());
    QObject::connect(&m_ports.system, &QtSystemInformation::schemeChanged, qApp,
                     [](const Scheme& scheme) { showAppearance(*qApp, scheme); });
    // Where there is no table the texts are English.
    m_ports.preview.language = Translations::areInstalled() ? qstring(m_language) : QStringLiteral("en");
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
    m_ports.files.setMainWindow(&*m_window);
    m_ports.windows.widgetForControl = [this](const Control& control) { return m_binder->widgetForControl(control); };
    m_ports.alerts.widgetForWindow = [this](const std::string& name) { return m_binder->widgetForWindow(name); };
    m_ports.alerts.writtenCount = [this](int count) {
        return qstring(copyFormatStringForTextField(count, "#,##0", m_delegate.environment()));
    };
    QObject::connect(&*m_window, &MainWindow::firstPainted, qApp, [this] { start(); });
    restoreWindowState(*m_window);
    QObject::connect(&*m_window, &MainWindow::closed, qApp, [this] {
        saveWindowState(*m_window);
        m_ports.windows.closeSplash();
        m_delegate.windowWillClose();
        endUnlessSomethingStays();
    });
    QObject::connect(&*m_window, &MainWindow::quitWanted, qApp, [this] { quit(); });
    m_ports.preview.lastClosed = [this] {
        if (!m_window->isVisible()) {
            endUnlessSomethingStays();
        }
    };
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
        if (m_scheduleWanted) {
            showSchedule();
        }
    }
}

void Application::endSoon() { QTimer::singleShot(0, qApp, &QCoreApplication::quit); }

void Application::endUnlessSomethingStays() {
    // What is saved or printed is not lost; what is not stays, as a viewer of its own would.
    m_ports.preview.closeKept();
    const auto previews = m_ports.preview.windows();
    const auto stays = [](const auto& window) { return window->isVisible(); };
    if (std::ranges::none_of(previews, stays) &&
        std::ranges::none_of(m_reminderWindows, [&](const auto& entry) { return stays(entry.second); })) {
        endSoon();
    }
}

void Application::quit() {
    if (m_window->isVisible()) {
        m_window->close();
    }
    endSoon();
}

void Application::raise() {
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    const bool wasClosed = !m_window->isVisible();
    m_window->show();
    m_ports.windows.makeMainWindowKeyAndFront(true);
    if (wasClosed) {
        // Meanwhile a preview of ours may be active, and would stay it.
        m_window->activateWindow();
    }
}

void Application::open(const UserNotification& reminder) {
    if (!m_started) {
        m_clickedBeforeStart.push_back(reminder);
    } else if (m_ports.notifications.didActivateNotification) {
        m_ports.notifications.didActivateNotification(reminder);
    }
}

void Application::showSchedule() {
    m_scheduleWanted = !m_started;
    if (m_started) {
        m_delegate.outlets.theTabView.selectTab(Outlets::scheduleTab);
    }
}

void Application::showReminder(const UserNotification& reminder) {
    auto& window = m_reminderWindows[reminder.identifier];
    window = std::make_unique<ReminderWindow>(qstring(reminder.title), qstring(reminder.informativeText));
    QObject::connect(&*window, &ReminderWindow::showWanted, qApp, [this, reminder] {
        raise();
        open(reminder);
    });
    // Not at once: "Show" opens the main window first.
    QObject::connect(
        &*window, &QDialog::finished, qApp,
        [this] {
            if (!m_window->isVisible()) {
                endUnlessSomethingStays();
            }
        },
        Qt::QueuedConnection);
    window->show();
    window->raise();
    window->activateWindow();
}

}  // namespace kpx
