#include "core/TextPattern.h"

#include "region/RegionServices.h"
#include "values/Unicode.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <optional>

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

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::u32string inSmallLetters(std::string_view ascii) {
    std::u32string characters(ascii.begin(), ascii.end());
    std::ranges::transform(characters, characters.begin(),
                           [](char32_t c) { return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c; });
    return characters;
}

/// The text as it is compared. Composed in the end, so that what is read as one character counts as one.
std::u32string foldedCharacters(std::string_view text, Folding folding) {
    if (folding == Folding{}) {
        return charactersOfUtf8(text);
    }
    if (isAscii(text)) {
        return folding.caseInsensitive ? inSmallLetters(text) : std::u32string(text.begin(), text.end());
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

/// The character as it is typed, or nothing for a mark that no key has.
std::optional<UChar32> asTyped(UChar32 character) {
    constexpr UChar32 dotlessI = 0x131;  // the small letter of I where there are two of them
    const auto type = u_charType(character);
    if (type == U_NON_SPACING_MARK || type == U_FORMAT_CHAR) {
        return std::nullopt;
    }
    const std::int32_t digit = u_charDigitValue(character);
    return digit >= 0 ? U'0' + digit : character == dotlessI ? U'i' : character;
}

/// The text as it is looked for, on both sides: without case and accents, and without what no reader sees, the marks of
/// direction, the kinds of blanks and of ligatures. A digit is the same in every script.
std::u32string soughtCharacters(std::string_view text) {
    if (isAscii(text)) {
        return inSmallLetters(text);
    }
    const icu::UnicodeString decomposed = normalized(unicodeFromUtf8(text), &icu::Normalizer2::getNFKDInstance);
    icu::UnicodeString typed;
    for (std::int32_t index = 0; index < decomposed.length(); index = decomposed.moveIndex32(index, 1)) {
        if (const auto character = asTyped(decomposed.char32At(index))) {
            typed.append(*character);
        }
    }
    return charactersOfUtf8(utf8FromUnicode(typed.foldCase()));
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

FoldedText::FoldedText(std::string_view text) : m_characters(soughtCharacters(text)) {}

bool FoldedText::isIn(std::string_view text) const {
    return !m_characters.empty() && soughtCharacters(text).find(m_characters) != std::u32string::npos;
}

}  // namespace kpx
