#include "history/KPXNumberFormatter.h"

#include "values/Unicode.h"

#include <algorithm>

namespace kpx {

KPXNumberFormatter::KPXNumberFormatter(const std::string& allowedChars, bool doExtraTests)
    : m_kpxAllowedChars(codePoints(allowedChars)), m_optTests(doExtraTests) {}

KPXNumberFormatter::Verdict KPXNumberFormatter::isPartialStringValid(std::string_view proposed) const {
    if (!isCharAcceptable(proposed)) {
        return {};
    }
    if (!m_optTests) {
        return {true, std::nullopt};
    }
    if (!isHyphenAcceptable(proposed) || !isFullStopAcceptable(proposed)) {
        return {};
    }
    return {true, std::string(proposed)};
}

bool KPXNumberFormatter::isCharAcceptable(std::string_view text) const {
    return std::ranges::all_of(codePoints(text), [&](char32_t character) {
        return m_kpxAllowedChars.find(character) != std::u32string::npos;
    });
}

bool KPXNumberFormatter::isHyphenAcceptable(std::string_view text) {
    return text.size() < 2 || text.find('-', 1) == std::string_view::npos;
}

bool KPXNumberFormatter::isFullStopAcceptable(std::string_view text) {
    const std::size_t first = text.find('.');
    if (text.size() < 2 || first == std::string_view::npos || first == text.size() - 1) {
        return true;
    }
    return text.back() != '.';
}

}  // namespace kpx
