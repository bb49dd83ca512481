#include "controls/Matrix.h"

#include <algorithm>
#include <utility>

namespace kpx {

Matrix::Matrix(ControlRegistry& registry, std::string_view name, Place place, Kind kind, std::vector<Cell> cells)
    : Control(registry, name, place), m_kind(kind), m_cells(std::move(cells)) {
    const auto on = std::ranges::find(m_cells, true, &Cell::on);
    if (kind == Kind::Radio && on != m_cells.end()) {
        m_selectedTag = on->tag;
    }
}

const Matrix::Cell* Matrix::find(int tag) const {
    const auto cell = std::ranges::find(m_cells, tag, &Cell::tag);
    return cell == m_cells.end() ? nullptr : &*cell;
}

void Matrix::selectCellWithTag(int tag) {
    m_selectedTag = find(tag) ? std::optional(tag) : std::nullopt;
    for (Cell& cell : m_cells) {
        cell.on = cell.tag == tag;
    }
    notify();
}

bool Matrix::isOn(int tag) const {
    const Cell* cell = find(tag);
    return cell && cell->on;
}

void Matrix::setOn(int tag, bool on) {
    for (Cell& cell : m_cells) {
        if (cell.tag == tag) {
            cell.on = on;
        }
    }
    notify();
}

void Matrix::setAll(bool on) {
    for (Cell& cell : m_cells) {
        cell.on = on;
    }
    notify();
}

void Matrix::userClick(int tag, bool on) {
    if (!find(tag)) {
        return;
    }
    if (m_kind == Kind::Radio) {
        selectCellWithTag(tag);
    } else {
        m_selectedTag = tag;
        setOn(tag, on);
    }
    if (action) {
        action();
    }
}

}  // namespace kpx
