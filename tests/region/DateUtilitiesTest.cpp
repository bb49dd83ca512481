#include "region/DateUtilities.h"

#include "region/Numbers.h"
#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace kpx {
namespace {

const std::vector<std::string> timeZones = {"UTC", "America/New_York", "America/Santiago", "America/Havana",
                                            "Asia/Tokyo"};

TEST(DateUtilities, StoredTextOfADate) {
    const Environment environment = environmentFor("en_US", "America/New_York");
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(2024, 3, 6, 4, 59), environment), "20240305");  // 23:59 there
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(2024, 3, 6, 5), environment), "20240306");
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(2023, 12, 31, 12), environment), "20231231");
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(987, 3, 5, 12), environmentFor("en_US")), "9870228");  // Julian then
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(12024, 3, 5, 12), environmentFor("en_US")), "120240305");
}

TEST(DateUtilities, StoredTextsHavePlainDigitsEverywhere) {
    for (const char* locale : {"en_US", "de_DE", "en_GB", "de_CH", "ar_EG"}) {
        EXPECT_EQ(YYYYMMDDStrFromDate(universal(2024, 3, 5, 12), environmentFor(locale)), "20240305") << locale;
    }
    EXPECT_EQ(YYYYMMDDStrFromDate(universal(2024, 3, 5, 12), environmentFor("th_TH")), "25670305");
}

TEST(DateUtilities, DateOfAStoredText) {
    struct Row {
        std::string text;
        Date date;
    };
    const std::vector<Row> rows = {
        {"20240305", universal(2024, 3, 5)},
        {"20241301", universal(2025, 1, 1)},
        {"20240230", universal(2024, 3, 1)},
        {"20240300", universal(2024, 2, 29)},
        {"20240005", universal(2023, 12, 5)},
        {"2024", universal(2023, 11, 30)},
        {"202403", universal(2024, 2, 29)},
        {"2024035", universal(2024, 3, 5)},
        {"202403005", universal(2024, 3, 5)},
        {"2024030500", universal(2025, 7, 13)},
        {"2024 3 5", universal(2023, 11, 30)},
        {"2024xx05", universal(2023, 12, 5)},
        {"2024-1-5", universal(2023, 11, 30)},
        {"2024+305", universal(2023, 12, 5)},
        {" 2240305", universal(0, 3, 3)},
        {"202403xx", universal(2024, 2, 29)},
        {"\u00e9\u00e9\u00e9\u00e90305", universal(0, 3, 3)},
        {"20240305 trailing", universal(2024, 3, 5)},
    };
    const Environment environment = environmentFor("en_US");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(dateFromYYMMDDStr(row.text, environment), row.date);
        EXPECT_EQ(dateFromYYMMDDStr(row.text, environment), row.date);  // as remembered
    }
}

TEST(DateUtilities, ReadsCharactersRatherThanBytes) {
    const Environment environment = environmentFor("en_US");
    // Four characters of three bytes each, then the month.
    EXPECT_EQ(dateFromYYMMDDStr("2\u20AC\u20AC\u20AC0305", environment), dateFromYYMMDDStr("2xxx0305", environment));
    EXPECT_EQ(dateFromYYMMDDStr("2024\u20AC\u20AC05", environment), dateFromYYMMDDStr("20240005", environment));
}

TEST(DateUtilities, NoTextIsTooOddForADate) {
    const std::vector<std::string> texts = {"",
                                            "2",
                                            "20",
                                            "202",
                                            "-1",
                                            "-999-9-9",
                                            "20240",
                                            "\xff",
                                            "\x80\x80\x80\x80\x80\x80\x80\x80",
                                            "\xf0\x9f",
                                            "\xed\xa0\x80\xed\xb0\x80",
                                            "abcdefgh",
                                            std::string(8, '\0'),
                                            std::string(1000, '9'),
                                            "202403" + std::string(500, '9'),
                                            "202403-" + std::string(500, '9'),
                                            "99999999",
                                            "9999",
                                            "202403-9223372036854775808",
                                            "----------"};
    for (const char* locale :
         {"en_US", "th_TH", "ar_SA", "he_IL@calendar=hebrew", "zh_CN@calendar=chinese", "ja_JP@calendar=japanese"}) {
        const Environment environment = environmentFor(locale, "America/Santiago");
        for (const std::string& text : texts) {
            SCOPED_TRACE(std::string(locale) + " " + text);
            const Date date = dateFromYYMMDDStr(text, environment);
            EXPECT_TRUE(std::isfinite(date.secondsSinceReference));
            EXPECT_FALSE(YYYYMMDDStrFromDate(date, environment).empty());
        }
    }
}

