#include "core/Sorting.h"

#include "tests/support/RegionSupport.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace kpx {
namespace {

using enum Comparison;

/// The values of the key "id", in their order.
std::vector<std::int64_t> identifiers(const Records& records) {
    std::vector<std::int64_t> result;
    for (const Record& record : records) {
        result.push_back(record.integer("id"));
    }
    return result;
}

Records recordsWith(std::string_view key, const std::vector<Value>& values) {
    Records records;
    std::int64_t identifier = 0;
    for (const Value& value : values) {
        records.push_back(Record({{"id", identifier++}, {Text(key), value}}));
    }
    return records;
}

std::vector<std::int64_t> sortedIdentifiers(Records records, const std::vector<SortDescriptor>& descriptors) {
    sortByDescriptors(records, descriptors, environmentFor("en_US"));
    return identifiers(records);
}

using Order = std::vector<std::int64_t>;

TEST(Sorting, OneLevel) {
    struct Row {
        std::vector<Value> values;
        Comparison comparison;
        Order ascending;
        Order descending;
    };
    const std::vector<Row> rows = {
        {{"Ann 10", "Bob", "Ann 9"}, LocalizedStandard, {2, 0, 1}, {1, 0, 2}},
        {{"Ann 10", "Bob", "Ann 9"}, LocalizedCaseInsensitive, {0, 2, 1}, {1, 2, 0}},
        {{"b", "A", "B", "a"}, LocalizedCaseInsensitive, {1, 3, 0, 2}, {0, 2, 1, 3}},
        {{"b", "A", "B", "a"}, LocalizedStandard, {3, 1, 0, 2}, {2, 0, 1, 3}},
        {{"b", "A", "B", "a"}, Plain, {1, 2, 3, 0}, {0, 3, 2, 1}},
        {{10, 9, 9.5, -1}, LocalizedStandard, {3, 1, 2, 0}, {0, 2, 1, 3}},
        {{Date{10}, Date{9}, Date{10}}, Plain, {1, 0, 2}, {0, 2, 1}},
        {{1, true, 1.0, 0}, Plain, {3, 0, 1, 2}, {0, 1, 2, 3}},
        {{INT64_MAX, INT64_MAX - 1, std::uint64_t{1} << 63U}, Plain, {1, 0, 2}, {2, 0, 1}},
        {{9007199254740993, 9007199254740992.0, 9007199254740992}, Plain, {1, 2, 0}, {0, 1, 2}},
        {{1, std::nan(""), -HUGE_VAL, HUGE_VAL}, Plain, {1, 2, 0, 3}, {3, 0, 1, 2}},
        {{Data(), "x", Date{0}, 5, Array()}, LocalizedStandard, {3, 2, 1, 0, 4}, {0, 4, 1, 2, 3}},
        {{"\xff", "\xed\xa0\x80", "a", ""}, Plain, {3, 2, 1, 0}, {0, 1, 2, 3}},
        {{}, Plain, {}, {}},
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        SCOPED_TRACE(row);
        const Records records = recordsWith("key", rows[row].values);
        EXPECT_EQ(sortedIdentifiers(records, {{"key", true, rows[row].comparison}}), rows[row].ascending);
        EXPECT_EQ(sortedIdentifiers(records, {{"key", false, rows[row].comparison}}), rows[row].descending);
    }
}

TEST(Sorting, RecordsWithoutAValueComeFirst) {
    Records records = recordsWith("key", {"b", "a"});
    records.push_back(Record({{"id", 2}}));
    records.push_back(Record({{"id", 3}, {"key", ""}}));
    records.push_back(Record({{"id", 4}}));
    EXPECT_EQ(sortedIdentifiers(records, {{"key", true, Plain}}), (Order{2, 4, 3, 1, 0}));
    EXPECT_EQ(sortedIdentifiers(records, {{"key", false, Plain}}), (Order{0, 1, 3, 2, 4}));
    EXPECT_EQ(sortedIdentifiers(records, {{"absent", true, Plain}}), (Order{0, 1, 2, 3, 4}));
    EXPECT_EQ(sortedIdentifiers(records, {{"absent", false, Plain}}), (Order{0, 1, 2, 3, 4}));
}

const Records prescriptions = {
    Record({{"id", 0}, {"patient", "bob"}, {"rx", "10"}, {"type", "Refill"}}),
    Record({{"id", 1}, {"patient", "Ann"}, {"rx", "9"}, {"type", "Refill"}}),
    Record({{"id", 2}, {"patient", "Bob"}, {"rx", "9"}, {"type", "Initial"}}),
    Record({{"id", 3}, {"patient", "Ann"}, {"rx", "10"}, {"type", "Initial"}}),
    Record({{"id", 4}, {"patient", "Ann"}, {"rx", "9"}, {"type", "Initial"}}),
    Record({{"id", 5}, {"patient", "Ann"}, {"rx", "9"}, {"type", "Refill"}}),
};

TEST(Sorting, SeveralLevels) {
    struct Row {
        std::vector<SortDescriptor> descriptors;
        Order order;
    };
    const std::vector<Row> rows = {
        {{}, {0, 1, 2, 3, 4, 5}},
        {{{"patient", true, Plain}, {"rx", true, LocalizedStandard}, {"type", true, LocalizedStandard}},
         {4, 1, 5, 3, 2, 0}},
        {{{"patient", true, LocalizedCaseInsensitive}, {"rx", true, LocalizedCaseInsensitive}}, {3, 1, 4, 5, 0, 2}},
        {{{"patient", false, Plain}, {"rx", true, LocalizedStandard}}, {0, 2, 1, 4, 5, 3}},
        {{{"type", true, Plain}, {"id", false, Plain}}, {4, 3, 2, 5, 1, 0}},
        {{{"type", true, Plain}}, {2, 3, 4, 0, 1, 5}},
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        SCOPED_TRACE(row);
        EXPECT_EQ(sortedIdentifiers(prescriptions, rows[row].descriptors), rows[row].order);
        const std::vector<std::size_t> order =
            sortedOrder(prescriptions, rows[row].descriptors, environmentFor("en_US"));
        EXPECT_EQ(Order(order.begin(), order.end()), rows[row].order);
    }
}

TEST(Sorting, ThreeKeySort) {
    struct Row {
        SortDescriptor first;
        SortDescriptor second;
        SortDescriptor third;
        Order order;
    };
    const SortDescriptor none;
    const std::vector<Row> rows = {
        {{"patient", true, Plain},
         {"rx", true, LocalizedStandard},
         {"type", true, LocalizedStandard},
         {4, 1, 5, 3, 2, 0}},
        {none, {"rx", true, LocalizedStandard}, none, {1, 2, 4, 5, 0, 3}},
        {{"type", false, Plain}, none, {"rx", true, LocalizedStandard}, {1, 5, 0, 2, 4, 3}},
        {none, none, none, {0, 1, 2, 3, 4, 5}},
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        SCOPED_TRACE(row);
        Records records = prescriptions;
        doSortWithArray(records, rows[row].first, rows[row].second, rows[row].third, environmentFor("en_US"));
        EXPECT_EQ(identifiers(records), rows[row].order);
    }
}

TEST(Sorting, StoredWordsGoByWhatIsShownOfThem) {
    const test::TemporaryFolder resources;
    std::filesystem::create_directory(resources.path() / "de.lproj");
    test::writeFile(resources.path() / "de.lproj" / "Localizable.strings",
                    "\"capsule\" = \"Kapsel\"; \"drop\" = \"Tropfen\"; \"gram\" = \"Gramm\";");
    const LocalizedStrings german(resources.path(), "de");
    const std::vector<Value> words = {"capsule", "drop", "gram", "Hub"};
    struct Row {
        const char* key;
        LocalizedStrings language;
        std::vector<std::size_t> order;
    };
    const std::vector<Row> rows = {
        {"typemeasure", {}, {0, 1, 2, 3}},
        {"typemeasure", german, {2, 3, 0, 1}},
        // The same words as a note are the household's own.
        {"scriptnote", german, {0, 1, 2, 3}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(sortedOrder(recordsWith(row.key, words), {{row.key}}, environmentFor("de_DE"), row.language),
                  row.order);
    }
}

}  // namespace
}  // namespace kpx
