#include "region/LocalizedStrings.h"

#include "files/WholeFile.h"
#include "plist/PropertyList.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

namespace kpx {

namespace {

constexpr std::size_t longestTable = std::size_t{16} << 20;
constexpr char tableName[] = "Localizable.strings";
constexpr char folderEnding[] = ".lproj";
constexpr char languageOfKeys[] = "en";

std::string_view keyOf(const std::pair<Text, Text>& entry) { return entry.first.view(); }

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

std::filesystem::path folderOfLanguage(const std::filesystem::path& resources, std::string_view languageCode) {
    return resources / (std::string(languageCode) + folderEnding);
}

}  // namespace

LocalizedStrings::LocalizedStrings(const std::filesystem::path& resources, std::string_view languageCode) {
    const WholeFile file = readWholeFile(folderOfLanguage(resources, languageCode) / tableName, longestTable);
    const auto root = readPropertyList(file.bytes);
    const Record* table = root ? root->as<Record>() : nullptr;
    if (!table) {
        return;
    }
    Table texts;
    for (const auto& [key, value] : *table) {
        if (const Text* text = value.as<Text>(); text && !text->empty()) {
            texts.emplace_back(key, *text);
        }
    }
    std::ranges::sort(texts, {}, keyOf);
    if (!texts.empty()) {
        m_table = std::make_shared<const Table>(std::move(texts));
    }
}

std::string LocalizedStrings::operator()(std::string_view key) const {
    return translation(key).value_or(std::string(key));
}

std::optional<std::string> LocalizedStrings::translation(std::string_view key) const {
    if (!m_table) {
        return std::nullopt;
    }
    const auto entry = std::ranges::lower_bound(*m_table, key, {}, keyOf);
    const bool isThere = entry != m_table->end() && keyOf(*entry) == key;
    return isThere ? std::optional(entry->second.string()) : std::nullopt;
}

std::string LocalizedStrings::sentence(std::string_view whole, std::initializer_list<std::string_view> arguments,
                                       std::string glued) const {
    const auto translated = translation(whole);
    return translated ? formatted(*translated, arguments) : std::move(glued);
}

std::string languageOfTexts(const std::filesystem::path& resources, const std::vector<std::string>& languageCodes) {
    std::error_code ignored;
    const auto hasTable = [&](const std::string& code) {
        return code == languageOfKeys ||
               std::filesystem::is_regular_file(folderOfLanguage(resources, code) / tableName, ignored);
    };
    const auto hasFolder = [&](const std::string& code) {
        return std::filesystem::is_directory(folderOfLanguage(resources, code), ignored);
    };
    auto best = std::ranges::find_if(languageCodes, hasTable);
    if (best == languageCodes.end()) {
        best = std::ranges::find_if(languageCodes, hasFolder);
    }
    return best == languageCodes.end() ? languageCodes.front() : *best;
}

LocalizedStrings textsFor(const std::filesystem::path& resources, const std::vector<std::string>& languageCodes) {
    return {resources, languageOfTexts(resources, languageCodes)};
}

std::map<std::string, std::string> translationsOf(std::string_view text, const std::filesystem::path& resources) {
    std::map<std::string, std::string> translations;
    std::error_code ended;
    for (std::filesystem::directory_iterator entry(resources, ended), end; !ended && entry != end;
         entry.increment(ended)) {
        const std::string code = entry->path().stem().string();
        if (entry->path().extension() == folderEnding) {
            if (auto translation = LocalizedStrings(resources, code).translation(text)) {
                translations.emplace(code, *std::move(translation));
            }
        }
    }
    return translations;
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
