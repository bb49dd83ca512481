#include "region/RegionSettings.h"

#include "region/DateUtilities.h"
#include "region/DayPattern.h"
#include "region/LocalizedStrings.h"
#include "region/Numbers.h"
#include "tests/support/RegionSupport.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kpx {
namespace {

using Variables = std::map<std::string, std::string>;

RegionSettings settingsOf(const Variables& variables) {
    return regionSettings([&](const std::string& name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
}

Environment madeFor(const Variables& variables) { return {universal(2024, 3, 5, 12), Region(settingsOf(variables))}; }

TEST(RegionSettings, TakesEachCategoryFromItsVariable) {
    struct Row {
        Variables variables;
        std::string dates, numbers, money, order, messages;
    };
    const std::vector<Row> rows = {
        {{}, "", "", "", "", ""},
        {{{"LANG", "de_DE"}}, "de_DE", "de_DE", "de_DE", "de_DE", "de_DE"},
        {{{"LANG", "de_DE"}, {"LC_ALL", "sv_SE"}, {"LC_TIME", "fr_FR"}}, "sv_SE", "sv_SE", "sv_SE", "sv_SE", "sv_SE"},
        {{{"LANG", "de_DE"}, {"LC_ALL", ""}, {"LC_TIME", ""}}, "de_DE", "de_DE", "de_DE", "de_DE", "de_DE"},
        {{{"LANG", "a"},
          {"LC_TIME", "b"},
          {"LC_NUMERIC", "c"},
          {"LC_MONETARY", "d"},
          {"LC_COLLATE", "e"},
          {"LC_MESSAGES", "f"}},
         "b",
         "c",
         "d",
         "e",
         "f"},
        {{{"LC_TIME", "en_DK"}}, "en_DK", "", "", "", ""},
    };
    for (const Row& row : rows) {
        const RegionSettings settings = settingsOf(row.variables);
        SCOPED_TRACE(testing::PrintToString(row.variables));
        EXPECT_EQ(settings.dates, row.dates);
        EXPECT_EQ(settings.numbers, row.numbers);
        EXPECT_EQ(settings.money, row.money);
        EXPECT_EQ(settings.order, row.order);
        EXPECT_EQ(settings.languages, std::vector{row.messages});
    }
}

TEST(RegionSettings, TakesLanguagesAsTheTranslationsOfOtherProgramsDo) {
    struct Row {
        Variables variables;
        std::vector<std::string> languageCodes;
    };
    const std::vector<Row> rows = {
        {{}, {"en"}},
        {{{"LANG", "de_AT.UTF-8"}}, {"de"}},
        {{{"LANG", "en_US"}, {"LANGUAGE", "fr_CA:de:sv_SE.UTF-8"}}, {"fr", "de", "sv"}},
        {{{"LC_ALL", "en_US"}, {"LANGUAGE", "fr"}}, {"fr"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", ""}}, {"de"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", ":"}}, {"de"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", ":fr::sv:"}}, {"fr", "sv"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", "fr:C:sv"}}, {"fr", "en"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", "%&:fr"}}, {"fr"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", "%&"}}, {"en"}},
        // Who wants no language gets none.
        {{{"LANGUAGE", "fr"}}, {"en"}},
        {{{"LANG", "C"}, {"LANGUAGE", "fr"}}, {"en"}},
        {{{"LANG", "de_DE"}, {"LC_ALL", "C.UTF-8"}, {"LANGUAGE", "fr"}}, {"en"}},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "POSIX"}, {"LANGUAGE", "fr"}}, {"en"}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Region(settingsOf(row.variables)).languageCodes(), row.languageCodes)
            << testing::PrintToString(row.variables);
    }
}

TEST(RegionSettings, TakesTheZoneFromItsVariableElseFromTheMachine) {
    EXPECT_EQ(settingsOf({}).timeZone, "/etc/localtime");
    EXPECT_EQ(settingsOf({{"TZ", ""}}).timeZone, "");
    EXPECT_EQ(settingsOf({{"TZ", ":Asia/Tokyo"}}).timeZone, ":Asia/Tokyo");
    EXPECT_EQ(settingsOf({}).zoneFolder, "/usr/share/zoneinfo");
    EXPECT_EQ(settingsOf({{"TZDIR", "/zones"}}).zoneFolder, "/zones");
}

