#include "plist/OldStylePropertyList.h"

#include "plist/PropertyListLimits.h"
#include "tests/plist/PropertyListSamples.h"

#include <gtest/gtest.h>

#include <optional>

namespace kpx::test {
namespace {

TEST(OldStylePropertyList, Reads) {
    struct Row {
        std::string text;
        std::optional<Value> value;
    };
    const std::vector<Row> rows = {
        // Words and quotes.
        {"(word)", list({"word"})},
        {"(a_b$c+d/e:f.g-9)", list({"a_b$c+d/e:f.g-9"})},
        {"(http://a.b//c)", list({"http://a.b//c"})},
        {"word", std::nullopt},
        {"bplist00", std::nullopt},
        {"\"quoted text\"", "quoted text"},
        {"'it''s", std::nullopt},
        {"'single \"quotes\"'", "single \"quotes\""},
        {"\"\"", ""},
        {"\"two\nlines\"", "two\nlines"},
        {"\"Zoë\"", "Zoë"},
        {"(Zoë)", std::nullopt},
        {"(a@b)", std::nullopt},
        {"\"a\" \"b\"", std::nullopt},
        {"\"open", std::nullopt},
        {"\"open\\\"", std::nullopt},
        {"\xFF", std::nullopt},
        {"\"\xFF\"", std::nullopt},
        {"\"\xED\xA0\xBD\"", std::nullopt},
        // Escapes.
        {R"("\a\b\f\n\r\t\v")", "\a\b\f\n\r\t\v"},
        {R"("\"\'\\\/\q")", "\"'\\/q"},
        {"\"\\\n\"", "\n"},
        {R"("\101\60\0z")", std::string("A0\0z", 4)},
        {R"("\341\200\377")", "Æ\u00A0\uFFFD"},
        {R"("\400")", std::nullopt},
        {R"("\1234")", "S4"},
        {R"("\U00e6\U41z\U00E9")", "æAzé"},
        {R"("\Ud83d\Ude00")", "😀"},
        {R"("\Ud83dx")", "\xED\xA0\xBDx"},
        {R"("\Ux")", std::nullopt},
        // Data.
        {"<>", Data()},
        {"<0fbd 77\n1C>", bytes({0x0F, 0xBD, 0x77, 0x1C})},
        {"<0 f b d>", bytes({0x0F, 0xBD})},
        {"<90 09 af FA>", bytes({0x90, 0x09, 0xAF, 0xFA})},
        {"<:0>", std::nullopt},
        {"</0>", std::nullopt},
        {"<0fb>", std::nullopt},
        {"<0g>", std::nullopt},
        {"<0f", std::nullopt},
        // Arrays.
        {"()", Array()},
        {"( a, \"b\", (c) )", list({"a", "b", list({"c"})})},
        {"(a,b,)", list({"a", "b"})},
        {"(a b)", std::nullopt},
        {"(,)", std::nullopt},
        {"(a,,b)", std::nullopt},
        {"(a", std::nullopt},
        {"(a))", std::nullopt},
        // Dictionaries.
        {"{}", Record()},
        {"{ k = v; \"l m\" = (1); }", Record{{"k", "v"}, {"l m", list({"1"})}}},
        {"{ k; }", Record{{"k", "k"}}},
        {"{ k = 1; k = 2; }", Record{{"k", "2"}}},
        {"{ k = v }", std::nullopt},
        {"{ k v; }", std::nullopt},
        {"{ (k) = v; }", std::nullopt},
        {"{ <00> = v; }", std::nullopt},
        {"{ = v; }", std::nullopt},
        {"{ k = ; }", std::nullopt},
        {"{ k = v;", std::nullopt},
        {"{ k = v; } }", std::nullopt},
        // Comments.
        {"// before\n(a, /* between */ b // after\n)", list({"a", "b"})},
        {"(a) // no line end", list({"a"})},
        {"(a /* open )", std::nullopt},
        {"/**/(a)/***/", list({"a"})},
        // A table of localised texts.
        {"\"Add\" = \"Hinzufügen\"; /* c */ \"Delete\" = \"Löschen\";\n",
         Record{{"Add", "Hinzufügen"}, {"Delete", "Löschen"}}},
        {"k = (1, 2);", Record{{"k", list({"1", "2"})}}},
        {"k; l;", Record{{"k", "k"}, {"l", "l"}}},
        {"k = v", std::nullopt},
        {"k = v; }", std::nullopt},
        {"(k) = v;", std::nullopt},
        // Nothing.
        {"", std::nullopt},
        {" \n", std::nullopt},
        {"// only a comment", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(readOldStylePropertyList(row.text), row.value);
    }
}

TEST(OldStylePropertyList, BoundsNesting) {
    const auto nested = [](std::size_t depth, const std::string& open, const std::string& close) {
        std::string text;
        for (std::size_t level = 0; level < depth; ++level) {
            text += open;
        }
        text += "x";
        for (std::size_t level = 0; level < depth; ++level) {
            text += close;
        }
        return text;
    };
    EXPECT_TRUE(readOldStylePropertyList(nested(maximumNesting, "(", ")")));
    EXPECT_FALSE(readOldStylePropertyList(nested(maximumNesting + 1, "(", ")")));
    EXPECT_TRUE(readOldStylePropertyList(nested(maximumNesting, "{k=", ";}")));
    EXPECT_FALSE(readOldStylePropertyList(nested(maximumNesting + 1, "{k=", ";}")));
    EXPECT_FALSE(readOldStylePropertyList(std::string(1000000, '(')));
    EXPECT_FALSE(readOldStylePropertyList(nested(1000000, "{k=", "")));
}

}  // namespace
}  // namespace kpx::test
