#pragma once

#include "app/Ports.h"

#include <QPointer>

#include <deque>
#include <map>
#include <vector>

class QWidget;

namespace kpx {

class AlertBox;

/// Alerts as message boxes, modal for the window or sheet they hang from. While a message stands there, further
/// ones of the same words are counted into it and answered with it; a question is asked each time.
class QtAlertPresenter : public AlertPresenter {
public:
    /// The widget of a window or sheet by name; null for none. Must be set before the first alert.
    std::function<QWidget*(const std::string& window)> widgetForWindow;
    /// A count as the region writes it. Must be set before the first alert.
    std::function<QString(int count)> writtenCount;

    void beginSheet(const std::string& window, const Alert& alert, std::function<void(int returnCode)> completion,
                    std::function<void()> help) override;
    int runModal(const Alert& alert) override;

private:
    struct Request {
        Alert alert;
        /// One for each time that the alert was asked for.
        std::vector<std::function<void(int returnCode)>> completions;
        std::function<void()> help;
        /// Null until it shows.
        QPointer<AlertBox> box;
    };
    void showNext(const std::string& window);
    void showTimes(const Request& request);

    /// By window, the alerts not yet answered; the first of them is showing.
    std::map<std::string, std::deque<Request>> m_requests;
};

}  // namespace kpx
