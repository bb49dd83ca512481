#pragma once

#include <string>
#include <string_view>

namespace kpx {

/// What a number's field holds before the cursor once something was typed there, for the keystroke rules to judge. A
/// digit of any script is the Latin one it stands for: the files know no other.
///
/// | before  | typed | decimal comma | then     |                                                            |
/// |---------|-------|---------------|----------|------------------------------------------------------------|
/// | "1"     | "٢"   |               | "12"     |                                                            |
/// | "1.234" | ","   | yes           | "1234."  | where people write 1.234,50 the points before a comma group |
/// | "12"    | ","   | no            | "12,"    | which the rules refuse                                     |
std::string numberAfterTyping(std::string_view before, std::string_view typed, bool hasDecimalComma);

}  // namespace kpx