TEST(DateUtilities, StoredTextsRoundTripEveryDayInEveryZone) {
    for (const std::string& timeZone : timeZones) {
        const Environment environment = environmentFor("en_US", timeZone);
        for (int day = 0; day < 3 * 366; ++day) {
            const Date noon = universal(2023, 1, 1, 17).addingSeconds(day * 86400.0);
            const std::string text = YYYYMMDDStrFromDate(noon, environment);
            const Date date = dateFromYYMMDDStr(text, environment);
            ASSERT_EQ(YYYYMMDDStrFromDate(date, environment), text) << timeZone;
            ASSERT_LE(date, noon);
            ASSERT_NE(YYYYMMDDStrFromDate(date.addingSeconds(-1), environment), text) << timeZone;
            ASSERT_EQ(cleanseDate(noon, environment), date) << timeZone << " " << text;
        }
    }
}

TEST(DateUtilities, DaysBeginWithTheirFirstMoment) {
    struct Row {
        std::string timeZone;
        std::string text;
        Date start;
    };
    const std::vector<Row> rows = {
        {"America/Santiago", "20240907", universal(2024, 9, 7, 4)},
        {"America/Santiago", "20240908", universal(2024, 9, 8, 4)},  // 01:00, there is no midnight
        {"America/Santiago", "20240909", universal(2024, 9, 9, 3)},
        {"America/Havana", "20241103", universal(2024, 11, 3, 4)},  // the first of two midnights
        {"America/Havana", "20241104", universal(2024, 11, 4, 5)},
        {"America/New_York", "20240310", universal(2024, 3, 10, 5)},
        {"America/New_York", "20240311", universal(2024, 3, 11, 4)},
        {"Asia/Tokyo", "20240305", universal(2024, 3, 4, 15)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.timeZone + " " + row.text);
        const Environment environment = environmentFor("en_US", row.timeZone);
        const CalendarDay day = yearMonthDayFromDate(row.start, environment);
        EXPECT_EQ(dateFromYYMMDDStr(row.text, environment), row.start);
        EXPECT_EQ(dateFromYear(day.year, day.month, day.day, environment), row.start);
        EXPECT_EQ(cleanseDate(row.start.addingSeconds(14 * 3600.0), environment), row.start);
        EXPECT_EQ(cleanseDate(row.start, environment), row.start);
        EXPECT_EQ(YYYYMMDDStrFromDate(row.start, environment), row.text);
    }
    const Environment santiago = environmentFor("en_US", "America/Santiago");
    EXPECT_EQ(componentOfDate(dateFromYYMMDDStr("20240908", santiago), "HH:mm", santiago), "01:00");
    const Environment havana = environmentFor("en_US", "America/Havana");
    EXPECT_EQ(cleanseDate(universal(2024, 11, 3, 5), havana), universal(2024, 11, 3, 4));  // from the second midnight
}

TEST(DateUtilities, DaysBetween) {
    const Environment newYork = environmentFor("en_US", "America/New_York");
    EXPECT_EQ(daysBetweenDate(universal(2024, 3, 2, 4), universal(2024, 3, 2, 6), newYork), 1);  // 23:00 to 01:00
    EXPECT_EQ(daysBetweenDate(universal(2024, 3, 2, 17), universal(2024, 3, 1, 17), newYork), -1);
    EXPECT_EQ(daysBetweenDate(universal(2024, 3, 2, 6), universal(2024, 3, 2, 17), newYork), 0);
    struct Row {
        std::string timeZone;
        std::string from;
        std::string to;
        int days;
    };
    const std::vector<Row> rows = {
        {"America/Santiago", "20240907", "20240908", 1},
        {"America/Santiago", "20240908", "20240909", 1},
        {"America/Santiago", "20240909", "20240908", -1},
        {"America/Havana", "20241103", "20241104", 1},
        {"America/Havana", "20241102", "20241103", 1},
        {"America/New_York", "20240310", "20240311", 1},
        {"UTC", "20240101", "20250101", 366},
        {"UTC", "20240305", "20240305", 0},
        {"Asia/Tokyo", "19990101", "20240305", 9195},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.timeZone + " " + row.from + " " + row.to);
        const Environment environment = environmentFor("en_US", row.timeZone);
        EXPECT_EQ(daysBetweenDate(dateFromYYMMDDStr(row.from, environment), dateFromYYMMDDStr(row.to, environment),
                                  environment),
                  row.days);
    }
}

