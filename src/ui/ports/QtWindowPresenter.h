#pragma once

#include "app/Ports.h"

#include <QPointer>

class QWidget;

namespace kpx {

class SplashWindow;

/// Focus, beeps, the splash window and the end of the program.
class QtWindowPresenter : public WindowPresenter {
public:
    ~QtWindowPresenter() override;

    /// The main window, and how to find the widget that shows a control. Until they are set, requests
    /// that need them are ignored.
    void setMainWindow(QWidget* window) { m_window = window; }
    std::function<QWidget*(const Control& control)> widgetForControl;

    void makeFirstResponder(const Control& control) override;
    void unfold(const Control& control) override;
    void beep() override;
    void showSplash(const std::vector<std::string>& fields) override;
    void closeSplash() override;
    void makeMainWindowKeyAndFront(bool evenIfAnotherIsActive) override;
    void setSmallFont(const Control& control) override;
    void terminate() override;
    void log(const std::string& text) override;

private:
    QPointer<QWidget> m_window;
    QPointer<SplashWindow> m_splash;
};

}  // namespace kpx
