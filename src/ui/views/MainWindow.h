#pragma once

#include <QMainWindow>

#include <functional>

namespace kpx {

/// The main window with its tabs, and hanging from it the sheets and popovers. Holds no logic: a binder
/// brings its widgets to life.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();

Q_SIGNALS:
    /// Once, after the window has been drawn for the first time.
    void firstPainted();
    /// The window was closed; the program may go on without it.
    void closed();
    /// The program is to end.
    void quitWanted();

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Return presses the button with the focus, as it does on sheets.
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void addTabs();
    void addSheets();
    void addPopovers();

    bool m_painted = false;
};

}  // namespace kpx
