#pragma once

#include "controls/Control.h"

#include <string>
#include <vector>

namespace kpx {

/// The tabs of the main window. Each tab's identifier is its index.
class TabView : public Control {
public:
    TabView(ControlRegistry& registry, std::string_view name, Place place, int count)
        : Control(registry, name, place), m_count(count) {}

    int numberOfTabs() const { return m_count; }
    int selectedTab() const { return m_selected; }

    /// Runs didSelect, also for the tab already selected. An index that does not exist leaves the
    /// selection alone and runs nothing.
    void selectTab(int index) {
        if (index < 0 || index >= m_count) {
            return;
        }
        m_selected = index;
        notify();
        if (didSelect) {
            didSelect(index);
        }
    }
    std::function<void(int index)> didSelect;

private:
    int m_count;
    int m_selected = 0;
};

/// A quiet line above the tabs; open while it has something to say.
class Bar : public Control {
public:
    using Control::Control;
    bool isOpen() const { return !m_text.empty(); }
    const std::string& text() const { return m_text; }
    void setText(std::string text) {
        if (text != m_text) {
            m_text = std::move(text);
            notify();
        }
    }

private:
    std::string m_text;
};

/// A sheet of the main window.
class Sheet : public Control {
public:
    Sheet(ControlRegistry& registry, std::string_view name, Place content) : Control(registry, name, content) {}
    bool isOpen() const { return m_open; }
    void setOpen(bool open) {
        m_open = open;
        notify();
    }

private:
    bool m_open = false;
};

/// A popover: hangs from the control that opened it and closes when the user acts elsewhere.
class Popover : public Control {
public:
    using Control::Control;
    bool isOpen() const { return m_anchor != nullptr; }
    /// The control it hangs from, null while closed.
    const Control* anchor() const { return m_anchor; }
    void show(const Control& anchor) {
        m_anchor = &anchor;
        notify();
    }
    void close() {
        if (m_anchor) {
            m_anchor = nullptr;
            notify();
        }
    }

private:
    const Control* m_anchor = nullptr;
};

/// A context menu.
class Menu : public Control {
public:
    struct Item {
        std::string title;
        bool enabled = true;
        bool operator==(const Item&) const = default;
    };
    Menu(ControlRegistry& registry, std::string_view name, Place place, std::vector<Item> items)
        : Control(registry, name, place), m_items(std::move(items)) {}

    const std::vector<Item>& items() const { return m_items; }
    void setItemTitle(std::size_t index, std::string title) {
        m_items.at(index).title = std::move(title);
        notify();
    }
    void setItemEnabled(std::size_t index, bool enabled) {
        m_items.at(index).enabled = enabled;
        notify();
    }

    /// Before the menu opens.
    std::function<void()> needsUpdate;
    /// The user chose the item at the index.
    std::function<void(int index)> action;

private:
    std::vector<Item> m_items;
};

}  // namespace kpx
