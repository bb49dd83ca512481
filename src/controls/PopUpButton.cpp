#include "controls/PopUpButton.h"

#include <algorithm>
#include <utility>

namespace kpx {

PopUpButton::Item PopUpButton::titleOfSelectedItem() const {
    return m_selected < 0 ? Item() : m_items[static_cast<std::size_t>(m_selected)];
}

void PopUpButton::setItems(std::vector<Item> items) {
    m_items = std::move(items);
    m_selected = -1;
    notify();
}

void PopUpButton::removeItemWithTitle(const std::string& title) {
    const auto item = std::ranges::find(m_items, Item(title));
    if (item == m_items.end()) {
        return;
    }
    const auto index = static_cast<int>(item - m_items.begin());
    m_items.erase(item);
    if (index == m_selected) {
        m_selected = -1;
    } else if (index < m_selected) {
        --m_selected;
    }
    notify();
}

void PopUpButton::selectItemAtIndex(int index) {
    m_selected = index >= 0 && index < numberOfItems() ? index : -1;
    notify();
}

void PopUpButton::selectItemWithTitle(const std::string& title) {
    const auto item = std::ranges::find(m_items, Item(title));
    selectItemAtIndex(item == m_items.end() ? -1 : static_cast<int>(item - m_items.begin()));
}

void PopUpButton::userChoose(int index) {
    if (index < 0 || index >= numberOfItems() || !m_items[static_cast<std::size_t>(index)]) {
        return;
    }
    selectItemAtIndex(index);
    if (action) {
        action();
    }
}

}  // namespace kpx
