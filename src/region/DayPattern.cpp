#include "region/DayPattern.h"

#include <algorithm>

namespace kpx {

namespace {

constexpr char plainPattern[] = "yyyy-MM-dd";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The part of a day, 'd', 'M' or 'y', that a pattern's letters write as a number; 0 for any other.
char partOf(char letter, std::size_t length) {
    if (letter == 'y' || letter == 'u') {
        return 'y';
    }
    const bool isNumber = length <= 2;
    return isNumber && (letter == 'M' || letter == 'L') ? 'M' : isNumber && letter == 'd' ? 'd' : '\0';
}

std::string withoutDirectionMarks(std::string_view text) {
    std::string result(text);
    for (const std::string_view mark : {"\u200E", "\u200F", "\u061C"}) {
        for (std::size_t place = result.find(mark); place != std::string::npos; place = result.find(mark)) {
            result.erase(place, mark.size());
        }
    }
    return result;
}

}  // namespace

std::string typedDayPattern(std::string_view shortStyle) {
    const std::string style = withoutDirectionMarks(shortStyle);
    std::string pattern;
    std::string parts;
    bool quoted = false;
    for (std::size_t place = 0; place < style.size();) {
        const char letter = style[place];
        quoted = letter == '\'' ? !quoted : quoted;
        if (quoted || !isLetter(letter)) {
            // What stood between an era and the day goes with the era.
            if (!pattern.empty() || letter != ' ') {
                pattern += letter;
            }
            ++place;
            continue;
        }
        const std::size_t end = std::min(style.find_first_not_of(letter, place), style.size());
        const std::size_t length = end - place;
        place = end;
        if (const char part = partOf(letter, length); part != '\0') {
            pattern.append(part == 'y' ? 4 : length, part);
            parts += part;
        } else if (letter != 'G') {
            return plainPattern;
        }
    }
    pattern.resize(pattern.find_last_not_of(' ') + 1);
    std::ranges::sort(parts);
    return parts == "Mdy" ? pattern : plainPattern;
}

}  // namespace kpx
