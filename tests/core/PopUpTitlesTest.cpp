#include "core/PopUpTitles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

using Titles = std::vector<std::string>;

Records recordsWith(const std::vector<Value>& values) {
    Records records;
    for (const Value& value : values) {
        records.push_back(Record({{"name", value}}));
    }
    return records;
}

TEST(PopUpTitles, CollectsDistinctValues) {
    EXPECT_EQ(copyUniqueKey("name", {}), Titles{});
    EXPECT_EQ(copyUniqueKey("name", recordsWith({"Bob", "Ann", "Bob", "bob", "Ann "})),
              (Titles{"Bob", "Ann", "bob", "Ann "}));
    EXPECT_EQ(copyUniqueKey("name", Records(20, Record({{"name", "Aspirin"}}))), (Titles{"Aspirin"}));
    EXPECT_EQ(copyUniqueKey("name", recordsWith({"", "Ann", ""})), (Titles{"", "Ann"}));
    EXPECT_EQ(copyUniqueKey("other", recordsWith({"Bob"})), Titles{});
}

TEST(PopUpTitles, OnlyTheFirstRecordIsAskedForAMissingValue) {
    Records records = recordsWith({"Bob", "Ann"});
    records.insert(records.begin() + 1, Record({{"other", "x"}}));
    EXPECT_EQ(copyUniqueKey("name", records), (Titles{"Bob", "Ann"}));
    records.insert(records.begin(), Record());
    EXPECT_EQ(copyUniqueKey("name", records), Titles{});
}

TEST(PopUpTitles, ShowsNumbersOfAHandEditedFileAsPlainText) {
    EXPECT_EQ(copyUniqueKey("name", recordsWith({5, "5", -7, 1.5, true, std::uint64_t{1} << 63U, Data(), "Ann"})),
              (Titles{"5", "-7", "1.5", "1", "9223372036854775808", "Ann"}));
    EXPECT_EQ(copyUniqueKey("name", recordsWith({Data(), "Ann"})), (Titles{"Ann"}));
}

TEST(PopUpTitles, FindsARecordByItsTitle) {
    const Records records = recordsWith({"ann", "Ann", 5, "a\"b", "Ann"});
    EXPECT_EQ(copyDictContainingTitle("Ann", "name", records), &records[1]);
    EXPECT_EQ(copyDictContainingTitle("a\"b", "name", records), &records[3]);
    for (const char* title : {"ANN", "", "5", "Ann "}) {
        EXPECT_EQ(copyDictContainingTitle(title, "name", records), nullptr) << title;
    }
    EXPECT_EQ(copyDictContainingTitle("Ann", "other", records), nullptr);
    EXPECT_EQ(copyDictContainingTitle("Ann", "name", {}), nullptr);
}

Record prescription(const char* number, const char* pharmacy, const char* patient, const char* type) {
    return Record({{"rx", number}, {"pharmacy", pharmacy}, {"patient", patient}, {"type", type}});
}

TEST(PopUpTitles, FindsARecordByFourValues) {
    const Records records = {
        prescription("07", "Corner", "Ann", "Initial"),
        prescription("07", "Corner", "Ann", "Refill"),
        prescription("07", "Corner", "ann", "Refill"),
        prescription("a\\b", "%@", "it's", "AND"),
        prescription("x\" AND type == \"Refill", "Corner", "Ann", "Refill"),
        prescription("*", "?", "", "Initial"),
    };
    const auto find = [&](const char* number, const char* pharmacy, const char* patient, const char* type) {
        return copyFindDictInArray(records, {"rx", number}, {"pharmacy", pharmacy}, {"patient", patient},
                                   {"type", type});
    };
    EXPECT_EQ(find("07", "Corner", "Ann", "Initial"), records[0]);
    EXPECT_EQ(find("07", "Corner", "Ann", "Refill"), records[1]);
    EXPECT_EQ(find("07", "Corner", "ann", "Refill"), records[2]);
    EXPECT_EQ(find("a\\b", "%@", "it's", "AND"), records[3]);
    EXPECT_EQ(find("*", "?", "", "Initial"), records[5]);
    EXPECT_EQ(find("7", "Corner", "Ann", "Initial"), Record());
    EXPECT_EQ(find("07", "Corner", "ANN", "Initial"), Record());
    EXPECT_EQ(find("07", "*", "Ann", "Initial"), Record());
    EXPECT_EQ(find("07\"", "Corner", "Ann", "Initial"), Record());
    // What would parse, and match, if it were let into the text.
    EXPECT_EQ(find("x\" AND type == \"Refill", "Corner", "Ann", "Refill"), Record());
    EXPECT_EQ(find("07\" AND rx == \"07", "Corner", "Ann", "Initial"), Record());
    EXPECT_EQ(copyFindDictInArray({}, {"rx", "07"}, {"pharmacy", "x"}, {"patient", "y"}, {"type", "z"}), Record());
}

TEST(PopUpTitles, TheFoundRecordIsACopy) {
    const Records records = {prescription("07", "Corner", "Ann", "Initial")};
    Record found =
        copyFindDictInArray(records, {"rx", "07"}, {"pharmacy", "Corner"}, {"patient", "Ann"}, {"type", "Initial"});
    found.set("patient", "Bob");
    EXPECT_EQ(records[0].text("patient"), Text("Ann"));
}

}  // namespace
}  // namespace kpx
