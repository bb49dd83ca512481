#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// The value of a variable of the surroundings; null when it is not set.
using VariableLookup = std::function<std::optional<std::string>(const std::string& name)>;

/// Looks in the surroundings of this very process, as they are at the moment: for programs, not for rules.
std::optional<std::string> variableOfProcess(const std::string& name);

/// What the surroundings say of where the user is: names of locales, POSIX or ICU, of languages and of a zone.
struct RegionSettings {
    std::string dates;                   ///< how dates are written
    std::string numbers;                 ///< how numbers are grouped
    std::string money;                   ///< which currency sign amounts bear
    std::string order;                   ///< how names are ordered
    std::vector<std::string> languages;  ///< of texts, best first; locale names, at least one
    std::string timeZone;                ///< as for timeZoneFromName()
    std::string zoneFolder;

    bool operator==(const RegionSettings&) const = default;
};

/// Each from `LC_ALL`, else its own variable, else `LANG`; one that is set to nothing counts as not set.
///
/// | what      | variable      |
/// |-----------|---------------|
/// | dates     | `LC_TIME`     |
/// | numbers   | `LC_NUMERIC`  |
/// | money     | `LC_MONETARY` |
/// | order     | `LC_COLLATE`  |
/// | languages | `LC_MESSAGES`; where that names one, the list `LANGUAGE` goes before all, as in every program |
/// | time zone | `TZ`; the machine's own where it is not set, universal time where it is set to nothing |
RegionSettings regionSettings(const VariableLookup& variable);

/// Whether the name of a locale is "", "C" or "POSIX", with or without an encoding.
bool namesNoLanguage(std::string_view localeName);

}  // namespace kpx
