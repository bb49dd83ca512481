#pragma once

#include "values/Record.h"

#include <optional>
#include <string_view>

namespace kpx {

/// Reads an old-style property list, given as UTF-8 without a byte order mark. Every scalar is a text or
/// data; the format knows no numbers.
///
/// | written                            | read                                                        |
/// |------------------------------------|-------------------------------------------------------------|
/// | `( a, b )`                         | an array; a comma may follow the last element               |
/// | `{ k = v; }`                       | a dictionary; `k;` stands for `k = k;`                      |
/// | `< 0fbd 77 >`                      | data                                                        |
/// | `word`                             | a text of letters, digits and `_$+/:.-`                     |
/// | `"text"`, `'text'`                 | a text; it may run over several lines                       |
/// | `\n \t \" \\` …                    | as in C; any other character after a backslash is itself    |
/// | `\101`, `\341`                     | an octal code: ASCII, from 0x80 the NeXTSTEP encoding       |
/// | `\U00e6`                           | a UTF-16 unit in one to four hexadecimal digits             |
/// | `// …`, and C comments             | nothing                                                     |
/// | `k = v; …` without the braces      | a dictionary: a table of localised texts                    |
///
/// Null for anything else, for nesting deeper than maximumNesting, and for a word that stands alone: the
/// first bytes of any other file look the same. A key that occurs twice keeps its first place and its
/// last value.
[[nodiscard]] std::optional<Value> readOldStylePropertyList(std::string_view text);

}  // namespace kpx
