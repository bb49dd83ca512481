#pragma once

#include "controls/Button.h"

#include <string>
#include <utility>

namespace kpx {

/// The receipt button of the entry form: a drop target that shows the receipt as its image.
class KPXDropButton : public Button {
public:
    using Button::Button;

    /// Whether an acceptable drag hovers over it; it is then drawn with a focus ring inside its edge.
    bool dragInside() const { return m_dragInside; }
    void setDragInside(bool inside) {
        m_dragInside = inside;
        notify();
    }

private:
    bool m_dragInside = false;
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

private:
    Content m_content = Content::None;
    std::string m_file;
};

}  // namespace kpx
