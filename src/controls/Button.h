#pragma once

#include "controls/Control.h"

#include <string>
#include <utility>

namespace kpx {

/// A push button or menu item. Its title belongs to the interface and is localised there.
class Button : public Control {
public:
    Button(ControlRegistry& registry, std::string_view name, Place place, std::string title = {})
        : Control(registry, name, place), m_title(std::move(title)) {}

    const std::string& title() const { return m_title; }
    void setTitle(std::string title) {
        m_title = std::move(title);
        notify();
    }

    /// A bundled image's file name, or the full path of a receipt; empty for none.
    const std::string& image() const { return m_image; }
    void setImage(std::string image) {
        m_image = std::move(image);
        notify();
    }

    void userClick() {
        if (action) {
            action();
        }
    }
    std::function<void()> action;

private:
    std::string m_title;
    std::string m_image;
};

}  // namespace kpx
