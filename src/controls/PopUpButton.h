#pragma once

#include "controls/Control.h"

#include <optional>
#include <string>
#include <vector>

namespace kpx {

/// A pop-up menu that shows its selected item. A separator is an item and has an index; it cannot be
/// chosen by the user.
class PopUpButton : public Control {
public:
    using Control::Control;

    /// Null is a separator.
    using Item = std::optional<std::string>;
    const std::vector<Item>& items() const { return m_items; }
    int numberOfItems() const { return static_cast<int>(m_items.size()); }
    /// Whether there is more to choose than what stands below the separator.
    bool hasNames() const { return !m_items.empty() && m_items.front().has_value() && m_items.size() > 1; }

    /// −1 when nothing is selected.
    int indexOfSelectedItem() const { return m_selected; }
    /// Empty when nothing is selected.
    Item titleOfSelectedItem() const;
    /// The title chosen, which restricts to that name. None for the last item, which is no name: it means no
    /// restriction in a filter, and in the form it opens the list's sheet.
    Item titleUnlessLastItem() const { return isLastItemSelected() ? Item() : titleOfSelectedItem(); }
    bool isLastItemSelected() const { return !m_items.empty() && m_selected == numberOfItems() - 1; }

    /// Replaces all items; nothing is selected then.
    void setItems(std::vector<Item> items);
    /// The same with titles in the user's language, each of which represents a text of its own. REQUIRES: as many
    /// texts as titles.
    void setItems(std::vector<Item> titles, std::vector<Item> representedTexts);
    /// What the items represent: their titles, where nothing else was said.
    const std::vector<Item>& representedTexts() const { return m_representedTexts; }
    Item representedTextOfSelectedItem() const;
    /// A text that no item represents leaves nothing selected.
    void selectItemRepresenting(const std::string& text);
    /// Removes the first item of that title; removing the selected item leaves nothing selected.
    void removeItemWithTitle(const std::string& title);
    /// An index that does not exist leaves nothing selected.
    void selectItemAtIndex(int index);
    /// A title that the menu does not have leaves nothing selected.
    void selectItemWithTitle(const std::string& title);
    void selectLastItem() { selectItemAtIndex(numberOfItems() - 1); }

    /// The user picks an item, perhaps the one already selected; runs the action. Ignored for a
    /// separator and for an index that does not exist.
    void userChoose(int index);
    std::function<void()> action;

private:
    std::vector<Item> m_items;
    std::vector<Item> m_representedTexts;
    int m_selected = -1;
};

}  // namespace kpx