TEST(DateUtilities, AddsDaysMonthsAndYearsAtOnce) {
    struct Row {
        std::string from;
        int days;
        int months;
        int years;
        std::string to;
    };
    const std::vector<Row> rows = {
        {"20240229", 0, 0, 1, "20250228"},  {"20240229", 0, 0, 4, "20280229"},  {"20240229", 0, 0, -1, "20230228"},
        {"20240229", 1, 0, 1, "20250301"},  {"20240229", 0, 1, 1, "20250329"},  {"20240131", 0, 1, 0, "20240229"},
        {"20240131", 1, 1, 0, "20240301"},  {"20240131", 0, 2, 0, "20240331"},  {"20240331", 0, -1, 0, "20240229"},
        {"20240305", 30, 0, 0, "20240404"}, {"20240305", -5, 0, 0, "20240229"}, {"20241231", 1, 0, 0, "20250101"},
        {"20240305", 0, 13, 0, "20250405"}, {"20240305", 0, 0, 0, "20240305"},  {"20240305", -30, 1, 0, "20240306"},
        {"20240907", 1, 0, 0, "20240908"},  {"20240908", 1, 0, 0, "20240909"},  {"20241102", 1, 0, 0, "20241103"},
    };
    for (const std::string& timeZone : timeZones) {
        const Environment environment = environmentFor("en_US", timeZone);
        for (const Row& row : rows) {
            SCOPED_TRACE(timeZone + " " + row.from + " " + row.to);
            const Date from = dateFromYYMMDDStr(row.from, environment);
            const Date to = dateByAddingDays(from, row.days, row.months, row.years, environment);
            EXPECT_EQ(YYYYMMDDStrFromDate(to, environment), row.to);
        }
    }
}

TEST(DateUtilities, AddingKeepsTheTimeOfDay) {
    const Environment newYork = environmentFor("en_US", "America/New_York");
    // 08:00 before and after the clock change: 23 hours apart.
    EXPECT_EQ(dateByAddingDays(universal(2024, 3, 9, 13), 1, 0, 0, newYork), universal(2024, 3, 10, 12));
    EXPECT_EQ(dateByAddingDays(universal(2024, 3, 9, 13, 30, 15), 0, 1, 0, newYork), universal(2024, 4, 9, 12, 30, 15));
    // 02:30 does not exist on that day: 03:30.
    EXPECT_EQ(dateByAddingDays(universal(2024, 3, 9, 7, 30), 1, 0, 0, newYork), universal(2024, 3, 10, 7, 30));
    const Environment santiago = environmentFor("en_US", "America/Santiago");
    EXPECT_EQ(dateByAddingDays(universal(2024, 9, 7, 4), 1, 0, 0, santiago), universal(2024, 9, 8, 4));
    EXPECT_EQ(dateByAddingDays(universal(2024, 9, 7, 4), 2, 0, 0, santiago), universal(2024, 9, 9, 3));
    const Date second = universal(2024, 11, 3, 5, 30);  // in the repeated hour, the second time
    EXPECT_EQ(dateByAddingDays(second, 0, 0, 0, environmentFor("en_US", "America/Havana")), second);
}

