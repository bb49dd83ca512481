#include "ui/ports/QtAlertPresenter.h"

#include "ui/views/AlertBox.h"

#include <utility>

namespace kpx {

void QtAlertPresenter::beginSheet(const std::string& window, const Alert& alert,
                                  std::function<void(int returnCode)> completion, std::function<void()> help) {
    std::deque<Request>& requests = m_requests[window];
    requests.push_back({alert, std::move(completion), std::move(help)});
    if (requests.size() == 1) {
        showNext(window);
    }
}

void QtAlertPresenter::showNext(const std::string& window) {
    const Request& request = m_requests[window].front();
    auto* box = new AlertBox(request.alert, widgetForWindow ? widgetForWindow(window) : nullptr);
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (request.help) {
        QObject::connect(box, &AlertBox::helpWanted, box, request.help);
    }
    QObject::connect(box, &QDialog::finished, box, [this, window, box] {
        const int returnCode = box->returnCode();
        std::deque<Request>& requests = m_requests[window];
        const std::function<void(int)> completion = std::move(requests.front().completion);
        requests.pop_front();
        // The next one waits for the completion, which may show or close windows; one that the completion
        // asks for comes after those already waiting.
        const bool othersWait = !requests.empty();
        if (completion) {
            completion(returnCode);
        }
        if (othersWait) {
            showNext(window);
        }
    });
    box->open();
}

int QtAlertPresenter::runModal(const Alert& alert) {
    AlertBox box(alert, widgetForWindow ? widgetForWindow("window") : nullptr);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
    return box.returnCode();
}

}  // namespace kpx
