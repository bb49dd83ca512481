#pragma once

#include "region/Environment.h"

#include <compare>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// How two texts are ordered.
enum class Comparison {
    /// compare: exact, by code point.
    Plain,
    /// localizedCaseInsensitiveCompare: the locale's order, case ignored, no natural digits.
    LocalizedCaseInsensitive,
    /// localizedStandardCompare: the order of a file browser. Digit runs count by their value; case and
    /// accents only break ties, exact comparison the last. A total order: equal means the same text.
    LocalizedStandard,
};

std::strong_ordering compareTexts(std::string_view left, std::string_view right, Comparison comparison,
                                  const Environment& environment);

/// For every text its place in the order, equal places for texts that compare equal. Costs one
/// comparison sort of the distinct texts, after which callers compare numbers.
std::vector<std::size_t> ranksOfTexts(const std::vector<std::string_view>& texts, Comparison comparison,
                                      const Environment& environment);

/// Sorts in place by localizedStandardCompare: "Ann 9", "Ann 10", "Bob".
void sortArray(std::vector<std::string>& titles, const Environment& environment);
/// Sorts in place, ascending.
void sortNumberArray(std::vector<double>& numbers);

}  // namespace kpx
