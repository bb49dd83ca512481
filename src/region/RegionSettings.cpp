#include "region/RegionSettings.h"

#include "region/TimeZone.h"

#include <algorithm>
#include <cstdlib>

namespace kpx {

namespace {

/// The names between colons; empty ones are left out. From "C" on nothing is to be translated.
std::vector<std::string> languagesOfList(std::string_view list) {
    std::vector<std::string> languages;
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(':'), list.size());
        const std::string_view language = list.substr(0, length);
        if (!language.empty()) {
            languages.emplace_back(namesNoLanguage(language) ? "en" : language);
        }
        if (!language.empty() && namesNoLanguage(language)) {
            break;
        }
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return languages;
}

}  // namespace

std::optional<std::string> variableOfProcess(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

bool namesNoLanguage(std::string_view localeName) {
    const std::string_view base = localeName.substr(0, localeName.find_first_of(".@"));
    return base.empty() || base == "C" || base == "POSIX" || base == "en_US_POSIX";
}

RegionSettings regionSettings(const VariableLookup& variable) {
    const auto localeOf = [&](const char* category) {
        for (const char* name : {"LC_ALL", category, "LANG"}) {
            if (std::string value = variable(name).value_or(""); !value.empty()) {
                return value;
            }
        }
        return std::string();
    };
    RegionSettings settings{.dates = localeOf("LC_TIME"),
                            .numbers = localeOf("LC_NUMERIC"),
                            .money = localeOf("LC_MONETARY"),
                            .order = localeOf("LC_COLLATE"),
                            .languages = {},
                            .timeZone = variable("TZ").value_or(std::string(systemZoneFile)),
                            .zoneFolder = variable("TZDIR").value_or("")};
    if (settings.zoneFolder.empty()) {
        settings.zoneFolder = systemZoneFolder;
    }
    const std::string messages = localeOf("LC_MESSAGES");
    if (!namesNoLanguage(messages)) {
        settings.languages = languagesOfList(variable("LANGUAGE").value_or(""));
    }
    if (settings.languages.empty()) {
        settings.languages.push_back(messages);
    }
    return settings;
}

}  // namespace kpx
