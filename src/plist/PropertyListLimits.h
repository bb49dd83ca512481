#pragma once

#include <algorithm>
#include <cstdint>

namespace kpx {

/// How many arrays and dictionaries may stand inside one another, the root counted. Every reader refuses
/// more, and the writer does too, so that what is written can be read back. Destroying and comparing
/// values recurse once per level; this bounds their stack.
inline constexpr std::uint32_t maximumNesting = 512;

/// How many values a binary property list of so many bytes may stand for when every shared array and
/// dictionary is counted at each place that refers to it.
///
/// In a binary file an array may be referred to from many places, so a few hundred bytes can stand for
/// more values than there are atoms. Reading shares such objects and costs nothing, but whoever then
/// walks the result would not come to an end. A file that shares nothing has at most one value per
/// byte; the factor leaves room for a list that repeats the same wide record with one-byte references,
/// and the floor for small files.
inline constexpr std::uint64_t maximumPlaces(std::uint64_t byteCount) {
    constexpr std::uint64_t placesPerByte = 64;
    constexpr std::uint64_t always = std::uint64_t{1} << 20;
    return std::max(always, byteCount * placesPerByte);
}

}  // namespace kpx
