#include "region/TimeZone.h"

#include "region/DateUtilities.h"
#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace kpx {
namespace {

std::int64_t secondsOf(Date date) { return static_cast<std::int64_t>(date.secondsSince1970()); }

TEST(TimeZone, ReadsEveryFormOfTheVariable) {
    struct Row {
        std::string name;
        std::int64_t winterOffset;
        std::int64_t summerOffset;
    };
    constexpr std::int64_t hour = 3600;
    const std::vector<Row> rows = {
        {"Europe/Berlin", hour, 2 * hour},
        {":Europe/Berlin", hour, 2 * hour},
        {"/usr/share/zoneinfo/Europe/Berlin", hour, 2 * hour},
        {":/usr/share/zoneinfo/Asia/Kathmandu", 20700, 20700},
        {"EST5EDT", -5 * hour, -4 * hour},
        {"CET-1CEST,M3.5.0,M10.5.0/3", hour, 2 * hour},
        {":CET-1CEST,M3.5.0,M10.5.0/3", hour, 2 * hour},
        {"XYZ5ABC", -5 * hour, -4 * hour},
        {"UTC+3", -3 * hour, -3 * hour},
        {"<+0330>-3:30", 12600, 12600},
        {"abc-1:02:03", 3723, 3723},
        // What is none of these is universal time.
        {"", 0, 0},
        {":", 0, 0},
        {"Nowhere/Land", 0, 0},
        {"Europe", 0, 0},
        {"/", 0, 0},
        {"/dev/null", 0, 0},
        {"/etc/passwd", 0, 0},
        {"../../../etc/passwd", 0, 0},
        {"tzdata.zi", 0, 0},
        {"AB-1", 0, 0},
        {"ABC", 0, 0},
        {"ABC-", 0, 0},
        {"ABC25", 0, 0},
        {"<AB+1>", 0, 0},
        {"<+03-3", 0, 0},
        {"CET-1CEST,M3.5.0", 0, 0},
        {"CET-1CEST,M13.5.0,M10.5.0", 0, 0},
        {"CET-1CEST,M3.6.0,M10.5.0", 0, 0},
        {"CET-1CEST,M3.5.7,M10.5.0", 0, 0},
        {"CET-1CEST,J0,J300", 0, 0},
        {"CET-1CEST,M3.5.0/168,M10.5.0", 0, 0},
        {"CET-1CEST,M3.5.0,M10.5.0x", 0, 0},
        {std::string(100000, 'A'), 0, 0},
        {std::string("Europe/Berlin\0", 14), 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name.substr(0, 60));
        const auto zone = timeZoneFromName(row.name);
        EXPECT_EQ(zone->offsetAt(secondsOf(universal(2024, 1, 15))), row.winterOffset);
        EXPECT_EQ(zone->offsetAt(secondsOf(universal(2024, 7, 15))), row.summerOffset);
    }
}

TEST(TimeZone, LooksInTheFolderItIsGiven) {
    EXPECT_EQ(timeZoneFromName("Berlin", "/usr/share/zoneinfo/Europe")->offsetAt(0), 3600);
    EXPECT_EQ(timeZoneFromName("Europe/Berlin", "/nonexistent")->offsetAt(0), 0);
}

TEST(TimeZone, TellsWhenAClockShowsATimeLeftOutOrTwice) {
    for (const std::string name : {"Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3"}) {
        SCOPED_TRACE(name);
        const auto zone = timeZoneFromName(name);
        const std::int64_t change = secondsOf(universal(2024, 3, 31, 1));
        const TimeZone::Meaning leftOut = zone->meaningOf(secondsOf(universal(2024, 3, 31, 2, 30)));
        EXPECT_EQ(leftOut.instant, change + 1800);
        EXPECT_EQ(leftOut.change, change);
        const TimeZone::Meaning atChange = zone->meaningOf(secondsOf(universal(2024, 3, 31, 3)));
        EXPECT_EQ(atChange.instant, change);
        EXPECT_EQ(atChange.change, std::nullopt);
        const TimeZone::Meaning twice = zone->meaningOf(secondsOf(universal(2024, 10, 27, 2, 30)));
        EXPECT_EQ(twice.instant, secondsOf(universal(2024, 10, 27, 0, 30)));
        EXPECT_EQ(twice.change, std::nullopt);
    }
}

TEST(TimeZone, CountsTheDaysOfARuleWithAndWithoutTheLeapDay) {
    struct Row {
        std::string rule;
        int year;
        Date toSummer;
    };
    const std::vector<Row> rows = {
        {"AAA0BBB,J59/0,J300", 2023, universal(2023, 2, 28)},   {"AAA0BBB,J59/0,J300", 2024, universal(2024, 2, 28)},
        {"AAA0BBB,J60/0,J300", 2023, universal(2023, 3, 1)},    {"AAA0BBB,J60/0,J300", 2024, universal(2024, 3, 1)},
        {"AAA0BBB,59/0,300", 2023, universal(2023, 3, 1)},      {"AAA0BBB,59/0,300", 2024, universal(2024, 2, 29)},
        {"AAA0BBB,M2.5.4/0,300", 2024, universal(2024, 2, 29)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.rule);
        const auto zone = timeZoneFromName(row.rule);
        EXPECT_EQ(zone->offsetAt(secondsOf(row.toSummer) - 1), 0) << row.year;
        EXPECT_EQ(zone->offsetAt(secondsOf(row.toSummer)), 3600) << row.year;
    }
}

TEST(TimeZone, KnowsTheWholeDayThatSamoaLeftOut) {
    const Environment apia = environmentFor("en_US", "Pacific/Apia");
    EXPECT_EQ(dateFromYYMMDDStr("20111230", apia), universal(2011, 12, 30, 10));
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(2011, 12, 30, 10), apia), "20111231");
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(2011, 12, 30, 9, 59, 59), apia), "20111229");
}