TEST(DateUtilities, AddingSurvivesAnyAmount) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    for (const char* locale : {"en_US", "th_TH", "ar_SA", "ja_JP@calendar=japanese"}) {
        const Environment environment = environmentFor(locale);
        for (const int amount : {least, most}) {
            const Date date = dateByAddingDays(environment.now, amount, amount, amount, environment);
            EXPECT_TRUE(std::isfinite(date.secondsSinceReference)) << locale;
        }
    }
    const Environment environment = environmentFor("en_US");
    EXPECT_TRUE(std::isfinite(dateFromYear(most, most, most, environment).secondsSinceReference));
    for (const double seconds : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300}) {
        EXPECT_FALSE(YYYYMMDDStrFromDate(Date{seconds}, environment).empty());
        EXPECT_FALSE(longStyleFromDate(Date{seconds}, environment).empty());
        EXPECT_TRUE(std::isfinite(cleanseDate(Date{seconds}, environment).secondsSinceReference));
    }
}

TEST(DateUtilities, Differences) {
    using enum CalendarUnit;
    struct Row {
        std::string from;
        std::string to;
        std::vector<CalendarUnit> units;
        std::vector<std::int64_t> differences;
    };
    const std::vector<Row> rows = {
        {"20240101", "20240305", {Month, CalendarUnit::Day}, {2, 4}},
        {"20240101", "20240305", {CalendarUnit::Day, Month}, {4, 2}},
        {"20240101", "20240305", {CalendarUnit::Day}, {64}},
        {"20240101", "20240305", {Week, CalendarUnit::Day}, {9, 1}},
        {"20240305", "20240101", {Month, CalendarUnit::Day}, {-2, -4}},
        {"20240131", "20240301", {Month, CalendarUnit::Day}, {1, 1}},
        {"20230305", "20240304", {Year, Month, CalendarUnit::Day}, {0, 11, 28}},
        {"20200229", "20240228", {Year, CalendarUnit::Day}, {3, 365}},
        {"20240305",
         "20240305",
         {Era, Year, Month, Week, CalendarUnit::Day, Hour, Minute, Second},
         {0, 0, 0, 0, 0, 0, 0, 0}},
        {"20240305", "20240307", {Hour}, {48}},
        {"20240305", "20240306", {Minute, Second}, {1440, 0}},
        {"19000101", "20240101", {Second}, {3913056000}},
        {"20240101", "20240305", {}, {}},
    };
    const Environment environment = environmentFor("en_US");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.from + " " + row.to);
        EXPECT_EQ(diffDate(dateFromYYMMDDStr(row.from, environment), dateFromYYMMDDStr(row.to, environment), row.units,
                           environment),
                  row.differences);
    }
    const std::vector<CalendarUnit> clockUnits = {CalendarUnit::Day, Hour, Minute, Second};
    EXPECT_EQ(diffDate(universal(2024, 3, 5, 12), universal(2024, 3, 7, 11, 30, 15), clockUnits, environment),
              (std::vector<std::int64_t>{1, 23, 30, 15}));
    const Environment newYork = environmentFor("en_US", "America/New_York");
    EXPECT_EQ(diffDate(universal(2024, 3, 10, 5), universal(2024, 3, 11, 4), clockUnits, newYork),
              (std::vector<std::int64_t>{1, 0, 0, 0}));  // a day of 23 hours
}

TEST(DateUtilities, Styles) {
    struct Row {
        std::string locale;
        std::string shortStyle;
        std::string mediumStyle;
        std::string longStyle;
    };
    const std::vector<Row> rows = {
        {"en_US", "3/31/24", "Mar 31, 2024", "March 31, 2024"},
        {"C", "3/31/24", "Mar 31, 2024", "March 31, 2024"},
        {"de_DE", "31.03.24", "31.03.2024", "31. M\u00E4rz 2024"},
        {"en_GB", "31/03/2024", "31 Mar 2024", "31 March 2024"},
        {"de_CH", "31.03.24", "31.03.2024", "31. M\u00E4rz 2024"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale);
        const Environment environment = environmentFor(row.locale, "America/New_York");
        const Date date = universal(2024, 4, 1, 3, 59);  // 23:59 of the day before there
        EXPECT_EQ(shortStyleFromDate(date, environment), row.shortStyle);
        EXPECT_EQ(mediumStyleFromDate(date, environment), row.mediumStyle);
        EXPECT_EQ(longStyleFromDate(date, environment), row.longStyle);
    }
}

