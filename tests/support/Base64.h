#pragma once

#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>

namespace kpx::test {

std::string base64FromBytes(const Data::Bytes& bytes);
/// Null for a text that is no padded base64.
std::optional<Data::Bytes> bytesFromBase64(std::string_view text);

}  // namespace kpx::test
