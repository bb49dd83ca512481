#pragma once

#include "controls/Button.h"

#include <string>
#include <utility>

namespace kpx {

/// The receipt button of the entry form: a drop target that shows the receipt as its image.
class KPXDropButton : public Button {
public:
    using Button::Button;

    enum class State { None, Attached, CannotBeShown, NotFound };
    State state() const { return m_state; }
    /// What the button says in words: the receipt's name, and what is wrong with it; empty for no receipt.
    const std::string& text() const { return m_text; }
    void setReceipt(State state, std::string text) {
        m_state = state;
        m_text = std::move(text);
        notify();
    }

    /// The interface could not make a picture of the file that the button shows, or did not find it.
    std::function<void(bool notFound)> pictureFailed;
    /// Its file could be read, be it again after it could not.
    std::function<void()> pictureShown;

    /// Whether an acceptable drag hovers over it; it is then drawn with a focus ring inside its edge.
    bool dragInside() const { return m_dragInside; }
    void setDragInside(bool inside) {
        m_dragInside = inside;
        notify();
    }

private:
    bool m_dragInside = false;
    State m_state = State::None;
    std::string m_text;
};

/// The receipt at full size, in the popover; a drop target too. Holds at most one display.
class KPXReceiptView : public Control {
public:
    enum class Content { None, Image, PDF };
    using Control::Control;

    Content content() const { return m_content; }
    /// Full path of the file shown; empty for none.
    const std::string& file() const { return m_file; }
    void setContent(Content content, std::string file) {
        m_content = content;
        m_file = std::move(file);
        notify();
    }
    void removeAllSubviews() { setContent(Content::None, {}); }

    /// Why nothing is displayed although the form has a receipt; empty when there is nothing to say.
    const std::string& message() const { return m_message; }
    void setMessage(std::string message) {
        m_message = std::move(message);
        notify();
    }

private:
    Content m_content = Content::None;
    std::string m_file;
    std::string m_message;
};

}  // namespace kpx
