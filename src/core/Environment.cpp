#include "core/Environment.h"

#include "core/RegionServices.h"

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

icu::Locale localeFromName(std::string_view name) {
    const std::size_t modifierMark = name.find('@');
    const std::string_view modifier =
        modifierMark == std::string_view::npos ? std::string_view() : name.substr(modifierMark + 1);
    std::string base(name.substr(0, std::min(name.find('.'), modifierMark)));
    if (base.empty() || base == "C" || base == "POSIX" || base == "en_US_POSIX") {
        return icu::Locale::getUS();
    }
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
    return usable ? locale : icu::Locale::getUS();
}

std::unique_ptr<icu::TimeZone> timeZoneFromName(std::string_view name) {
    if (name.starts_with(':')) {  // TZ may mark a zone of the database so
        name.remove_prefix(1);
    }
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    if (*zone == icu::TimeZone::getUnknown()) {
        zone.reset(icu::TimeZone::createTimeZone("UTC"));
    }
    return zone;
}

}  // namespace

Region::Region(std::string_view localeName, std::string_view timeZone)
    : m_services(std::make_shared<RegionServices>(localeName, timeZone)) {}

const std::string& Region::localeName() const { return m_services->localeName; }
std::string Region::languageCode() const { return m_services->locale.getLanguage(); }

RegionServices::RegionServices(std::string_view localeNameOrPosixName, std::string_view timeZoneName)
    : locale(localeFromName(localeNameOrPosixName)),
      localeName(locale.getName()),
      timeZone(timeZoneFromName(timeZoneName)) {}

}  // namespace kpx
