#include "core/LocalizedStrings.h"

#include "core/PropertyList.h"

#include <fstream>
#include <iterator>

namespace kpx {

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
    auto argument = arguments.begin();
    for (std::size_t position = 0; position < format.size();) {
        const std::string_view rest = format.substr(position);
        if (rest.starts_with("%%")) {
            result += '%';
            position += 2;
            continue;
        }
        const std::size_t length = rest.starts_with("%ld")                            ? 3
                                   : rest.starts_with("%@") || rest.starts_with("%d") ? 2
                                                                                      : 0;
        if (length == 0) {
            result += rest.front();
            ++position;
            continue;
        }
        if (argument != arguments.end()) {
            result += *argument++;
        }
        position += length;
    }
    return result;
}

}  // namespace kpx