TEST(DateUtilities, Components) {
    const Environment environment = environmentFor("en_US", "Asia/Tokyo");
    const Date date = universal(2024, 3, 4, 15);
    EXPECT_EQ(componentOfDate(date, "yyyy/MM", environment), "2024/03");
    EXPECT_EQ(componentOfDate(date, "", environment), "");
    EXPECT_EQ(componentOfDate(date, "'day' d", environment), "day 5");
    EXPECT_EQ(yearFromDate(date, environment), "2024");
    EXPECT_EQ(monthFromDate(date, environment), "03");
    EXPECT_EQ(dayFromDate(date, environment), "5");
    EXPECT_EQ(dayNameFromDate(date, environment), "Tuesday");
    EXPECT_EQ(shortDayNameFromDate(date, environment), "Tue");
    EXPECT_EQ(monthNameFromDate(date, environment), "March");
    EXPECT_EQ(dayNameFromDate(date, environmentFor("de_DE", "Asia/Tokyo")), "Dienstag");
    EXPECT_EQ(monthNameFromDate(date, environmentFor("de_DE", "Asia/Tokyo")), "M\u00E4rz");
    for (int pattern = 0; pattern < 300; ++pattern) {  // more than are kept
        EXPECT_EQ(componentOfDate(date, "d '" + std::to_string(pattern) + "'", environment),
                  "5 " + std::to_string(pattern));
    }
}

TEST(DateUtilities, CurrentDate) {
    Environment environment = environmentFor("en_US", "Asia/Tokyo");
    environment.now = universal(2023, 12, 31, 15);  // New Year there
    EXPECT_EQ(currentYear(environment), "2024");
    EXPECT_EQ(currentMonth(environment), "01");
    EXPECT_EQ(currentDay(environment), "1");
    EXPECT_EQ(janFirstThisYear(environment), universal(2023, 12, 31, 15));
    environment.now = universal(2023, 12, 31, 14, 59);
    EXPECT_EQ(currentYear(environment), "2023");
    EXPECT_EQ(janFirstThisYear(environment), universal(2022, 12, 31, 15));
}

TEST(DateUtilities, RegionsOwnCalendar) {
    const Environment thai = environmentFor("th_TH");
    const Date date = universal(2024, 3, 5);
    EXPECT_EQ(yearMonthDayFromDate(date, thai), (CalendarDay{2567, 3, 5}));
    EXPECT_EQ(dateFromYear(2567, 3, 5, thai), date);
    EXPECT_EQ(currentYear(thai), "2567");
    EXPECT_EQ(janFirstThisYear(thai), universal(2024, 1, 1));
    EXPECT_EQ(dateFromYYMMDDStr(YYYYMMDDStrFromDate(date, thai), thai), date);
    const Environment egyptian = environmentFor("ar_EG");
    EXPECT_EQ(janFirstThisYear(egyptian), universal(2024, 1, 1));
    EXPECT_EQ(yearMonthDayFromDate(date, egyptian), (CalendarDay{2024, 3, 5}));
    const Environment japanese = environmentFor("ja_JP@calendar=japanese");
    EXPECT_EQ(yearMonthDayFromDate(date, japanese), (CalendarDay{6, 3, 5}));
    EXPECT_EQ(dateFromYear(6, 3, 5, japanese), date);
    EXPECT_EQ(janFirstThisYear(japanese), universal(2024, 1, 1));
}

TEST(DateUtilities, GregorianNumbersInEveryCalendar) {
    for (const char* locale : {"en_US", "th_TH", "ar_SA", "de_DE", "he_IL@calendar=hebrew"}) {
        SCOPED_TRACE(locale);
        const Environment environment = environmentFor(locale);
        EXPECT_EQ(weekDayNumberFromDate(universal(2024, 3, 3), environment), 1);  // a Sunday
        EXPECT_EQ(weekDayNumberFromDate(universal(2024, 3, 9, 23, 59), environment), 7);
        EXPECT_EQ(monthNumberFromDate(universal(2024, 3, 31, 23), environment), 3);
        EXPECT_EQ(monthNumberFromDate(universal(2024, 12, 1), environment), 12);
    }
    EXPECT_EQ(weekDayNumberFromDate(universal(2024, 3, 3), environmentFor("en_US", "America/New_York")), 7);
}

