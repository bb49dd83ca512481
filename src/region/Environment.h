#pragma once

#include "region/RegionSettings.h"
#include "values/Date.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

struct RegionServices;

/// Where the user is: how dates and numbers are written, how names are ordered, and the time zone, with the
/// calendars, formatters and collators made from them. Copies share these; they are made when first needed.
/// For use on one thread.
class Region {
public:
    /// Everything as the locale has it, its own calendar, digits and decimal sign included: what the rules are
    /// tested with. `localeName` is a POSIX or ICU name ("de_DE.UTF-8", "th_TH"); "", "C", "POSIX" and one that
    /// names no language count as en_US. `timeZone` is any value of TZ.
    Region(std::string_view localeName, std::string_view timeZone);

    /// The one region of the program, made alike for the window and for its tests. Whatever the settings say, dates
    /// are those of the Gregorian calendar, digits are Latin and the decimal sign is ".": the files and every
    /// sum know only these, and a sign on the screen that they do not know would cost cents.
    ///
    /// | own data of the region                             | grouping sign here          |
    /// |----------------------------------------------------|-----------------------------|
    /// | "1,234.50"                                         | the same                    |
    /// | "1.234,50", or any "." or "," beside another decimal sign | the narrow no-break space |
    /// | "1 234,50"                                         | the same                    |
    explicit Region(const RegionSettings& settings);

    /// How dates are written; canonical, as "de_DE".
    const std::string& localeName() const;
    /// The user's languages, best first; lower case, as "de". There is at least one.
    const std::vector<std::string>& languageCodes() const;
    /// Whether people of the region are used to a comma before the cents, whatever the program writes.
    bool hasDecimalComma() const;

    RegionServices& services() const { return *m_services; }

private:
    std::shared_ptr<RegionServices> m_services;
};

/// The program's region, of surroundings that may change while it runs: a traveller's clock, a new zone.
class CurrentRegion {
public:
    explicit CurrentRegion(VariableLookup variable) : m_variable(std::move(variable)) {}

    /// The same one until something changes: its calendars and formatters take long to make.
    const Region& region();

private:
    VariableLookup m_variable;
    RegionSettings m_settings;
    std::string m_systemZone;
    std::unique_ptr<Region> m_region;
};

/// What a rule may know of the world around it: the current instant and the user's region.
struct Environment {
    Date now;
    Region region;
};

}  // namespace kpx
