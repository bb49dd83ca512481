#pragma once

#include <QString>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <memory>

namespace kpx {
class Application;
class AlertBox;
}  // namespace kpx

namespace kpx::test {

/// Until the keyboard writes to the window. The toolkit's own wait only knows desktops that let a program ask for it.
bool waitUntilActive(const QWidget* window);

/// Shows the program and waits until its start-up sequence has run. False when that never happens.
bool startUp(Application& program);
/// The program, started, its splash window closed; null when it does not start.
std::unique_ptr<Application> startWithoutSplash();

/// The visible alert, null when none shows up in time.
AlertBox* waitForAlert();
/// Whether no alert is showing.
bool noAlertShows();

/// The widget of that name in the window and its sheets; null when there is none.
template <class Widget>
Widget* widgetNamed(QWidget& window, const char* name) {
    return window.findChild<Widget*>(QLatin1String(name));
}

/// Types a text, of any characters, one keystroke each, into the widget.
void type(QWidget& widget, const QString& text);

/// A click in the middle of the table's row (below the last one for −1), as the user's mouse does it.
void clickRow(QWidget& table, int row, bool twice = false);

/// Time as this thread has it: what it computes and what it waits for, but not that it waits for its turn, as on a
/// machine that is busy with other things.
class OwnTimer {
public:
    OwnTimer() : m_start(now()) {}
    /// In milliseconds.
    qint64 elapsed() const { return (now() - m_start).count(); }
    qint64 restart();

private:
    static std::chrono::milliseconds now();

    std::chrono::milliseconds m_start;
};

/// The longest time in which the window could not react, up to the moment the condition holds.
template <class Condition>
qint64 longestPause(Condition condition, bool& held) {
    OwnTimer sinceLastTick;
    qint64 longest = 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, [&] { longest = std::max(longest, sinceLastTick.restart()); });
    ticks.start(5);
    constexpr int patience = 100000;
    held = QTest::qWaitFor(condition, patience);
    return std::max(longest, sinceLastTick.elapsed());
}

}  // namespace kpx::test
