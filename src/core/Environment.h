#pragma once

#include "core/Date.h"

#include <memory>
#include <string>
#include <string_view>

namespace kpx {

struct RegionServices;

/// Where the user is: locale and time zone, with the calendars, formatters and collators made from
/// them. Copies share these; they are made when first needed. For use on one thread.
class Region {
public:
    /// `localeName` is a POSIX or ICU name ("de_DE.UTF-8", "th_TH"); "", "C" and "POSIX", with or without
    /// an encoding, count as en_US. `timeZone` is an Olson name; an empty or unknown one counts as UTC.
    Region(std::string_view localeName, std::string_view timeZone);

    /// Canonical, as "de_DE".
    const std::string& localeName() const;
    /// Lower case, as "de".
    std::string languageCode() const;

    RegionServices& services() const { return *m_services; }

private:
    std::shared_ptr<RegionServices> m_services;
};

/// What a rule may know of the world around it: the current instant and the user's region.
struct Environment {
    Date now;
    Region region;
};

}  // namespace kpx
