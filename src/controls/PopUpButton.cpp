#include "controls/PopUpButton.h"

#include <algorithm>
#include <utility>

namespace kpx {

namespace {

/// −1 for none.
int indexOf(const std::vector<PopUpButton::Item>& items, const std::string& text) {
    const auto item = std::ranges::find(items, PopUpButton::Item(text));
    return item == items.end() ? -1 : static_cast<int>(item - items.begin());
}

}  // namespace

PopUpButton::Item PopUpButton::titleOfSelectedItem() const {
    return m_selected < 0 ? Item() : m_items[static_cast<std::size_t>(m_selected)];
}

PopUpButton::Item PopUpButton::representedTextOfSelectedItem() const {
    return m_selected < 0 ? Item() : m_representedTexts[static_cast<std::size_t>(m_selected)];
}

void PopUpButton::setItems(std::vector<Item> items) {
    std::vector<Item> representedTexts = items;
    setItems(std::move(items), std::move(representedTexts));
}

void PopUpButton::setItems(std::vector<Item> titles, std::vector<Item> representedTexts) {
    m_items = std::move(titles);
    m_representedTexts = std::move(representedTexts);
    m_selected = -1;
    notify();
}

void PopUpButton::removeItemWithTitle(const std::string& title) {
    const int index = indexOf(m_items, title);
    if (index < 0) {
        return;
    }
    m_items.erase(m_items.begin() + index);
    m_representedTexts.erase(m_representedTexts.begin() + index);
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

void PopUpButton::selectItemWithTitle(const std::string& title) { selectItemAtIndex(indexOf(m_items, title)); }

void PopUpButton::selectItemRepresenting(const std::string& text) {
    selectItemAtIndex(indexOf(m_representedTexts, text));
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
