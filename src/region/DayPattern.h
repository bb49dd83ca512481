#pragma once

#include <string>
#include <string_view>

namespace kpx {

/// A short style's pattern as one in which every part of a day can be typed as a number and stands once, the year
/// with four digits.
///
/// | style           | typed         | because                                             |
/// |-----------------|---------------|-----------------------------------------------------|
/// | "M/d/yy"        | "M/d/yyyy"    |                                                     |
/// | "dd.MM.y 'г'."  | "dd.MM.yyyy 'г'." | words stay                                      |
/// | "d\u200F/M\u200F/y" | "d/M/yyyy" | nobody can type marks of direction               |
/// | "GGGGG y-MM-dd" | "yyyy-MM-dd"  | there is one era                                    |
/// | "d MMM y", "M/d" | "yyyy-MM-dd" | a name cannot be typed as a number; no year         |
std::string typedDayPattern(std::string_view shortStyle);

}  // namespace kpx
