#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace kpx {

/// Puts the items in the given order: at each position goes the item that `order` names there.
/// REQUIRES: `order` names every position once.
template <typename Item>
void reorder(std::vector<Item>& items, const std::vector<std::size_t>& order) {
    std::vector<Item> reordered;
    reordered.reserve(items.size());
    for (const std::size_t position : order) {
        reordered.push_back(std::move(items[position]));
    }
    items = std::move(reordered);
}

}  // namespace kpx
