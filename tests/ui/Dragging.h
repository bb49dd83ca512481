#pragma once

#include <QProcess>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace kpx::test {

/// A drag out of another program with the real mouse, step by step.
class Drag {
public:
    explicit Drag(const QStringList& addresses, const QString& actions = QStringLiteral("copy,move,link"));
    ~Drag();

    /// Takes the addresses up and moves them over the middle of the widget, or of the screen's empty edge
    /// for none. False when the other program or the mouse does not act.
    bool over(const QWidget* target);
    /// Lets go; answers how the drag ended for the other program: "link", "copy", "move" or "none".
    QString drop();

private:
    void start();
    void stop();
    /// What the other program says, but where it has the mouse.
    QString line();
    QPoint sourceAt();

    QStringList m_arguments;
    QProcess m_source;
    bool m_ready = false;
    bool m_taken = false;
};

/// How a drag ends whose file was taken as a link: a Wayland desktop knows none and calls it a copy.
QString linked();
/// Moves the window, and waits until it stands there; false when it never does. A Wayland desktop leaves it where it
/// is.
bool moveWindow(QWidget& window, const QPoint& place);
/// Moves the real mouse to the screen's corner, where no window stands.
bool moveMouseAway();
/// Moves the real mouse to the middle of the widget.
bool moveMouseTo(const QWidget& target);
/// Presses and lets go of its left button there, or at that position of the widget.
bool clickMouse(const QWidget& target);
bool clickMouse(const QWidget& target, const QPoint& position);
/// Presses a key of the real keyboard, by the X server's name for it: "alt+a".
bool pressKeys(const QString& keys);

}  // namespace kpx::test
