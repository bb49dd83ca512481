#pragma once

#include "values/Shared.h"

#include <cstdint>
#include <string>

namespace kpx {

/// A whole number of 65 to 128 bits, in two's complement. The program has none of its own; one in a foreign file is
/// carried, never calculated with.
class WideInteger {
public:
    WideInteger(std::int64_t high, std::uint64_t low) : m_bits(Bits{high, low}) {}

    std::int64_t high() const { return m_bits->high; }
    std::uint64_t low() const { return m_bits->low; }

    /// "-170141183460469231731687303715884105728".
    std::string decimalText() const;

    friend bool operator==(const WideInteger& left, const WideInteger& right) { return *left.m_bits == *right.m_bits; }

private:
    struct Bits {
        std::int64_t high = 0;
        std::uint64_t low = 0;
        bool operator==(const Bits&) const = default;
    };

    Shared<Bits> m_bits;  // shared, so that a value stays as small as its usual contents
};

}  // namespace kpx
