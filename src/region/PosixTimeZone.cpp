#include "region/PosixTimeZone.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>

namespace kpx {

namespace {

constexpr std::int64_t secondsPerHour = 3600;
constexpr std::int64_t secondsPerDay = 86400;
/// Twenty thousand years: the library's calendar ends at the year 32767.
constexpr std::int64_t furthest = 7300000 * secondsPerDay;

/// The day of every year on which the clocks change, and when on that day.
struct ChangeRule {
    enum class Kind { WeekdayOfMonth, DayWithoutLeapDay, DayWithLeapDay };
    Kind kind = Kind::WeekdayOfMonth;
    unsigned month = 0;
    unsigned week = 0;     ///< 5 is the last
    unsigned weekday = 0;  ///< Sunday is 0
    int day = 0;           ///< of the year
    std::int64_t secondOfDay = 2 * secondsPerHour;
};

struct ZoneRule {
    std::int64_t standardOffset = 0;
    std::int64_t summerOffset = 0;
    bool hasSummer = false;
    ChangeRule toSummer;
    ChangeRule toStandard;
};

std::int64_t localSecondOf(const ChangeRule& rule, std::chrono::year year) {
    using namespace std::chrono;
    const sys_days january = year / 1 / 1;
    sys_days day = january;
    switch (rule.kind) {
        case ChangeRule::Kind::WeekdayOfMonth: {
            const year_month month = year / std::chrono::month(rule.month);
            const weekday weekday(rule.weekday);
            day = rule.week == 5 ? sys_days(month / weekday[last]) : sys_days(month / weekday[rule.week]);
            break;
        }
        case ChangeRule::Kind::DayWithoutLeapDay: {
            constexpr int firstOfMarch = 60;
            day = january + days(rule.day - 1 + (year.is_leap() && rule.day >= firstOfMarch ? 1 : 0));
            break;
        }
        case ChangeRule::Kind::DayWithLeapDay:
            day = january + days(rule.day);
            break;
    }
    return day.time_since_epoch().count() * secondsPerDay + rule.secondOfDay;
}

/// Reads a rule from its beginning to its end.
class RuleReader {
public:
    explicit RuleReader(std::string_view text) : m_rest(text) {}

    std::optional<ZoneRule> read() {
        ZoneRule rule;
        const bool hasStandard = takeName() && takeOffset(rule.standardOffset);
        if (!hasStandard || m_rest.empty()) {
            return hasStandard ? std::optional(rule) : std::nullopt;
        }
        rule.hasSummer = takeName();
        rule.summerOffset = rule.standardOffset + secondsPerHour;
        const bool ownOffset = !m_rest.empty() && m_rest.front() != ',';
        if (!rule.hasSummer || (ownOffset && !takeOffset(rule.summerOffset))) {
            return std::nullopt;
        }
        if (m_rest.empty()) {
            m_rest = ",M3.2.0,M11.1.0";
        }
        const bool whole = takeChange(rule.toSummer) && takeChange(rule.toStandard) && m_rest.empty();
        return whole ? std::optional(rule) : std::nullopt;
    }

private:
    static bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    bool take(char wanted) {
        if (!m_rest.starts_with(wanted)) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    bool takeName() {
        const bool quoted = take('<');
        const auto end = std::ranges::find_if_not(
            m_rest, [quoted](char c) { return isLetter(c) || (quoted && (isDigit(c) || c == '+' || c == '-')); });
        const auto length = static_cast<std::size_t>(end - m_rest.begin());
        m_rest.remove_prefix(length);
        return length >= 3 && (!quoted || take('>'));
    }

    std::optional<int> takeNumber(int smallest, int largest) {
        int number = 0;
        const char* const end = m_rest.data() + m_rest.size();
        const auto result = std::from_chars(m_rest.data(), end, number);
        if (m_rest.empty() || !isDigit(m_rest.front()) || result.ec != std::errc() || number < smallest ||
            number > largest) {
            return std::nullopt;
        }
        m_rest.remove_prefix(static_cast<std::size_t>(result.ptr - m_rest.data()));
        return number;
    }

    /// "5", "-3:30", "+12:00:59" in seconds.
    std::optional<std::int64_t> takeTime(int mostHours) {
        const bool negative = take('-');
        if (!negative) {
            take('+');
        }
        std::optional<int> part = takeNumber(0, mostHours);
        std::int64_t seconds = part.value_or(0) * secondsPerHour;
        for (std::int64_t unit = 60; part && unit > 0 && take(':'); unit /= 60) {
            part = takeNumber(0, 59);
            seconds += part.value_or(0) * unit;
        }
        return part ? std::optional(negative ? -seconds : seconds) : std::nullopt;
    }

    /// Written as what is missing to universal time: west is positive.
    bool takeOffset(std::int64_t& offset) {
        const std::optional<std::int64_t> time = takeTime(24);
        offset = -time.value_or(0);
        return time.has_value();
    }

    bool takeDay(ChangeRule& change) {
        if (take('M')) {
            const std::optional<int> month = takeNumber(1, 12);
            const std::optional<int> week = month && take('.') ? takeNumber(1, 5) : std::nullopt;
            const std::optional<int> weekday = week && take('.') ? takeNumber(0, 6) : std::nullopt;
            change.month = static_cast<unsigned>(month.value_or(0));
            change.week = static_cast<unsigned>(week.value_or(0));
            change.weekday = static_cast<unsigned>(weekday.value_or(0));
            return weekday.has_value();
        }
        const bool withoutLeapDay = take('J');
        change.kind = withoutLeapDay ? ChangeRule::Kind::DayWithoutLeapDay : ChangeRule::Kind::DayWithLeapDay;
        const std::optional<int> day = withoutLeapDay ? takeNumber(1, 365) : takeNumber(0, 365);
        change.day = day.value_or(0);
        return day.has_value();
    }

    bool takeChange(ChangeRule& change) {
        if (!take(',') || !takeDay(change)) {
            return false;
        }
        if (!take('/')) {
            return true;
        }
        const std::optional<std::int64_t> time = takeTime(167);
        change.secondOfDay = time.value_or(0);
        return time.has_value();
    }

    std::string_view m_rest;
};

class PosixTimeZone : public TimeZone {
public:
    explicit PosixTimeZone(const ZoneRule& rule) : m_rule(rule) {}

