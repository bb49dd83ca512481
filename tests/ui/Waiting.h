#pragma once

#include <QString>
#include <QWidget>

#include <memory>

namespace kpx {
class Application;
class AlertBox;
}  // namespace kpx

namespace kpx::test {

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

}  // namespace kpx::test
