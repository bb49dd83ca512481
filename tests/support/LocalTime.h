#pragma once

#include "region/TimeZone.h"
#include "values/Date.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kpx::test {

/// Wall-clock times of one time zone as scripts and transcripts write them, always in the Gregorian
/// calendar, whatever calendar the locale under test uses. Apart from the date utilities on purpose:
/// a transcript must not be written by the very code it checks.
class LocalTime {
public:
    explicit LocalTime(std::shared_ptr<const TimeZone> zone) : m_zone(std::move(zone)) {}

    /// "2024-03-05" (00:00:00, or the first moment that day has) or "2024-03-05T08:30:00". Null for
    /// anything else, such as a 30 February.
    std::optional<Date> parse(std::string_view text) const;
    /// "2024-03-05T08:30:00"; a fraction of a second is cut off.
    std::string format(Date date) const;
    /// The same time of day that many days later.
    Date addingDays(Date date, int days) const;
    /// That day at the other date's time of day.
    Date dayOfWithTimeOf(Date day, Date time) const;

private:
    std::chrono::local_seconds localOf(Date date) const;
    Date dateOf(std::chrono::local_seconds local) const;

    std::shared_ptr<const TimeZone> m_zone;
};

}  // namespace kpx::test
