#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// What stands between the quotes of an old-style property list's text, with its escapes resolved. Null
/// for an escape that is none.
std::optional<std::string> unescapedOldStyleText(std::string_view quoted);

}  // namespace kpx