TEST(TimeZone, GoesOnForEver) {
    for (const std::string name : {"Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3"}) {
        const Environment here = environmentFor("en_US", name);
        EXPECT_EQ(dateFromYYMMDDStr("99990701", here), universal(9999, 6, 30, 22)) << name;
        EXPECT_EQ(dateFromYYMMDDStr("99991231", here), universal(9999, 12, 30, 23)) << name;
        EXPECT_EQ(YYYYMMDDStrFromDate(Date::fromSecondsSince1970(1e300), here).substr(0, 1), "1") << name;
    }
}

// Python's zoneinfo, which nobody here wrote, reads the same database.

struct OraclePipe {
    OraclePipe() : file(popen("python3 " KPX_SOURCE_FOLDER "/tests/region/zoneinfo_oracle.py", "r")) {}
    ~OraclePipe() { pclose(file); }

    bool readLine(std::string& line) const {
        line.clear();
        std::array<char, 65536> part{};
        while (std::fgets(part.data(), static_cast<int>(part.size()), file)) {
            line += part.data();
            if (line.back() == '\n') {
                return true;
            }
        }
        return false;
    }

    FILE* file;
};

struct ExpectedDay {
    std::int64_t midnight;
    std::array<std::int64_t, 3> later;  // the days since 1970 on which 1, 30 and 90 times 86400 seconds end
};

std::string storedDay(std::int64_t daysSince1970) {
    const std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::days(daysSince1970))};
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04d%02u%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text.data();
}

/// The first and the fifteenth of each month from 1990 to 2040.
std::vector<std::string> daysOfTheOracle() {
    std::vector<std::string> days;
    for (int year = 1990; year <= 2040; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (const char* day : {"01", "15"}) {
                days.push_back(std::to_string(year) + (month < 10 ? "0" : "") + std::to_string(month) + day);
            }
        }
    }
    return days;
}

void expectDay(const std::string& day, const ExpectedDay& expected, const Environment& here) {
    const Date midnight = dateFromYYMMDDStr(day, here);
    EXPECT_EQ(secondsOf(midnight), expected.midnight) << day;
    EXPECT_EQ(YYYYMMDDStrFromDate(midnight, here), day);
    constexpr std::array<int, 3> supplies = {1, 30, 90};
    for (std::size_t index = 0; index < supplies.size(); ++index) {
        EXPECT_EQ(YYYYMMDDStrFromDate(midnight.addingSeconds(supplies[index] * 86400.0), here),
                  storedDay(expected.later[index]))
            << day << " and " << supplies[index];
    }
}

TEST(TimeZone, AgreesWithAnotherReaderOfTheDatabase) {
    const std::vector<std::string> days = daysOfTheOracle();
    const OraclePipe oracle;
    std::string line;
    std::size_t zones = 0;
    while (oracle.readLine(line) && !testing::Test::HasFailure()) {
        std::istringstream names(line.substr(0, line.find('\t')));
        std::istringstream numbers(line.substr(line.find('\t') + 1));
        std::vector<ExpectedDay> expected(days.size());
        for (ExpectedDay& day : expected) {
            numbers >> day.midnight >> day.later[0] >> day.later[1] >> day.later[2];
        }
        ASSERT_TRUE(numbers);
        std::string name;
        // All days in the long form; else each zone starts its round of them at another one.
        const std::size_t step = std::getenv("KPX_LONG") ? 1 : 7;
        for (; names >> name; ++zones) {
            SCOPED_TRACE(name);
            const Environment here = environmentFor("en_US", name);
            for (std::size_t index = zones % step; index < days.size(); index += step) {
                expectDay(days[index], expected[index], here);
            }
        }
    }
    constexpr std::size_t fewest = 400;  // fewer, and the oracle did not find the database
    EXPECT_GT(zones, fewest);
}

}  // namespace
}  // namespace kpx
