#include "ui/ports/QtAlertPresenter.h"

#include "ui/views/AlertBox.h"

#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace kpx {

namespace {

/// Of two messages. A question is never the same: each wants its own answer.
bool saysTheSame(const Alert& left, const Alert& right) {
    return left.buttons.size() == 1 && right.buttons.size() == 1 && left.messageText == right.messageText &&
           left.informativeText == right.informativeText && left.buttons[0].title == right.buttons[0].title;
}

}  // namespace

void QtAlertPresenter::beginSheet(const std::string& window, const Alert& alert,
                                  std::function<void(int returnCode)> completion, std::function<void()> help) {
    std::deque<Request>& requests = m_requests[window];
    const auto same =
        std::ranges::find_if(requests, [&](const Request& request) { return saysTheSame(request.alert, alert); });
    if (same != requests.end()) {
        same->completions.push_back(std::move(completion));
        if (same->box) {
            showTimes(*same);
        }
        return;
    }
    requests.push_back({alert, {std::move(completion)}, std::move(help), nullptr});
    if (requests.size() == 1) {
        showNext(window);
    }
}

void QtAlertPresenter::showNext(const std::string& window) {
    Request& request = m_requests[window].front();
    auto* box = new AlertBox(request.alert, widgetForWindow ? widgetForWindow(window) : nullptr);
    request.box = box;
    showTimes(request);
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (request.help) {
        QObject::connect(box, &AlertBox::helpWanted, box, request.help);
    }
    QObject::connect(box, &QDialog::finished, box, [this, window, box] {
        const int returnCode = box->returnCode();
        std::deque<Request>& requests = m_requests[window];
        const auto completions = std::move(requests.front().completions);
        requests.pop_front();
        // The next one waits for the completion, which may show or close windows; one that the completion
        // asks for comes after those already waiting.
        const bool othersWait = !requests.empty();
        for (const std::function<void(int)>& completion : completions) {
            if (completion) {
                completion(returnCode);
            }
        }
        if (othersWait) {
            showNext(window);
        }
    });
    // On Wayland the window that opens last gets the keys, and none can ask for them: there it opens after what else
    // the same act opens, such as a popover.
    const bool lastOneGetsTheKeys = QGuiApplication::platformName() == QLatin1String("wayland");
    QMetaObject::invokeMethod(box, &QDialog::open, lastOneGetsTheKeys ? Qt::QueuedConnection : Qt::DirectConnection);
}

void QtAlertPresenter::showTimes(const Request& request) {
    const auto times = static_cast<int>(request.completions.size());
    request.box->setTimes(times, times > 1 ? writtenCount(times) : QString());
}

int QtAlertPresenter::runModal(const Alert& alert) {
    AlertBox box(alert, widgetForWindow ? widgetForWindow("window") : nullptr);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
    return box.returnCode();
}

}  // namespace kpx