TEST(DateUtilities, MonthAndWeekdayNames) {
    const Environment english = environmentFor("en_US");
    const Environment german = environmentFor("de_DE");
    EXPECT_EQ(monthNumberFromName("January", english), 1);
    EXPECT_EQ(monthNumberFromName("December", english), 12);
    EXPECT_EQ(monthNumberFromName("M\u00E4rz", german), 3);
    for (const char* name : {"march", "Mar", "", "March ", "Dezember"}) {
        EXPECT_EQ(monthNumberFromName(name, english), std::numeric_limits<std::int64_t>::min()) << name;
    }
    EXPECT_EQ(dayNumberFromName("Sunday", english), 0);
    EXPECT_EQ(dayNumberFromName("Saturday", english), 6);
    EXPECT_EQ(dayNumberFromName("Sonntag", german), 0);
    for (const char* name : {"sunday", "Sun", "", "Sonntag"}) {
        EXPECT_EQ(dayNumberFromName(name, english), notFound) << name;
    }
    for (const char* locale : {"en_US", "de_DE", "th_TH", "ar_EG", "ru_RU"}) {
        const Environment environment = environmentFor(locale);
        for (int month = 1; month <= 12; ++month) {
            const std::optional<std::string> name = monthNameFromNumber(month, environment);
            ASSERT_TRUE(name);
            EXPECT_EQ(name, monthNameFromDate(universal(2024, month, 15), environment)) << locale;
            EXPECT_EQ(monthNumberFromName(*name, environment), month);
        }
        for (const int number : {0, 13, -1, std::numeric_limits<int>::max()}) {
            EXPECT_EQ(monthNameFromNumber(number, environment), std::nullopt);
        }
    }
}

TEST(DateUtilities, DaysInMonth) {
    const Environment environment = environmentFor("en_US");
    EXPECT_EQ(daysInMonth(universal(2024, 2, 10), environment), 29);
    EXPECT_EQ(daysInMonth(universal(2023, 2, 10), environment), 28);
    EXPECT_EQ(daysInMonth(universal(2024, 4, 30), environment), 30);
    EXPECT_EQ(daysInMonth(universal(2024, 12, 31), environment), 31);
    EXPECT_EQ(daysInMonth(universal(2024, 2, 10), environmentFor("th_TH")), 29);
}

TEST(DateUtilities, TimeOfDay) {
    struct Row {
        std::string timeZone;
        Date day;
        int hour;
        int minute;
        Date moment;
    };
    const std::vector<Row> rows = {
        {"UTC", universal(2024, 3, 5, 23, 59), 8, 0, universal(2024, 3, 5, 8)},
        {"Asia/Tokyo", universal(2024, 3, 5, 15), 8, 0, universal(2024, 3, 5, 23)},
        {"America/New_York", universal(2024, 3, 10, 5), 8, 0, universal(2024, 3, 10, 12)},
        {"America/New_York", universal(2024, 3, 10, 5), 2, 30, universal(2024, 3, 10, 7, 30)},  // 03:30
        {"America/Santiago", universal(2024, 9, 8, 4), 0, 0, universal(2024, 9, 8, 4)},         // 01:00
        {"America/Havana", universal(2024, 11, 3, 12), 0, 15, universal(2024, 11, 3, 4, 15)},   // the first
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.timeZone);
        for (const char* locale : {"en_US", "th_TH"}) {
            const Environment environment = environmentFor(locale, row.timeZone);
            EXPECT_EQ(dateAtTimeOfDay(row.day, row.hour, row.minute, 0, environment), row.moment);
        }
    }
}

TEST(DateUtilities, SameDay) {
    const Environment environment = environmentFor("en_US", "America/New_York");
    EXPECT_TRUE(isThisDate(universal(2024, 3, 5, 13), universal(2024, 3, 6, 3), environment));  // 08:00 and 22:00
    EXPECT_FALSE(isThisDate(universal(2024, 3, 5, 4), universal(2024, 3, 5, 6), environment));
    EXPECT_FALSE(isThisDate(universal(2024, 3, 5, 13), universal(2023, 3, 5, 13), environment));
    EXPECT_FALSE(isThisDate(universal(2024, 3, 5, 13), universal(2024, 4, 5, 13), environment));
}

}  // namespace
}  // namespace kpx
