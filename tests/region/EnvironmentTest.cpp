#include "region/Environment.h"

#include "region/DateUtilities.h"
#include "region/Numbers.h"
#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

TEST(Region, CanonicalisesLocaleNames) {
    struct Row {
        std::string name;
        std::string localeName;
        std::string languageCode;
    };
    const std::vector<Row> rows = {
        {"de_DE.UTF-8", "de_DE", "de"},
        {"de_DE", "de_DE", "de"},
        {"de-DE", "de_DE", "de"},
        {"de_DE@euro", "de_DE", "de"},
        {"th_TH", "th_TH", "th"},
        {"ar_EG.UTF-8", "ar_EG", "ar"},
        {"", "en_US", "en"},
        {"C", "en_US", "en"},
        {"POSIX", "en_US", "en"},
        {"C.UTF-8", "en_US", "en"},
        {"C.utf8", "en_US", "en"},
        {"en_US_POSIX", "en_US", "en"},
        {"POSIX.UTF-8", "en_US", "en"},
        {".UTF-8", "en_US", "en"},
        {"en_GB.UTF-8", "en_GB", "en"},
        {"sr_RS.UTF-8@latin", "sr_Latn_RS", "sr"},
        {"sr_RS@latin", "sr_Latn_RS", "sr"},
        {"sv", "sv", "sv"},
        {"iw_IL", "he_IL", "he"},
        {"no_NO", "no_NO", "no"},
        {"en_UK", "en_GB", "en"},
        {"sr_CS", "sr_RS", "sr"},
        {"de_AT", "de_AT", "de"},
        {"es_419", "es_419", "es"},
        {"%$&", "en_US", "en"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Region region(row.name, "UTC");
        EXPECT_EQ(region.localeName(), row.localeName);
        EXPECT_EQ(region.languageCodes(), std::vector{row.languageCode});
    }
}

TEST(Region, CountsUnknownTimeZonesAsUniversalTime) {
    struct Row {
        std::string timeZone;
        Date midnight;
    };
    const std::vector<Row> rows = {
        {"", universal(2024, 3, 5)},
        {"No/Such_Place", universal(2024, 3, 5)},
        {"UTC", universal(2024, 3, 5)},
        {"Asia/Tokyo", universal(2024, 3, 4, 15)},
        {":Asia/Tokyo", universal(2024, 3, 4, 15)},
        {"America/New_York", universal(2024, 3, 5, 5)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.timeZone);
        EXPECT_EQ(dateFromYear(2024, 3, 5, environmentFor("en_US", row.timeZone)), row.midnight);
    }
}

TEST(Region, KeepsRegionsApart) {
    const Environment tokyo = environmentFor("de_DE", "Asia/Tokyo");
    const Environment newYork = environmentFor("en_US", "America/New_York");
    const Date date = universal(2024, 3, 5, 18);
    EXPECT_EQ(YYYYMMDDStrFromDate(date, tokyo), "20240306");
    EXPECT_EQ(YYYYMMDDStrFromDate(date, newYork), "20240305");
    EXPECT_EQ(YYYYMMDDStrFromDate(date, tokyo), "20240306");
    EXPECT_EQ(decimalSeparator(tokyo), ",");
    EXPECT_EQ(decimalSeparator(newYork), ".");
}

}  // namespace
}  // namespace kpx
