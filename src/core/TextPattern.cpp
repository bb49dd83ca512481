#include "core/TextPattern.h"

#include "region/RegionServices.h"
#include "values/Unicode.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace kpx {

namespace {

/// A byte that is no UTF-8 becomes a number beyond all characters, so that it equals itself only.
std::u32string charactersOfUtf8(std::string_view text) {
    std::u32string characters;
    characters.reserve(text.size());
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        characters.push_back(character.valid ? character.code : 0x110000U + static_cast<unsigned char>(text.front()));
        text.remove_prefix(character.length);
    }
    return characters;
}

icu::UnicodeString normalized(const icu::UnicodeString& text, const icu::Normalizer2* (*form)(UErrorCode&)) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = form(status);
    requireSuccess(status, "normalizer");
    icu::UnicodeString result = normalizer->normalize(text, status);
    requireSuccess(status, "normalizer");
    return result;
}

icu::UnicodeString withoutDiacritics(const icu::UnicodeString& text) {
    const icu::UnicodeString decomposed = normalized(text, &icu::Normalizer2::getNFDInstance);
    icu::UnicodeString bare;
    for (std::int32_t index = 0; index < decomposed.length(); index = decomposed.moveIndex32(index, 1)) {
        const UChar32 character = decomposed.char32At(index);
        if (u_charType(character) != U_NON_SPACING_MARK) {
            bare.append(character);
        }
    }
    return bare;
}

/// The text as it is compared. Composed in the end, so that what is read as one character counts as one.
std::u32string foldedCharacters(std::string_view text, Folding folding) {
    if (folding == Folding{}) {
        return charactersOfUtf8(text);
    }
    const bool ascii = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii) {
        std::u32string characters(text.begin(), text.end());
        if (folding.caseInsensitive) {
            std::ranges::transform(characters, characters.begin(),
                                   [](char32_t c) { return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c; });
        }
        return characters;
    }
    icu::UnicodeString wide = unicodeFromUtf8(text);
    if (folding.diacriticInsensitive) {
        wide = withoutDiacritics(wide);
    }
    if (folding.caseInsensitive) {
        wide.foldCase();
    }
    wide = normalized(wide, &icu::Normalizer2::getNFCInstance);
    return charactersOfUtf8(utf8FromUnicode(wide));
}

}  // namespace

TextPattern::TextPattern(std::string_view pattern, Folding folding)
    : m_folding(folding),
      m_pattern(foldedCharacters(pattern, folding)),
      m_matchesEverything(!pattern.empty() && pattern.find_first_not_of('*') == std::string_view::npos) {}

bool TextPattern::matches(std::string_view text) const {
    if (m_matchesEverything) {
        return true;
    }
    const std::u32string characters = foldedCharacters(text, m_folding);
    std::size_t position = 0;
    std::size_t place = 0;
    // Only the last "*" ever needs to take more: whatever an earlier one could take, it can as well.
    std::size_t lastStar = std::u32string::npos;
    std::size_t takenByStar = 0;
    while (position < characters.size()) {
        if (place < m_pattern.size() && m_pattern[place] == U'*') {
            lastStar = place++;
            takenByStar = position;
        } else if (place < m_pattern.size() && (m_pattern[place] == U'?' || m_pattern[place] == characters[position])) {
            ++place;
            ++position;
        } else if (lastStar != std::u32string::npos) {
            place = lastStar + 1;
            position = ++takenByStar;
        } else {
            return false;
        }
    }
    return m_pattern.find_first_not_of(U'*', place) == std::u32string::npos;
}

FoldedText::FoldedText(std::string_view text, Folding folding)
    : m_folding(folding), m_characters(foldedCharacters(text, folding)) {}

bool FoldedText::isIn(std::string_view text) const {
    return !m_characters.empty() && foldedCharacters(text, m_folding).find(m_characters) != std::u32string::npos;
}

}  // namespace kpx
