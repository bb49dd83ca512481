#include "values/FieldFinder.h"

#include <gtest/gtest.h>

namespace kpx::test {
namespace {

TEST(FieldFinder, FindsWhatTheRecordFinds) {
    const Text shared = "b";
    const Records records = {
        Record(),
        Record{{"a", 1}, {shared, 2}},
        Record{{"c", 1}, {shared, 3}},
        Record{{shared, 4}},
        Record{{"a", 1}, {"c", 2}, {"d", 3}},
        Record{{"bb", 1}, {"b", "text"}},
        Record{{"a", 1}, {"B", 2}},
        Record(),
    };
    for (const char* key : {"a", "b", "c", ""}) {
        const FieldFinder finder(key);
        for (const Record& record : records) {
            EXPECT_EQ(finder.in(record), record.find(key)) << key;
            const auto text = record.text(key);
            ASSERT_EQ(finder.textIn(record) != nullptr, text.has_value());
            EXPECT_TRUE(!text || *finder.textIn(record) == *text);
        }
    }
}

}  // namespace
}  // namespace kpx::test
