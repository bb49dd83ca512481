#pragma once

#include "app/Ports.h"

#include <QPointer>

#include <deque>
#include <map>

class QMessageBox;
class QWidget;

namespace kpx {

/// Alerts as message boxes, modal for the window or sheet they hang from.
class QtAlertPresenter : public AlertPresenter {
public:
    /// The widget of a window or sheet by name; null for none. Must be set before the first alert.
    std::function<QWidget*(const std::string& window)> widgetForWindow;

    void beginSheet(const std::string& window, const Alert& alert, std::function<void(int returnCode)> completion,
                    std::function<void()> help) override;
    int runModal(const Alert& alert) override;

private:
    struct Request {
        Alert alert;
        std::function<void(int returnCode)> completion;
        std::function<void()> help;
    };
    void showNext(const std::string& window);

    /// By window, the alerts not yet answered; the first of them is showing.
    std::map<std::string, std::deque<Request>> m_requests;
};

}  // namespace kpx
