#include "core/LocalizedStrings.h"

#include "core/PropertyList.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

namespace kpx {

namespace {

struct Placeholder {
    std::size_t length = 0;
    std::size_t number = 0;  ///< counted from 1; 0 takes the next argument
};

std::optional<Placeholder> leadingPlaceholder(std::string_view text) {
    if (!text.starts_with('%')) {
        return std::nullopt;
    }
    Placeholder placeholder{1, 0};
    std::size_t number = 0;
    const char* const begin = text.data() + 1;
    const auto [end, error] = std::from_chars(begin, text.data() + text.size(), number);
    if (error == std::errc{} && number > 0 && end != text.data() + text.size() && *end == '$') {
        placeholder = {static_cast<std::size_t>(end - text.data()) + 1, number};
    }
    const std::string_view kind = text.substr(placeholder.length);
    placeholder.length += kind.starts_with("ld") ? 2 : 1;
    return kind.starts_with("ld") || kind.starts_with('@') || kind.starts_with('d') ? std::optional(placeholder)
                                                                                    : std::nullopt;
}

}  // namespace

LocalizedStrings::LocalizedStrings(const std::filesystem::path& resources, std::string_view languageCode) {
    std::ifstream file(resources / (std::string(languageCode) + ".lproj") / "Localizable.strings", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const auto root = bytes.empty() ? std::nullopt : readPropertyList(bytes);
    const Record* table = root ? root->as<Record>() : nullptr;
    if (!table) {
        return;
    }
    for (const auto& [key, value] : *table) {
        if (const Text* text = value.as<Text>(); text && !text->empty()) {
            m_table.emplace(key.string(), text->string());
        }
    }
}

std::string LocalizedStrings::operator()(std::string_view key) const {
    const auto entry = m_table.find(key);
    return entry == m_table.end() ? std::string(key) : entry->second;
}

std::string formatted(std::string_view format, std::initializer_list<std::string_view> arguments) {
    std::string result;
    std::size_t next = 0;
    for (std::size_t position = 0; position < format.size();) {
        const std::string_view rest = format.substr(position);
        if (rest.starts_with("%%")) {
            result += '%';
            position += 2;
            continue;
        }
        const std::optional<Placeholder> placeholder = leadingPlaceholder(rest);
        if (!placeholder) {
            result += rest.front();
            ++position;
            continue;
        }
        const std::size_t index = placeholder->number > 0 ? placeholder->number - 1 : next++;
        if (index < arguments.size()) {
            result += arguments.begin()[index];
        }
        position += placeholder->length;
    }
    return result;
}

}  // namespace kpx