TEST(RegionSettings, ALanguageIsOneThatHasATable) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "fr.lproj");
    std::filesystem::create_directories(folder.path() / "de.lproj");
    std::ofstream(folder.path() / "de.lproj" / "Localizable.strings") << "{}";
    struct Row {
        std::vector<std::string> languageCodes;
        std::string language;
    };
    const std::vector<Row> rows = {{{"xx", "fr", "de"}, "de"},
                                   {{"de", "fr"}, "de"},
                                   {{"xx", "fr"}, "fr"},
                                   {{"xx", "yy"}, "xx"},
                                   {{"sv"}, "sv"},
                                   // English needs none.
                                   {{"en", "de"}, "en"},
                                   {{"xx", "en", "de"}, "en"},
                                   {{"de", "en"}, "de"}};
    for (const Row& row : rows) {
        EXPECT_EQ(languageOfTexts(folder.path(), row.languageCodes), row.language);
    }
}

TEST(MadeRegion, GroupsAsTheRegionDoesAndHasAPoint) {
    struct Row {
        Variables variables;
        std::string number;
        std::string money;
        bool comma;
    };
    const std::vector<Row> rows = {
        {{}, "1,234.50", "$1,234.50", false},
        {{{"LANG", "C"}}, "1,234.50", "$1,234.50", false},
        {{{"LANG", "en_US"}}, "1,234.50", "$1,234.50", false},
        {{{"LANG", "de_DE"}}, "1\u202F234.50", "€1\u202F234.50", true},
        {{{"LANG", "de_CH"}}, "1’234.50", "CHF\u00A01’234.50", false},
        {{{"LANG", "fr_FR"}}, "1\u202F234.50", "€1\u202F234.50", true},
        {{{"LANG", "fr_CH"}}, "1\u202F234.50", "CHF\u00A01\u202F234.50", true},
        {{{"LANG", "de_AT"}}, "1\u00A0234.50", "€1\u00A0234.50", true},
        {{{"LANG", "nb_NO"}}, "1\u00A0234.50", "kr\u00A01\u00A0234.50", true},
        {{{"LANG", "id_ID"}}, "1\u202F234.50", "Rp\u00A01\u202F234.50", true},
        {{{"LANG", "ar_EG"}}, "1,234.50", "ج.م.\u200F\u00A01,234.50", false},
        {{{"LANG", "hi_IN"}}, "1,234.50", "₹1,234.50", false},
        {{{"LANG", "en_US"}, {"LC_TIME", "en_DK"}}, "1,234.50", "$1,234.50", false},
        {{{"LANG", "en_US"}, {"LC_NUMERIC", "de_DE"}}, "1\u202F234.50", "$1\u202F234.50", true},
        {{{"LANG", "de_DE"}, {"LC_MONETARY", "en_GB"}}, "1\u202F234.50", "£1\u202F234.50", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.variables));
        const Environment here = madeFor(row.variables);
        EXPECT_EQ(copyFormatStringForTextField(1234.5, "###,###,###.00", here), row.number);
        EXPECT_EQ(formatCurrency(1234.5, here), row.money);
        EXPECT_EQ(decimalSeparator(here), ".");
        EXPECT_EQ(here.region.hasDecimalComma(), row.comma);
    }
}

TEST(MadeRegion, WritesGregorianDatesInLatinDigits) {
    struct Row {
        std::string locale;
        std::string shortStyle, longStyle, typed;
    };
    const std::vector<Row> rows = {
        {"en_US", "3/5/24", "March 5, 2024", "M/d/yyyy"},
        {"de_DE", "05.03.24", "5. März 2024", "dd.MM.yyyy"},
        {"th_TH", "5/3/24", "5 มีนาคม ค.ศ. 2024", "d/M/yyyy"},
        {"fa_IR", "2024/3/5", "5 مارس 2024", "yyyy/M/d"},
        {"ar_EG", "5\u200F/3\u200F/2024", "5 مارس 2024", "d/M/yyyy"},
        {"ja_JP@calendar=japanese", "2024/03/05", "2024年3月5日", "yyyy/MM/dd"},
        {"haw_US", "5/3/24", "5 Malaki 2024", "d/M/yyyy"},
        {"bg_BG", "5.03.24\u202Fг.", "5 март 2024\u202Fг.", "d.MM.yyyy\u202F'г'."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale);
        const Environment here = madeFor({{"LANG", row.locale}});
        const Date day = dateFromYYMMDDStr("20240305", here);
        EXPECT_EQ(shortStyleFromDate(day, here), row.shortStyle);
        EXPECT_EQ(longStyleFromDate(day, here), row.longStyle);
        EXPECT_EQ(typedDayPattern(here), row.typed);
        EXPECT_EQ(YYYYMMDDStrFromDate(day, here), "20240305");
        EXPECT_EQ(currentYear(here), "2024");
    }
}

