#pragma once

#include <string>
#include <string_view>

namespace kpx {

/// What a wildcard match overlooks.
struct Folding {
    bool caseInsensitive = false;
    bool diacriticInsensitive = false;
    bool operator==(const Folding&) const = default;
};

/// A wildcard pattern: "*" stands for any run of characters, "?" for exactly one; everything else,
/// backslashes included, for itself.
class TextPattern {
public:
    TextPattern(std::string_view pattern, Folding folding);

    /// Whether the whole text fits. The cost is at most the product of both lengths, whatever the pattern.
    bool matches(std::string_view text) const;

private:
    Folding m_folding;
    std::u32string m_pattern;
    bool m_matchesEverything = false;
};

/// A text to be found within others, whatever its case, accents, blanks, ligatures and digits are there. One of which
/// nothing is left, such as an accent alone, is in none.
class FoldedText {
public:
    explicit FoldedText(std::string_view text);

    bool isIn(std::string_view text) const;

private:
    std::u32string m_characters;
};

}  // namespace kpx
