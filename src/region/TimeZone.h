#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace kpx {

/// What the clocks of a place show, and when. Instants are counted in seconds from 1970-01-01T00:00:00Z; a
/// local time is counted the same way on the place's own clocks.
class TimeZone {
public:
    virtual ~TimeZone() = default;

    /// By how many seconds the clocks are ahead of universal time.
    virtual std::int64_t offsetAt(std::int64_t instant) const = 0;

    /// When the clocks show a local time.
    struct Meaning {
        /// The first of two instants where the time comes twice. For a time that a change of the clocks leaves
        /// out, as much later as they jump: 02:30 is 03:30.
        std::int64_t instant = 0;
        /// Only for a time left out: the instant of the change, the next moment there is.
        std::optional<std::int64_t> change;
    };
    virtual Meaning meaningOf(std::int64_t local) const = 0;
};

inline constexpr std::string_view systemZoneFolder = "/usr/share/zoneinfo";
/// The zone of the machine, as a file; a link into the folder on most of them.
inline constexpr std::string_view systemZoneFile = "/etc/localtime";

/// The zone that a value of the variable TZ means, as the C library reads it. The rules of places come from the
/// system's own files, so that the program and the desktop always agree.
///
/// | name                              | zone                                               |
/// |-----------------------------------|----------------------------------------------------|
/// | "Europe/Berlin", ":Europe/Berlin" | the file of that name in the folder                |
/// | "/etc/localtime"                  | that file                                          |
/// | "CET-1CEST,M3.5.0,M10.5.0/3"      | the rule itself                                    |
/// | "", anything else                 | universal time                                     |
std::shared_ptr<const TimeZone> timeZoneFromName(std::string_view name, std::string_view folder = systemZoneFolder);

}  // namespace kpx
