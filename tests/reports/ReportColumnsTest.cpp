#include "reports/ReportColumns.h"

#include "tests/reports/ReportSupport.h"

#include <gmock/gmock.h>

namespace kpx {
namespace {

constexpr char key[] = "value";
constexpr char otherKey[] = "other";

TEST(ReportColumns, FieldsAsText) {
    const Date march = Date::fromSecondsSince1970(1711843200);  // 31 March 2024
    struct Row {
        const char* about;
        ReportField field;
        Record record;
        std::optional<std::string> text;
    };
    const std::vector<Row> rows = {
        {"a text", ReportField::PlainText, {{key, "Ann"}}, "Ann"},
        {"an empty text is not missing", ReportField::PlainText, {{key, ""}}, ""},
        {"a number of a foreign file", ReportField::PlainText, {{key, 17}}, "17"},
        {"nothing", ReportField::PlainText, {}, std::nullopt},
        {"what has no text", ReportField::PlainText, {{key, Data()}}, std::nullopt},
        {"both dates", ReportField::TwoDates, {{key, "20240105"}, {otherKey, "20250320"}}, "1/5/24\t3/20/25"},
        {"one of them a date already",
         ReportField::TwoDates,
         {{key, march}, {otherKey, "20250320"}},
         "3/31/24\t3/20/25"},
        {"only the first date", ReportField::TwoDates, {{key, "20240105"}}, std::nullopt},
        {"only the second date", ReportField::TwoDates, {{otherKey, "20240105"}}, std::nullopt},
        {"type and number", ReportField::TypeAndRefills, {{key, "Refill"}, {otherKey, 70000}}, "Refill\t\t70000"},
        {"type and a fraction", ReportField::TypeAndRefills, {{key, "Refill"}, {otherKey, 2.5}}, "Refill\t\t2.5"},
        {"a word", ReportField::Word, {{key, "Refill"}}, "Refill"},
        {"no word", ReportField::Word, {}, std::nullopt},
        {"type without number", ReportField::TypeAndRefills, {{key, "Refill"}}, std::nullopt},
        {"number without type", ReportField::TypeAndRefills, {{otherKey, 2}}, std::nullopt},
        {"a stored cost", ReportField::Currency, {{key, "1234.50"}}, "$1,234.50"},
        {"a cost below one", ReportField::Currency, {{key, ".50"}}, "$0.50"},
        {"a row's cost", ReportField::Currency, {{key, 12.5}}, "$12.50"},
        {"the leading number only", ReportField::Currency, {{key, "12,50"}}, "$12.00"},
        {"no number", ReportField::Currency, {{key, "free"}}, "$0.00"},
        {"no cost", ReportField::Currency, {}, std::nullopt},
        {"a date", ReportField::ShortDate, {{key, march}}, "3/31/24"},
        {"a stored date", ReportField::ShortDate, {{key, "20240331"}}, "3/31/24"},
        {"no date", ReportField::ShortDate, {}, std::nullopt},
        {"a small number", ReportField::NarrowedInteger, {{key, 3}}, "3"},
        {"the largest", ReportField::NarrowedInteger, {{key, 32767}}, "32767"},
        {"one more", ReportField::NarrowedInteger, {{key, 32768}}, "-32768"},
        {"narrowed", ReportField::NarrowedInteger, {{key, 70000}}, "4464"},
        {"a number in a text", ReportField::NarrowedInteger, {{key, "12"}}, "12"},
        {"no number", ReportField::NarrowedInteger, {}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.about);
        EXPECT_EQ(reportFieldText({20, "", row.field, key, otherKey}, row.record, reportEnvironment(), {}), row.text);
    }
}

TEST(ReportColumns, FollowTheRegion) {
    const Record record{{key, "1234.50"}, {otherKey, "20240331"}};
    const Environment germany = reportEnvironment("de_DE");
    EXPECT_EQ(reportFieldText({20, "", ReportField::Currency, key}, record, germany, {}), "€1.234,50");
    EXPECT_EQ(reportFieldText({20, "", ReportField::ShortDate, otherKey}, record, germany, {}), "31.03.24");
}

TEST(ReportColumns, HeadingsAndPlaces) {
    using Headings = std::vector<std::pair<std::string, double>>;
    const Headings prescriptions = {{"Patient", 20},
                                    {"Drug Name", 150},
                                    {"Rx Number", 300},
                                    {"Dispense/Expire Dates", 410},
                                    {"Type/Remaining Refills", 560},
                                    {"Cost", 700}};
    struct Row {
        int type;
        Headings headings;
    };
    const std::vector<Row> rows = {
        {1, prescriptions},
        {2, prescriptions},
        {3,
         {{"Patient", 20},
          {"Prescriber", 150},
          {"Drug Name", 260},
          {"Rx Number", 380},
          {"Dispense/Expire Dates", 470},
          {"Type/Remaining Refills", 610}}},
        {4, {{"Patient", 20}, {"Address", 200}, {"City", 400}, {"State/County", 550}, {"Postal Code", 660}}},
        {5, {{"Pharmacy", 20}, {"Address", 200}, {"Phone", 480}, {"Notes", 570}}},
        {6, {{"Drug Name", 20}, {"Drug Description", 400}}},
        {7, {{"Prescriber Name", 20}, {"Prescriber Address", 200}, {"Telephone", 480}, {"Specialty", 570}}},
        {8, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        Headings headings;
        for (const ReportColumn& column : reportColumns(row.type)) {
            headings.emplace_back(column.heading, column.x);
        }
        EXPECT_EQ(headings, row.headings);
    }
}

TEST(ReportColumns, OfTheShownTable) {
    std::vector<std::pair<std::string, double>> columns;
    std::vector<std::string> optional;
    for (const ReportColumn& column : reportColumns(99)) {
        columns.emplace_back(column.key, column.x);
        if (column.optional) {
            optional.emplace_back(column.key);
        }
    }
    const std::vector<std::pair<std::string, double>> expected = {
        {"patient", 20},   {"pharmacy", 100},  {"drugname", 200},         {"prescriber", 310}, {"scriptnote", 410},
        {"filltype", 540}, {"scriptnum", 580}, {"remainingrefills", 630}, {"cost", 685},       {"dispensedate", 725}};
    EXPECT_EQ(columns, expected);
    EXPECT_THAT(optional, testing::ElementsAre("scriptnote", "remainingrefills", "cost"));
}

}  // namespace
}  // namespace kpx
