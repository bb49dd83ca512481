#pragma once

#include "controls/Control.h"

#include <optional>
#include <string>
#include <vector>

namespace kpx {

/// A group of radio buttons or check boxes, told apart by their tags.
class Matrix : public Control {
public:
    enum class Kind { Radio, Checks };
    struct Cell {
        int tag = 0;
        std::string title;
        bool on = false;
    };

    Matrix(ControlRegistry& registry, std::string_view name, Place place, Kind kind, std::vector<Cell> cells);

    Kind kind() const { return m_kind; }
    const std::vector<Cell>& cells() const { return m_cells; }

    /// Of radio buttons the one that is on, of check boxes the one clicked last; none at first.
    std::optional<int> selectedTag() const { return m_selectedTag; }
    /// Turns one radio button on and the others off; a tag that does not exist turns all off.
    void selectCellWithTag(int tag);

    bool isOn(int tag) const;
    void setOn(int tag, bool on);
    void setAll(bool on);

    /// The user clicks a radio button, or turns a check box on or off; runs the action. Ignored for a
    /// tag that does not exist.
    void userClick(int tag, bool on = true);
    std::function<void()> action;

private:
    const Cell* find(int tag) const;

    Kind m_kind;
    std::vector<Cell> m_cells;
    std::optional<int> m_selectedTag;
};

}  // namespace kpx