TEST(MadeRegion, KnowsEveryDayThatCanBeStored) {
    const Environment here = madeFor({{"LANG", "en_GB"}, {"TZ", "Europe/London"}});
    for (const std::string day : {"10000101", "11000228", "15821004", "15821005", "15821014", "15821015", "99991231"}) {
        EXPECT_EQ(YYYYMMDDStrFromDate(dateFromYYMMDDStr(day, here), here), day);
    }
    EXPECT_EQ(daysBetweenDate(dateFromYYMMDDStr("15821004", here), dateFromYYMMDDStr("15821015", here), here), 11);
    EXPECT_EQ(dateFromYYMMDDStr("16000229", here), universal(1600, 2, 29, 0, 1, 15));  // by the sun of London
}

TEST(MadeRegion, StaysTheSameUntilTheSurroundingsChange) {
    Variables variables = {{"LANG", "de_DE"}, {"TZ", "UTC"}};
    CurrentRegion current([&](const std::string& name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
    const RegionServices* services = &current.region().services();
    EXPECT_EQ(&current.region().services(), services);
    variables["TZ"] = "Asia/Tokyo";
    EXPECT_NE(&current.region().services(), services);
    const Environment tokyo{{}, current.region()};
    EXPECT_EQ(dateFromYYMMDDStr("20240305", tokyo), universal(2024, 3, 4, 15));
}

TEST(TypedDayPattern, HasEachPartOnceAsANumber) {
    struct Row {
        std::string style, typed;
    };
    const std::vector<Row> rows = {
        {"M/d/yy", "M/d/yyyy"},
        {"dd.MM.y", "dd.MM.yyyy"},
        {"d.MM.yy 'г'.", "d.MM.yyyy 'г'."},
        {"d\u200F/M\u200F/y", "d/M/yyyy"},
        {"GGGGG y-MM-dd", "yyyy-MM-dd"},
        {"d/M/y G", "d/M/yyyy"},
        {"d MMM y", "yyyy-MM-dd"},
        {"M/d", "yyyy-MM-dd"},
        {"EEE d/M/y", "yyyy-MM-dd"},
        {"", "yyyy-MM-dd"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(typedDayPattern(row.style), row.typed) << row.style;
    }
}

/// Every locale's name that the library knows.
std::vector<std::string> allLocales() {
    std::int32_t count = 0;
    const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
    std::vector<std::string> names;
    std::transform(locales, locales + count, std::back_inserter(names),
                   [](const icu::Locale& l) { return l.getName(); });
    return names;
}

TEST(MadeRegion, IsSafeWhereverOneLives) {
    for (const std::string& locale : allLocales()) {
        SCOPED_TRACE(locale);
        const Environment here = madeFor({{"LANG", locale}});
        const std::string shown = copyFormatStringForTextField(1234567.5, "###,###,###.00", here);
        EXPECT_EQ(cleanFormatCostStr(shown, here), "1234567.50") << shown;
        const std::string negative = copyFormatStringForTextField(-1234.5, "###,###,###.00", here);
        EXPECT_EQ(cleanFormatCostStr(negative, here), "-1234.50") << negative;
        EXPECT_EQ(cleanFormatCostStr("1234.50", here), "1234.50");
        EXPECT_NE(formatCurrency(1234.5, here).find("234.50"), std::string::npos) << formatCurrency(1234.5, here);
        const Date day = dateFromYYMMDDStr("20240305", here);
        EXPECT_EQ(YYYYMMDDStrFromDate(day, here), "20240305");
        // The numbers of a short date are the day, the month and the year, whatever stands between them.
        std::multiset<int> numbers;
        const std::string written = shortStyleFromDate(day, here);
        for (std::size_t place = 0; place < written.size();) {
            std::size_t length = 0;
            while (place + length < written.size() &&
                   std::isdigit(static_cast<unsigned char>(written[place + length]))) {
                ++length;
            }
            if (length > 0) {
                numbers.insert(std::stoi(written.substr(place, length)) % 100);
            }
            place += length > 0 ? length : 1;
        }
        EXPECT_EQ(numbers, (std::multiset<int>{3, 5, 24})) << written;
    }
    EXPECT_GT(allLocales().size(), 700U);
}

}  // namespace
}  // namespace kpx
