#pragma once

#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// Parses a whole property list in whichever format it is in: binary (version 1.0), XML or old-style.
///
/// Null when the bytes are not one complete property list: a truncation, a cycle, an offset or length
/// beyond the input, nesting too deep, an entity declaration, trailing rubbish. Never throws, and needs
/// memory in proportion to the input only.
///
/// Texts are UTF-8; an unpaired surrogate of a UTF-16 string is carried as its three-byte form, so that
/// it is written back as it was.
[[nodiscard]] std::optional<Value> readPropertyList(std::string_view bytes);

/// The value as a binary property list, version 1.0. Equal texts, integers and data are written once
/// each. Null when the value nests too deep to be read back.
[[nodiscard]] std::optional<std::string> writePropertyList(const Value& value);

}  // namespace kpx
