#include "ui/ports/QtWindowPresenter.h"

#include "ui/Conversions.h"
#include "ui/views/FoldingForm.h"
#include "ui/views/SplashWindow.h"

#include <QApplication>
#include <QDebug>
#include <QTimer>
#include <QWidget>

namespace kpx {

QtWindowPresenter::~QtWindowPresenter() { delete m_splash.data(); }

void QtWindowPresenter::makeFirstResponder(const Control& control) {
    if (QWidget* widget = widgetForControl ? widgetForControl(control) : nullptr) {
        FoldingForm::unfold(*widget);
        // Its window may wait behind an alert; the focus is there when the alert is gone.
        widget->setFocus(Qt::OtherFocusReason);
    }
}

void QtWindowPresenter::unfold(const Control& control) {
    if (QWidget* widget = widgetForControl ? widgetForControl(control) : nullptr) {
        FoldingForm::unfold(*widget);
    }
}

void QtWindowPresenter::beep() { QApplication::beep(); }

void QtWindowPresenter::showSplash(const std::vector<std::string>& fields) {
    closeSplash();
    if (!m_window) {
        return;
    }
    QStringList lines;
    for (const std::string& field : fields) {
        lines.append(qstring(field));
    }
    m_splash = new SplashWindow(lines, *m_window);
    m_splash->show();
}

void QtWindowPresenter::closeSplash() { delete m_splash.data(); }

void QtWindowPresenter::makeMainWindowKeyAndFront(bool evenIfAnotherIsActive) {
    // One that was closed, with previews left open, is opened again by the user only, not by the end of the splash.
    if (!m_window || !m_window->isVisible()) {
        return;
    }
    m_window->raise();
    const bool anotherIsActive = QApplication::applicationState() != Qt::ApplicationActive;
    const bool noneIsActive = QApplication::activeWindow() == nullptr;
    if (noneIsActive && (evenIfAnotherIsActive || !anotherIsActive)) {
        m_window->activateWindow();
    }
}

void QtWindowPresenter::setSmallFont(const Control& control) {
    if (QWidget* widget = widgetForControl ? widgetForControl(control) : nullptr) {
        QFont font = QApplication::font();
        font.setPointSizeF(font.pointSizeF() * 0.88);
        widget->setFont(font);
    }
}

void QtWindowPresenter::terminate() {
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
}

void QtWindowPresenter::log(const std::string& text) { qInfo().noquote() << qstring(text); }

}  // namespace kpx
