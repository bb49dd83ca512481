#include "controls/TextField.h"

#include <utility>

namespace kpx {

void TextField::setText(std::string text) {
    m_text = std::move(text);
    notify();
}

bool TextField::userEdit(const std::string& proposed) {
    m_beingEdited = true;
    if (filter && !filter(proposed)) {
        // The widget may already show the refused text.
        notify();
        return false;
    }
    setText(proposed);
    if (textDidChange) {
        textDidChange();
    }
    return true;
}

void TextField::userEndEditing() {
    if (!m_beingEdited) {
        return;
    }
    m_beingEdited = false;
    if (textDidEndEditing) {
        textDidEndEditing();
    }
}

void Label::setText(std::string text) {
    m_text = std::move(text);
    notify();
}

}  // namespace kpx
