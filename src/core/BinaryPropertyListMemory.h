#pragma once

#include <cstddef>

namespace kpx {

/// Tells the system that a large buffer, not yet touched, is about to be filled: it may then provide
/// memory in large pieces instead of stopping at every four thousand bytes. Changes nothing else, and
/// nothing at all for small buffers.
void expectToFill(void* buffer, std::size_t size);

}  // namespace kpx
