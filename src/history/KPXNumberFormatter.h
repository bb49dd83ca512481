#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// A keystroke filter for a text field: decides over each proposed text. It converts nothing; the
/// field's value is its text.
///
/// | allowed "0123456789.", extra tests | verdict  | why                                             |
/// |------------------------------------|----------|-------------------------------------------------|
/// | "" · "." · "12.5" · "12."          | accepted |                                                 |
/// | "12a"                              | refused  | a character that is not allowed                 |
/// | "12.5."                            | refused  | a second full stop at the end                   |
/// | "1.2.3"                            | accepted | pasted: only the last character is looked at    |
///
/// The extra tests look for the literal "-" and ".", not for the locale's signs.
class KPXNumberFormatter {
public:
    KPXNumberFormatter(const std::string& allowedChars, bool doExtraTests);

    struct Verdict {
        bool accepted = false;
        /// The text that takes the proposed one's place; none when refused, or accepted untested.
        std::optional<std::string> replacement;
    };
    Verdict isPartialStringValid(std::string_view proposed) const;

    /// Only allowed characters.
    bool isCharAcceptable(std::string_view text) const;
    /// A hyphen stands nowhere but first.
    static bool isHyphenAcceptable(std::string_view text);
    /// No full stop at the end when there is one before it.
    static bool isFullStopAcceptable(std::string_view text);

private:
    std::u32string m_kpxAllowedChars;
    bool m_optTests;
};

}  // namespace kpx
