#pragma once

#include <string>
#include <vector>

namespace kpx {

enum class AlertStyle { Warning = 0, Informational = 1, Critical = 2 };

/// What an alert answers with: the first button, the second.
inline constexpr int alertFirstButtonReturn = 1000;
inline constexpr int alertSecondButtonReturn = 1001;

enum class AlertKey { None, Return, Escape };

struct AlertButton {
    std::string title;
    std::string toolTip;
    AlertKey key = AlertKey::None;
    bool cancels = false;  ///< Escape and closing the alert press it, though it has no key
};

/// A message to the user. The first button is the default one.
struct Alert {
    std::string messageText;      ///< the bold first line
    std::string shownMessage;     ///< what a window shows of it where it quotes too much; empty for all of it
    std::string informativeText;  ///< the body, may be empty
    AlertStyle style = AlertStyle::Warning;
    std::vector<AlertButton> buttons;
    bool smallControls = false;
    bool showsHelp = false;  ///< a help button that answers without ending the alert
};

/// The index of the button that Escape presses: the one that has the key or cancels, else the first, so that
/// Escape never confirms what the default does not.
inline int buttonForEscape(const Alert& alert) {
    for (std::size_t index = 0; index < alert.buttons.size(); ++index) {
        if (alert.buttons[index].key == AlertKey::Escape || alert.buttons[index].cancels) {
            return static_cast<int>(index);
        }
    }
    return 0;
}

}  // namespace kpx