    std::int64_t offsetAt(std::int64_t instant) const override {
        if (!m_rule.hasSummer) {
            return m_rule.standardOffset;
        }
        using namespace std::chrono;
        const std::int64_t countable = std::clamp(instant, -furthest, furthest);
        const year_month_day day(floor<days>(sys_seconds(seconds(countable + m_rule.standardOffset))));
        // A change may lie up to a week outside its year, and a summer may end in the year after.
        const bool summer = isInSummerOf(day.year() - years(1), countable) || isInSummerOf(day.year(), countable) ||
                            isInSummerOf(day.year() + years(1), countable);
        return summer ? m_rule.summerOffset : m_rule.standardOffset;
    }

    Meaning meaningOf(std::int64_t local) const override {
        // Far enough that the change, if there is one near, lies between.
        const std::int64_t before = offsetAt(local - 2 * secondsPerDay);
        const std::int64_t after = offsetAt(local + 2 * secondsPerDay);
        const std::int64_t first = local - before;
        if (offsetAt(first) == before) {
            return {first, std::nullopt};
        }
        std::int64_t late = first;
        std::int64_t early = local - after;
        if (offsetAt(early) == after) {
            return {early, std::nullopt};
        }
        while (late - early > 1) {
            const std::int64_t middle = early + (late - early) / 2;
            (offsetAt(middle) == after ? late : early) = middle;
        }
        return {first, late};
    }

private:
    std::int64_t beginOfSummer(std::chrono::year year) const {
        return localSecondOf(m_rule.toSummer, year) - m_rule.standardOffset;
    }
    std::int64_t endOfSummer(std::chrono::year year) const {
        return localSecondOf(m_rule.toStandard, year) - m_rule.summerOffset;
    }
    /// Of the summer that begins in the year.
    bool isInSummerOf(std::chrono::year year, std::int64_t instant) const {
        const std::int64_t begin = beginOfSummer(year);
        const std::int64_t end = endOfSummer(year);
        return begin <= instant && instant < (begin < end ? end : endOfSummer(year + std::chrono::years(1)));
    }

    ZoneRule m_rule;
};

}  // namespace

std::shared_ptr<const TimeZone> posixTimeZone(std::string_view rule) {
    const std::optional<ZoneRule> read = RuleReader(rule).read();
    return read ? std::make_shared<PosixTimeZone>(*read) : nullptr;
}

}  // namespace kpx
