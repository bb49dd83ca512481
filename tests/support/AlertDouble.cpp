#include "tests/support/AlertDouble.h"

#include <algorithm>
#include <utility>

namespace kpx::test {

namespace {

Json keysOf(const Alert& alert) {
    if (std::ranges::all_of(alert.buttons, [](const AlertButton& button) { return button.key == AlertKey::None; })) {
        return Json::array();
    }
    Json keys = Json::array();
    for (const AlertButton& button : alert.buttons) {
        keys.push_back(button.key == AlertKey::Return   ? Json("return")
                       : button.key == AlertKey::Escape ? Json("escape")
                                                        : Json());
    }
    return keys;
}

Json toolTipsOf(const Alert& alert) {
    if (std::ranges::all_of(alert.buttons, [](const AlertButton& button) { return button.toolTip.empty(); })) {
        return Json::array();
    }
    Json toolTips = Json::array();
    for (const AlertButton& button : alert.buttons) {
        toolTips.push_back(button.toolTip.empty() ? Json() : Json(button.toolTip));
    }
    return toolTips;
}

const char* wordOf(AlertStyle style) {
    switch (style) {
        case AlertStyle::Warning:
            return "warning";
        case AlertStyle::Informational:
            return "informational";
        case AlertStyle::Critical:
            return "critical";
    }
    return "";
}

Json eventOf(const Alert& alert, const std::optional<std::string>& window) {
    Json titles = Json::array();
    for (const AlertButton& button : alert.buttons) {
        titles.push_back(button.title);
    }
    Json event;
    event["event"] = "alert";
    event["window"] = window ? Json(*window) : Json();
    event["message"] = alert.messageText;
    event["informative"] = alert.informativeText;
    event["style"] = wordOf(alert.style);
    event["buttons"] = std::move(titles);
    event["tooltips"] = toolTipsOf(alert);
    event["keys"] = keysOf(alert);
    event["help"] = alert.showsHelp;
    event["modal"] = !window;
    return event;
}

int indexForReturn(const Alert& alert) {
    const auto button = std::ranges::find(alert.buttons, AlertKey::Return, &AlertButton::key);
    return button == alert.buttons.end() ? 0 : static_cast<int>(button - alert.buttons.begin());
}

}  // namespace

std::optional<int> indexOfButton(const Alert& alert, const std::string& button) {
    if (const auto titled = std::ranges::find(alert.buttons, button, &AlertButton::title);
        titled != alert.buttons.end()) {
        return static_cast<int>(titled - alert.buttons.begin());
    }
    if (button == "escape") {
        return buttonForEscape(alert);
    }
    if (button == "return") {
        return indexForReturn(alert);
    }
    for (std::size_t index = 0; index < alert.buttons.size(); ++index) {
        if (button == std::to_string(index)) {
            return static_cast<int>(index);
        }
    }
    return std::nullopt;
}

void AlertDouble::beginSheet(const std::string& window, const Alert& alert, std::function<void(int)> completion,
                             std::function<void()> help) {
    m_sink(eventOf(alert, window));
    m_pending.push_back({window, alert, std::move(completion), std::move(help)});
}

int AlertDouble::runModal(const Alert& alert) {
    m_sink(eventOf(alert, std::nullopt));
    int index = 0;
    if (!m_modalAnswers.empty()) {
        index = indexOfButton(alert, m_modalAnswers.front()).value_or(0);
        m_modalAnswers.pop_front();
    }
    return alertFirstButtonReturn + index;
}

bool AlertDouble::hangsFrom(const std::string& window) const {
    return std::ranges::find(m_pending, window, &Pending::window) != m_pending.end();
}

bool AlertDouble::canAnswer(const std::string& button) const {
    if (m_pending.empty()) {
        return false;
    }
    const Alert& alert = m_pending.front().alert;
    return indexOfButton(alert, button).has_value() || (button == "help" && alert.showsHelp);
}

void AlertDouble::answer(const std::string& button) {
    const std::optional<int> index = indexOfButton(m_pending.front().alert, button);
    if (!index) {
        // Copied: the help may ask for another alert.
        const std::function<void()> help = m_pending.front().help;
        if (help) {
            help();
        }
        return;
    }
    // Taken off first: its end may ask for another alert on the same window.
    const Pending answered = std::move(m_pending.front());
    m_pending.pop_front();
    if (answered.completion) {
        answered.completion(alertFirstButtonReturn + *index);
    }
}

}  // namespace kpx::test
