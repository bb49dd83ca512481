#pragma once

#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// The eight bytes a binary property list of version 1.0 begins with.
inline constexpr std::string_view binaryPropertyListHeader = "bplist00";

/// Reads a binary property list. An object that several places refer to is read once and shared by them.
///
/// Stricter than the format in what no writer writes: the offset table ends at the trailer, objects do
/// not overlap, the text of an ASCII string is ASCII, the keys of a dictionary are strings. Nesting is
/// bounded by maximumNesting and the number of values, counted at every place, by maximumPlaces().
///
/// Null also for objects that have no value here: null, sets, and integers beyond 64 bits.
[[nodiscard]] std::optional<Value> readBinaryPropertyList(std::string_view bytes);

/// Writes a binary property list: objects in the order of a walk from the root, a dictionary's keys
/// before its values; every scalar once, arrays and dictionaries that share their content once; integers,
/// references and offsets in the fewest bytes the format has for them.
///
/// | integer                   | bytes |
/// |---------------------------|-------|
/// | 0 … 255                   | 1     |
/// | … 65535                   | 2     |
/// | … 4294967295              | 4     |
/// | greater, and all negative | 8     |
/// | above the signed 64 bits  | 16    |
///
/// Null for a value that readBinaryPropertyList() would refuse. A byte that is not part of a UTF-8
/// character is written as U+FFFD.
[[nodiscard]] std::optional<std::string> writeBinaryPropertyList(const Value& value);

}  // namespace kpx
