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

bool isCountryInUse(std::string_view code) {
    for (const char* const* country = icu::Locale::getISOCountries(); *country; ++country) {
        if (code == *country) {
            return true;
        }
    }
    return code.empty();
}

/// Codes out of use in today's form: "iw_IL" is "he_IL", "en_UK" is "en_GB". For names that are none of the commonest
/// ICU reads its tables, a hundredth of the window's start; its lists of what is in use are at hand.
icu::Locale localeWithTodaysCodes(const std::string& name) {
    const icu::Locale asNamed(name.c_str());
    const std::string_view language = asNamed.getLanguage();
    const bool isInUse = language == icu::Locale::createCanonical(asNamed.getLanguage()).getName() &&
                         isCountryInUse(asNamed.getCountry());
    const bool isPlain = *asNamed.getScript() == '\0' && *asNamed.getVariant() == '\0';
    return isInUse && isPlain ? asNamed : icu::Locale::createCanonical(name.c_str());
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
    const icu::Locale locale = localeWithTodaysCodes(base);
    const std::string_view language = locale.getLanguage();
    const bool usable = !locale.isBogus() && !language.empty() &&
                        std::ranges::all_of(language, [](char c) { return c >= 'a' && c <= 'z'; });
    return usable ? std::optional(locale) : std::nullopt;
}

}  // namespace kpx
