#pragma once

#include <QDialog>

namespace kpx {

/// A reminder on a desktop that shows no notifications: a small window that stands on top with the reminder's title
/// and text. "Later", Escape and its title bar's button close it, and nothing more: the reminder comes again.
class ReminderWindow : public QDialog {
    Q_OBJECT

public:
    /// Plain texts; carriage returns and line feeds are line breaks.
    ReminderWindow(const QString& title, QString text);

Q_SIGNALS:
    /// The user pressed "Show"; the window has closed.
    void showWanted();
};

}  // namespace kpx
