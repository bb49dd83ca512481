#include "tests/runner/Script.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace kpx::runner {

namespace {

bool isBlank(char character) { return character == ' ' || character == '\t'; }

std::optional<char> unescaped(char character) {
    switch (character) {
        case '"':
        case '\\':
            return character;
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return std::nullopt;
    }
}

/// Reads the quoted word at the front of the line and takes it off; the message of what is wrong, if any.
std::optional<std::string> takeQuoted(std::string_view& line, std::string& text) {
    const char quote = line.front();
    line.remove_prefix(1);
    while (!line.empty() && line.front() != quote) {
        if (quote == '"' && line.front() == '\\') {
            const std::optional<char> character = line.size() > 1 ? unescaped(line[1]) : std::nullopt;
            if (!character) {
                return "unknown escape";
            }
            text += *character;
            line.remove_prefix(2);
        } else {
            text += line.front();
            line.remove_prefix(1);
        }
    }
    if (line.empty()) {
        return "unterminated quote";
    }
    line.remove_prefix(1);
    if (!line.empty() && !isBlank(line.front())) {
        return "no blank after a closing quote";
    }
    return std::nullopt;
}

}  // namespace

std::variant<Words, ScriptError> splitLine(std::string_view line) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    Words words;
    while (true) {
        while (!line.empty() && isBlank(line.front())) {
            line.remove_prefix(1);
        }
        if (line.empty() || (words.empty() && line.front() == '#')) {
            return words;
        }
        Word word;
        if (line.front() == '"' || line.front() == '\'') {
            word.quoted = true;
            if (const std::optional<std::string> error = takeQuoted(line, word.text)) {
                return ScriptError{*error};
            }
        } else {
            while (!line.empty() && !isBlank(line.front())) {
                word.text += line.front();
                line.remove_prefix(1);
            }
        }
        words.push_back(std::move(word));
    }
}

std::optional<long long> integerFromWord(const std::string& text) {
    long long number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

std::optional<double> numberFromWord(const std::string& text) {
    if (text == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace kpx::runner
