#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// For XML whose beginning shows that even its letters are not those of ASCII: the name of the character set, as far
/// as it must be known to read on. Null for any other bytes, UTF-16 included, which the parser knows itself.
///
/// | beginning                            | character set                      |
/// |--------------------------------------|------------------------------------|
/// | "<" in units of four bytes           | UTF-32, of that byte order         |
/// | the mark of a form of Unicode        | that one                           |
/// | "ESC $ ) C"                          | ISO-2022-KR                        |
/// | "<?xml" on a mainframe               | the one that is declared there     |
std::optional<std::string> charsetOfXmlBytes(std::string_view bytes);

/// The text in UTF-8, without a mark. Null for a name that the internationalisation library does not know, and for
/// bytes that are no text of that character set.
std::optional<std::string> utf8FromCharset(std::string_view bytes, const std::string& charset);

}  // namespace kpx
