#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kpx::runner {

/// A word of a script. A quoted one never counts as one of a command's fixed words.
struct Word {
    std::string text;
    bool quoted = false;
};
using Words = std::vector<Word>;

/// Why a line cannot be parsed.
struct ScriptError {
    std::string message;
};

/// The words of a line; none for an empty line and for a comment.
///
///     type rxNumberTab1 4711           three words
///     choose patientPopTab1 "Ann B."   \" \\ \n \r \t are escapes between double quotes
///     call isItaNumber '"1"\'          between single quotes everything stands for itself
///     # anything                       a comment takes the whole line
///
/// A quote opens only at the start of a word, and a blank or the line's end follows the closing one.
std::variant<Words, ScriptError> splitLine(std::string_view line);

/// What a word that is no fixed one must be.
std::optional<long long> integerFromWord(const std::string& text);
/// A decimal number, also "nan"; nothing may follow it.
std::optional<double> numberFromWord(const std::string& text);

}  // namespace kpx::runner
