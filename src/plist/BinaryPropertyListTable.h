#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kpx {

/// A hash of the bytes. It differs from one run of the program to the next, so that nobody can prepare
/// texts that all fall on one place.
std::uint64_t hashOfBytes(std::string_view bytes);

/// A hash of a number, likewise.
std::uint64_t hashOfNumber(std::uint64_t number);

/// Numbers below 2^32 under their hashes; what is equal is for the caller to tell.
class HashedNumbers {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// The number with this hash for which `isSame(number)` holds, `none` when there is none.
    template <typename IsSame>
    std::uint32_t find(std::uint64_t hash, const IsSame& isSame) const {
        if (m_slots.empty()) {
            return none;
        }
        for (std::size_t index = hash & mask();; index = (index + 1) & mask()) {
            const std::uint64_t slot = m_slots[index];
            if (slot == empty) {
                return none;
            }
            if ((slot & tagMask) == (hash & tagMask) && isSame(static_cast<std::uint32_t>(slot >> 32))) {
                return static_cast<std::uint32_t>(slot >> 32);
            }
        }
    }

    /// REQUIRES: `number` is not `none`.
    void add(std::uint64_t hash, std::uint32_t number) {
        if (4 * ++m_used > 3 * m_slots.size()) {
            grow();
        }
        put(std::uint64_t{number} << 32 | (hash & tagMask));
    }

private:
    static constexpr std::uint64_t tagMask = 0xFFFFFFFF;
    static constexpr std::uint64_t empty = ~std::uint64_t{0};

    std::size_t mask() const { return m_slots.size() - 1; }

    /// The low half of the hash is all that is kept; with fewer than 2^32 numbers it is enough.
    void put(std::uint64_t slot) {
        std::size_t index = slot & tagMask & mask();
        while (m_slots[index] != empty) {
            index = (index + 1) & mask();
        }
        m_slots[index] = slot;
    }

    void grow() {
        constexpr std::size_t smallest = 256;
        std::vector<std::uint64_t> old(std::max(smallest, 2 * m_slots.size()), empty);
        old.swap(m_slots);
        for (const std::uint64_t slot : old) {
            if (slot != empty) {
                put(slot);
            }
        }
    }

    std::vector<std::uint64_t> m_slots;  // a power of two of them
    std::size_t m_used = 0;
};

}  // namespace kpx
