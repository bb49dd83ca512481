#include "values/Record.h"

#include "values/RecordHash.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <vector>

namespace kpx::test {
namespace {

TEST(Record, EqualsWhateverTheOrderOfItsKeys) {
    struct Row {
        const char* name;
        Record left, right;
        bool areEqual;
    };
    const std::vector<Row> rows = {
        {"empty", {}, {}, true},
        {"the same order", {{"a", 1}, {"b", "x"}}, {{"a", 1}, {"b", "x"}}, true},
        {"another order", {{"a", 1}, {"b", "x"}}, {{"b", "x"}, {"a", 1}}, true},
        {"another value", {{"a", 1}, {"b", "x"}}, {{"a", 1}, {"b", "y"}}, false},
        {"another value and order", {{"a", 1}, {"b", "x"}}, {{"b", "x"}, {"a", 2}}, false},
        {"another key", {{"a", 1}}, {{"b", 1}}, false},
        {"a key more", {{"a", 1}}, {{"a", 1}, {"b", 1}}, false},
        {"a number and a text", {{"a", 1}}, {{"a", "1"}}, false},
        {"a number and a truth", {{"a", 1}}, {{"a", true}}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.left == row.right, row.areEqual);
        EXPECT_EQ(row.right == row.left, row.areEqual);
        EXPECT_EQ(hashOf(row.left) == hashOf(row.right), row.areEqual);
    }
}

TEST(Record, HashesWhateverItHolds) {
    const std::vector<Value> values = {
        "1",
        1,
        std::numeric_limits<std::uint64_t>::max(),
        1.0,
        true,
        Date{1},
        Data({'1'}),
        UniqueIdentifier{1},
        Array({1}),
        Array({1, 2}),
        Array({2, 1}),
        Record{{"1", 1}},
        Record{{"1", 1}, {"2", 2}},
        Record{{"1", 2}, {"2", 1}},
        WideInteger(1, 0),
        WideInteger(1, 1),
    };
    std::set<std::size_t> hashes;
    for (const Value& value : values) {
        const Record record = {{"k", value}, {"other", "x"}};
        hashes.insert(hashOf(record));
        EXPECT_EQ(hashOf(record), hashOf(Record{{"other", "x"}, {"k", value}}));
    }
    EXPECT_EQ(hashes.size(), values.size());
    EXPECT_EQ(hashOf(Record{{"k", 0.0}}), hashOf(Record{{"k", -0.0}})) << "they are equal";
}

TEST(Record, EqualsWithVeryManyKeysInAnotherOrder) {
    constexpr int count = 100000;
    Record forward;
    Record backward;
    for (int index = 0; index < count; ++index) {
        forward.append(std::to_string(index), index);
        backward.append(std::to_string(count - 1 - index), count - 1 - index);
    }
    EXPECT_EQ(forward, backward);
    backward.set("5", -1);
    EXPECT_FALSE(forward == backward);
}

TEST(Record, MovesItsFieldsSeldomWhileItGrows) {
    Record record;
    const Record::Field* fields = nullptr;
    int moves = 0;
    for (int index = 0; index < 1000; ++index) {
        record.append(std::to_string(index), index);
        moves += record.begin() == fields ? 0 : 1;
        fields = record.begin();
    }
    EXPECT_LE(moves, 11) << "room for one, and ten times twice as much";
}

TEST(Record, IsBuiltFieldByField) {
    Record record;
    record.reserve(0);
    EXPECT_EQ(record.identity(), nullptr);
    record.reserve(2);
    record.append("a", 1);
    const Record::Field* const first = record.begin();
    record.append("b", "x");
    EXPECT_EQ(record.begin(), first) << "there was room";

    const Record copy = record;
    record.append("c", copy);
    record.append("d", *record.find("b"));
    EXPECT_EQ(copy, (Record{{"a", 1}, {"b", "x"}}));
    EXPECT_EQ(record, (Record{{"a", 1}, {"b", "x"}, {"c", copy}, {"d", "x"}}));
    record.reserve(1);
    EXPECT_EQ(record.size(), 4U);
}

TEST(Record, SharesItsFieldsUntilOneIsChanged) {
    const Record original = {{"a", 1}, {"b", "x"}};
    Record copy = original;
    EXPECT_EQ(&*copy.begin(), &*original.begin());
    copy.set("b", "y");
    copy.set("c", 3);
    copy.remove("a");
    copy.remove("none");
    EXPECT_EQ(copy, (Record{{"b", "y"}, {"c", 3}}));
    EXPECT_EQ(original, (Record{{"a", 1}, {"b", "x"}}));
    copy.remove("b");
    copy.remove("c");
    EXPECT_TRUE(copy.empty());
    EXPECT_EQ(copy, Record());
}

TEST(Record, StaysUsableAfterBeingMovedFrom) {
    Record record = {{"a", 1}};
    const Record taken = std::move(record);
    EXPECT_TRUE(record.empty());  // NOLINT(bugprone-use-after-move)
    Array array({1, 2});
    const Array takenArray = std::move(array);
    EXPECT_TRUE(array.values().empty());  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(takenArray.values().size(), 2U);
    EXPECT_EQ(taken.size(), 1U);
}

TEST(Record, ReadsIntegersOutOfWhateverStandsThere) {
    struct Row {
        Value value;
        std::int64_t integer;
    };
    const std::vector<Row> rows = {
        {7, 7},
        {"12 tablets", 12},
        {"none", 0},
        {2.9, 2},
        {-2.9, -2},
        {1e300, 0},
        {std::numeric_limits<double>::quiet_NaN(), 0},
        {true, 1},
        {std::numeric_limits<std::uint64_t>::max(), std::numeric_limits<std::int64_t>::max()},
        {Date{5}, 0},
        {Array(), 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(integerValue(row.value), row.integer);
        EXPECT_EQ((Record{{"k", row.value}}).integer("k"), row.integer);
    }
    EXPECT_EQ(Record().integer("k"), 0);
}

TEST(Value, ShowsAWideIntegerInFull) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    const Value smallest = WideInteger(least, 0);
    const Value beyond = WideInteger(1, 0);
    EXPECT_EQ(textOfValue(&smallest), Text("-170141183460469231731687303715884105728"));
    EXPECT_EQ(textOfValue(&beyond), Text("18446744073709551616"));
    EXPECT_EQ(WideInteger(0, 7).decimalText(), "7");
    EXPECT_EQ(WideInteger(-1, 0).decimalText(), "-18446744073709551616");
    EXPECT_EQ(integerValue(smallest), least);
    EXPECT_EQ(integerValue(beyond), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(beyond, Value(WideInteger(1, 0)));
    EXPECT_NE(beyond, Value(WideInteger(1, 1)));
}

}  // namespace
}  // namespace kpx::test
