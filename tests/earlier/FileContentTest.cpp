#include "earlier/FileContent.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

constexpr std::size_t history = 0;
constexpr std::size_t drugs = 2;
constexpr std::int64_t afternoon = 1709658000;  // 2024-03-05T17:00:00Z, by another program

TEST(KeptContent, HasAName) {
    struct Row {
        std::string name;
        FileContent content;
    };
    const std::vector<Row> rows = {
        {"DrugFileForKPX.20240305T170000Z", {.file = drugs, .since = afternoon}},
        {"DrugFileForKPX.20240305T170000Z-2", {.file = drugs, .since = afternoon, .number = 2}},
        {"DrugFileForKPX.20240305T170000Z-deleted", {.file = drugs, .since = afternoon, .wasDeletedFrom = true}},
        {"DrugFileForKPX.20240305T170000Z-13-deleted",
         {.file = drugs, .since = afternoon, .number = 13, .wasDeletedFrom = true}},
        {"prescriptionHistoryFileForKPX.19691231T235959Z", {.file = history, .since = -1}},
        {"prescriptionHistoryFileForKPX.20240229T000000Z", {.file = history, .since = 1709164800}},
        {"prescriptionHistoryFileForKPX.99991231T235959Z", {.file = history, .since = 253402300799}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(nameOfKeptContent(row.content), row.name);
        const auto content = keptContentOfName(row.name);
        ASSERT_TRUE(content);
        EXPECT_EQ(*content, row.content);
        EXPECT_EQ(content->wasDeletedFrom, row.content.wasDeletedFrom);
        EXPECT_FALSE(content->isPresent);
    }
}

TEST(KeptContent, HasATimeThatFourDigitsOfAYearCanTell) {
    EXPECT_EQ(nameOfKeptContent({.file = drugs, .since = INT64_C(400000000000)}), "DrugFileForKPX.99991231T235959Z");
    EXPECT_EQ(nameOfKeptContent({.file = drugs, .since = INT64_C(-400000000000)}), "DrugFileForKPX.00000101T000000Z");
}

TEST(KeptContent, HasNoOtherName) {
    const std::vector<std::string> names = {
        "",
        "DrugFileForKPX",
        "DrugFileForKPX.",
        "DrugFileForKPX.20240305T170000",
        "DrugFileForKPX-20240305T170000Z",
        "drugFileForKPX.20240305T170000Z",
        "OtherFile.20240305T170000Z",
        ".DrugFileForKPX.20240305T170000Z.0123456789abcdef.tmp",
        "DrugFileForKPX.20240305T170000Z.bak",
        "DrugFileForKPX.20240305T170000Z-",
        "DrugFileForKPX.20240305T170000Z-0",
        "DrugFileForKPX.20240305T170000Z-1",
        "DrugFileForKPX.20240305T170000Z-02",
        "DrugFileForKPX.20240305T170000Z--2",
        "DrugFileForKPX.20240305T170000Z-99999999999",
        "DrugFileForKPX.20240305T170000Z-2147483647",
        "DrugFileForKPX.20240305T170000Z-2-3",
        "DrugFileForKPX.20240305T170000Z-deleted-2",
        "DrugFileForKPX.20240305T170000Z-deleted-deleted",
        "DrugFileForKPX.20240230T170000Z",
        "DrugFileForKPX.20241305T170000Z",
        "DrugFileForKPX.20240305T240000Z",
        "DrugFileForKPX.20240305T176000Z",
        "DrugFileForKPX.20240305T170060Z",
        "DrugFileForKPX.2024 305T170000Z",
        "DrugFileForKPX.-0240305T170000Z",
    };
    for (const std::string& name : names) {
        EXPECT_FALSE(keptContentOfName(name)) << name;
    }
}

}  // namespace
}  // namespace kpx
