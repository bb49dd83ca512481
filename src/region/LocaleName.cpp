#include "region/LocaleName.h"

#include "region/RegionSettings.h"

#include <algorithm>

namespace kpx {

namespace {

/// A POSIX modifier that names a script, as in "sr_RS@latin".
std::string_view scriptOfModifier(std::string_view modifier) {
    if (modifier == "latin") {
        return "Latn";
    }
    return modifier == "cyrillic" ? "Cyrl" : "";
}

}  // namespace

std::optional<icu::Locale> localeFromName(std::string_view name) {
    if (namesNoLanguage(name)) {
        return icu::Locale::getUS();
    }
    const std::size_t modifierMark = name.find('@');
    const std::string_view modifier =
        modifierMark == std::string_view::npos ? std::string_view() : name.substr(modifierMark + 1);
    std::string base(name.substr(0, std::min(name.find('.'), modifierMark)));
    const std::string_view script = scriptOfModifier(modifier);
    if (!script.empty()) {
        const std::size_t languageEnd = std::min(base.find('_'), base.size());
        base.insert(languageEnd, "_" + std::string(script));
    } else if (modifier.find('=') != std::string_view::npos) {
        base += "@" + std::string(modifier);
    }
    const icu::Locale locale = icu::Locale::createCanonical(base.c_str());
    const std::string_view language = locale.getLanguage();
    const bool usable = !locale.isBogus() && !language.empty() &&
                        std::ranges::all_of(language, [](char c) { return c >= 'a' && c <= 'z'; });
    return usable ? std::optional(locale) : std::nullopt;
}

}  // namespace kpx
