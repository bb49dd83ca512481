#include "plist/OldStylePropertyList.h"

#include "plist/OldStylePropertyListText.h"
#include "plist/PropertyListFields.h"
#include "plist/PropertyListLimits.h"
#include "plist/PropertyListUnicode.h"

namespace kpx {
namespace {

constexpr char quotes[] = "\"'";

bool isWordCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("_$+/:.-").find(character) != std::string_view::npos;
}

/// The value of a hexadecimal digit, -1 for any other character.
int hexadecimalDigit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    std::optional<Value> read() {
        std::optional<Value> root = skipBlanks() && !m_rest.empty() ? readRoot() : std::nullopt;
        return root && skipBlanks() && m_rest.empty() ? root : std::nullopt;
    }

private:
    /// Takes blanks and comments off; false for a comment without an end.
    bool skipBlanks() {
        while (true) {
            const std::size_t first = m_rest.find_first_not_of(" \t\n\v\f\r");
            m_rest.remove_prefix(std::min(first, m_rest.size()));
            std::size_t end = 0;
            if (m_rest.starts_with("//")) {
                end = std::min(m_rest.find_first_of("\r\n"), m_rest.size());
            } else if (m_rest.starts_with("/*")) {
                end = m_rest.find("*/", 2);
                if (end == std::string_view::npos) {
                    return false;
                }
                end += 2;
            } else {
                return true;
            }
            m_rest.remove_prefix(end);
        }
    }

    /// Takes the character off when it stands next, after blanks.
    bool take(char character) {
        if (!skipBlanks() || !m_rest.starts_with(character)) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    bool standsNext(char character) { return skipBlanks() && m_rest.starts_with(character); }

    std::optional<Value> readRoot() {
        const std::string_view whole = m_rest;
        std::optional<Value> root = readValue(1);
        if (!root || !root->as<Text>()) {
            return root;
        }
        if (standsNext('=') || standsNext(';')) {
            m_rest = whole;
            return readFields();
        }
        return isWordCharacter(whole.front()) ? std::nullopt : root;
    }

    /// `depth` is how many containers the value would stand in, itself included.
    std::optional<Value> readValue(std::uint32_t depth) {
        if (!skipBlanks() || m_rest.empty()) {
            return std::nullopt;
        }
        switch (m_rest.front()) {
            case '(':
                return depth <= maximumNesting ? readArray(depth) : std::nullopt;
            case '{':
                return depth <= maximumNesting ? readDictionary(depth) : std::nullopt;
            case '<':
                return readData();
            default: {
                std::optional<Text> text = readText();
                return text ? std::optional(Value(*std::move(text))) : std::nullopt;
            }
        }
    }

    std::optional<Value> readArray(std::uint32_t depth) {
        m_rest.remove_prefix(1);
        std::vector<Value> values;
        while (!take(')')) {
            std::optional<Value> value = readValue(depth + 1);
            if (!value || !(take(',') || standsNext(')'))) {
                return std::nullopt;
            }
            values.push_back(*std::move(value));
        }
        return Value(Array(std::move(values)));
    }

    std::optional<Value> readDictionary(std::uint32_t depth) {
        m_rest.remove_prefix(1);
        std::optional<Value> dictionary = readFields(depth);
        return dictionary && take('}') ? dictionary : std::nullopt;
    }

    /// Fields up to a closing brace or the end, whichever the caller then finds missing.
    std::optional<Value> readFields(std::uint32_t depth = 1) {
        Record fields;
        while (skipBlanks() && !m_rest.empty() && m_rest.front() != '}') {
            const std::optional<Text> key = readText();
            if (!key) {
                return std::nullopt;
            }
            std::optional<Value> value = take('=') ? readValue(depth + 1) : Value(*key);
            if (!value || !take(';')) {
                return std::nullopt;
            }
            fields.append(*key, *std::move(value));
        }
        return Value(recordKeepingLastValues(std::move(fields)));
    }

    std::optional<Value> readData() {
        Data::Bytes bytes;
        int pending = -1;
        for (std::size_t index = 1; index < m_rest.size(); ++index) {
            const char character = m_rest[index];
            if (character == '>') {
                m_rest.remove_prefix(index + 1);
                return pending < 0 ? std::optional(Value(Data(std::move(bytes)))) : std::nullopt;
            }
            if (character == ' ' || (character >= '\t' && character <= '\r')) {
                continue;
            }
            const int digit = hexadecimalDigit(character);
            if (digit < 0) {
                return std::nullopt;
            }
            if (pending < 0) {
                pending = digit;
            } else {
                bytes.push_back(static_cast<std::uint8_t>(pending << 4 | digit));
                pending = -1;
            }
        }
        return std::nullopt;
    }

    std::optional<Text> readText() {
        const char first = m_rest.front();
        if (first == quotes[0] || first == quotes[1]) {
            return readQuoted(first);
        }
        std::size_t length = 0;
        while (length < m_rest.size() && isWordCharacter(m_rest[length])) {
            ++length;
        }
        if (length == 0) {
            return std::nullopt;
        }
        const std::string_view word = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return m_pool.shared(word);
    }

    std::optional<Text> readQuoted(char quote) {
        std::size_t end = 1;
        bool hasEscape = false;
        while (end < m_rest.size() && m_rest[end] != quote) {
            const bool isEscape = m_rest[end] == '\\';
            hasEscape |= isEscape;
            end += isEscape ? 2 : 1;
        }
        if (end >= m_rest.size()) {
            return std::nullopt;
        }
        const std::string_view quoted = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        if (!hasEscape) {
            return m_pool.shared(quoted);
        }
        const std::optional<std::string> text = unescapedOldStyleText(quoted);
        return text ? std::optional(m_pool.shared(*text)) : std::nullopt;
    }

    std::string_view m_rest;
    TextPool m_pool;
};

}  // namespace

std::optional<Value> readOldStylePropertyList(std::string_view text) {
    return isValidUtf8(text) ? Reader(text).read() : std::nullopt;
}

}  // namespace kpx
