#pragma once

#include <compare>
#include <cstdint>

namespace kpx {

/// An absolute instant, independent of any calendar or time zone. Calendar meaning comes only
/// through the date utilities (DateUtilities.h).
///
/// Counted in seconds since 2001-01-01T00:00:00Z, as property lists count, so that a date found in a
/// file is written back bit for bit.
struct Date {
    double secondsSinceReference = 0;

    /// Seconds from 1970-01-01T00:00:00Z to the reference instant.
    static constexpr double referenceSince1970 = 978307200.0;

    static constexpr Date fromSecondsSince1970(double seconds) { return {seconds - referenceSince1970}; }
    constexpr double secondsSince1970() const { return secondsSinceReference + referenceSince1970; }

    /// A plain time interval: across a clock change the wall time moves by the hour of the change.
    constexpr Date addingSeconds(double seconds) const { return {secondsSinceReference + seconds}; }
    /// Positive when this date lies after `other`.
    constexpr double secondsSince(Date other) const { return secondsSinceReference - other.secondsSinceReference; }

    constexpr auto operator<=>(const Date&) const = default;
};

}  // namespace kpx
