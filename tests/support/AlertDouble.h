#pragma once

#include "app/Ports.h"
#include "tests/support/Json.h"

#include <deque>
#include <optional>
#include <string>

namespace kpx::test {

/// Keeps every alert asked for until a test answers it; an application-modal one is answered at once
/// from what the test said beforehand.
class AlertDouble : public AlertPresenter {
public:
    explicit AlertDouble(EventSink sink) : m_sink(std::move(sink)) {}

    void beginSheet(const std::string& window, const Alert& alert, std::function<void(int)> completion,
                    std::function<void()> help) override;
    int runModal(const Alert& alert) override;

    /// What the next modal alert without an answer yet will be answered: an index, a title, or "escape"
    /// or "return". One that the alert does not have presses its default button, as no answer does.
    void answerNextModal(const std::string& button) { m_modalAnswers.push_back(button); }

    /// Whether an unanswered alert hangs from the window or sheet of that name.
    bool hangsFrom(const std::string& window) const;
    bool isPending() const { return !m_pending.empty(); }

    /// Whether the oldest unanswered alert can be answered so; "help" is its help button.
    bool canAnswer(const std::string& button) const;
    /// Presses it. REQUIRES: canAnswer().
    void answer(const std::string& button);

private:
    struct Pending {
        std::string window;
        Alert alert;
        std::function<void(int)> completion;
        std::function<void()> help;
    };

    EventSink m_sink;
    std::deque<Pending> m_pending;
    std::deque<std::string> m_modalAnswers;
};

/// The index of the button so called; null when the alert has none such.
std::optional<int> indexOfButton(const Alert& alert, const std::string& button);

}  // namespace kpx::test
