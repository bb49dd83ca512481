#include "values/Unicode.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

TEST(BeginningInOneLine, Rows) {
    const struct {
        std::string text;
        std::size_t characters;
        std::string line;
    } rows[] = {
        {"", 5, ""},
        {"2.1", 5, "2.1"},
        {"12345", 5, "12345"},
        {"123456", 5, "1234…"},
        {"ééééé", 5, "ééééé"},
        {"éééééé", 5, "éééé…"},
        {"😀😀😀", 2, "😀…"},
        {"2.1\n", 5, "2.1"},
        {"2\r\n1", 9, "2  1"},
        {"a\tb\x7f\x1b[2J", 9, "a b  [2J"},
        {"\u2028x\u202ey", 9, " x y"},
        {" \n\n", 9, ""},
        {"12345\n", 5, "12345"},
        {"1234   x", 5, "1234…"},
        {"x", 0, "x"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(beginningInOneLine(row.text, row.characters), row.line);
    }
    EXPECT_EQ(characterCount(beginningInOneLine(std::string(65536, 'x'), 80)), 80u);
}

}  // namespace
}  // namespace kpx
