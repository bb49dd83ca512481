#pragma once

#include <cstddef>
#include <vector>

namespace kpx {

/// Tells the system that a large buffer, not yet touched, is about to be filled: it may then provide
/// memory in large pieces instead of stopping at every four thousand bytes. Changes nothing else, and
/// nothing at all for small buffers.
void expectToFill(void* buffer, std::size_t size);

/// Gives the vector room for so many elements, expecting it to be filled.
template <typename T>
void reserveToFill(std::vector<T>& elements, std::size_t count) {
    std::vector<T> larger;
    larger.reserve(count);
    expectToFill(larger.data(), count * sizeof(T));
    larger.insert(larger.end(), elements.begin(), elements.end());
    elements.swap(larger);
}

}  // namespace kpx
