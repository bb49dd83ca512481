#include "history/TypedNumber.h"

#include "values/Unicode.h"

namespace kpx {

std::string numberAfterTyping(std::string_view before, std::string_view typed, bool hasDecimalComma) {
    std::string text(before);
    for (const char byte : withLatinDigits(typed)) {
        if (byte == ',' && hasDecimalComma) {
            std::erase(text, '.');
            text += '.';
        } else {
            text += byte;
        }
    }
    return text;
}

}  // namespace kpx
