#include "drawing/ReadingOrder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx::test {
namespace {

DrawText textAt(const std::string& text, double x, double y) {
    DrawText made;
    made.text = text;
    made.x = x;
    made.y = y;
    return made;
}

TEST(ReadingOrder, Rows) {
    using Lines = std::vector<std::vector<std::string>>;
    struct Row {
        const char* what;
        std::vector<DrawingOperation> operations;
        Lines lines;
    };
    const std::vector<Row> rows = {
        {"nothing", {}, {}},
        {"lines are no texts, and empty texts are left out",
         {DrawLine{.x1 = 1, .y1 = 9}, textAt("", 1, 8), textAt("a", 1, 7), DrawLine()},
         {{"a"}}},
        {"from above", {textAt("low", 1, 10), textAt("high", 1, 20)}, {{"high"}, {"low"}}},
        {"from the left", {textAt("b", 9, 10), textAt("c", 20, 10), textAt("a", 1, 10)}, {{"a", "b", "c"}}},
        {"less than a point apart is one line", {textAt("b", 9, 10.9), textAt("a", 1, 10)}, {{"a", "b"}}},
        {"a point apart is two", {textAt("a", 1, 10), textAt("b", 9, 11)}, {{"b"}, {"a"}}},
        {"as drawn where two stand in one place", {textAt("a", 1, 10), textAt("b", 1, 10)}, {{"a", "b"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Page page{row.operations};
        Lines lines;
        for (const auto& line : linesInReadingOrder(page)) {
            lines.emplace_back();
            for (const DrawText* text : line) {
                lines.back().push_back(text->text);
            }
        }
        EXPECT_EQ(lines, row.lines);
    }
}

}  // namespace
}  // namespace kpx::test
