#include "values/Unicode.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

TEST(FirstCharacter, Rows) {
    struct Row {
        std::string text;
        char32_t code;
        std::size_t length;
        bool valid = true;
    };
    constexpr char32_t none = 0xFFFD;
    const std::vector<Row> rows = {
        {"a", 'a', 1},
        {"az", 'a', 1},
        {std::string("\0a", 2), 0, 1},
        {"\u00E9x", 0xE9, 2},
        {"\u20AC", 0x20AC, 3},
        {"\uD7FF", 0xD7FF, 3},
        {"\U0001F600\U0001F600", 0x1F600, 4},
        {"\xED\xA0\x80", 0xD800, 3},
        {"\xED\xBF\xBFx", 0xDFFF, 3},
        {"\xED\xA0", none, 1, false},
        {"\xED\xA0x", none, 1, false},
        {"\xEDx\x80", none, 1, false},
        {"\xC3", none, 1, false},
        {"\xC3x", none, 1, false},
        {"\xC0\x80\x80", none, 1, false},
        {"\xE0\x80\x80", none, 1, false},
        {"\xE2\x82", none, 1, false},
        {"\xF0\x9F\x98", none, 1, false},
        {"\xF4\x90\x80\x80", none, 1, false},
        {"\x80\x80\x80", none, 1, false},
        {"\xFF\xA0\x80", none, 1, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        const Character character = firstCharacter(row.text);
        EXPECT_EQ(character.code, row.code);
        EXPECT_EQ(character.length, row.length);
        EXPECT_EQ(character.valid, row.valid);
    }
}

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
