#include "plist/XmlPropertyList.h"

#include "plist/PropertyListLimits.h"
#include "tests/plist/PropertyListSamples.h"

#include <gtest/gtest.h>

#include <optional>

namespace kpx::test {
namespace {

TEST(XmlPropertyList, ReadsEveryElement) {
    struct Row {
        std::string element;
        std::optional<Value> value;
    };
    const std::vector<Row> rows = {
        {"<string>plain</string>", "plain"},
        {"<string></string>", ""},
        {"<string/>", ""},
        {"<string> kept \n</string>", " kept \n"},
        {"<string>a&amp;b &lt;&gt;&quot;&apos; &#65;&#x1F600;</string>", "a&b <>\"' A😀"},
        {"<string>a<![CDATA[<b>&c;]]>d</string>", "a<b>&c;d"},
        {"<string>a<!-- not this -->b</string>", "ab"},
        {"<string>a<string>b</string></string>", std::nullopt},
        {"<string>&unknown;</string>", std::nullopt},
        {"<string>&#xD83D;</string>", std::nullopt},
        {"<integer>42</integer>", 42},
        {"<integer> -42\n</integer>", -42},
        {"<integer>+7</integer>", 7},
        {"<integer>0xFf</integer>", 255},
        {"<integer>-0x10</integer>", -16},
        {"<integer>007</integer>", 7},
        {"<integer>9223372036854775807</integer>", std::numeric_limits<std::int64_t>::max()},
        {"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
        {"<integer>18446744073709551615</integer>", ~std::uint64_t{0}},
        {"<integer>18446744073709551616</integer>", WideInteger(1, 0)},
        {"<integer>-9223372036854775809</integer>", WideInteger(-1, 0x7FFFFFFFFFFFFFFF)},
        {"<integer>170141183460469231731687303715884105727</integer>",
         WideInteger(std::numeric_limits<std::int64_t>::max(), ~std::uint64_t{0})},
        {"<integer>-170141183460469231731687303715884105728</integer>",
         WideInteger(std::numeric_limits<std::int64_t>::min(), 0)},
        {"<integer>-0x80000000000000000000000000000000</integer>",
         WideInteger(std::numeric_limits<std::int64_t>::min(), 0)},
        {"<integer>170141183460469231731687303715884105728</integer>", std::nullopt},
        {"<integer>-170141183460469231731687303715884105729</integer>", std::nullopt},
        {"<integer>99999999999999999999999999999999999999999999999999</integer>", std::nullopt},
        {"<integer>18446744073709551616x</integer>", std::nullopt},
        {"<integer></integer>", std::nullopt},
        {"<integer>-</integer>", std::nullopt},
        {"<integer>--1</integer>", std::nullopt},
        {"<integer>1.5</integer>", std::nullopt},
        {"<integer>0x</integer>", std::nullopt},
        {"<integer>1 2</integer>", std::nullopt},
        {"<real>-1.5e3</real>", -1500.0},
        {"<real>+0.1</real>", 0.1},
        {"<real>3</real>", 3.0},
        {"<real>inf</real>", std::numeric_limits<double>::infinity()},
        {"<real>-infinity</real>", -std::numeric_limits<double>::infinity()},
        {"<real>1e400</real>", std::numeric_limits<double>::infinity()},
        {"<real>-1e400</real>", -std::numeric_limits<double>::infinity()},
        {"<real>1e-400</real>", 0.0},
        {"<real>4e-324</real>", std::numeric_limits<double>::denorm_min()},
        {"<real>1e400x</real>", std::nullopt},
        {"<real>1,5</real>", std::nullopt},
        {"<real>0x10</real>", std::nullopt},
        {"<real>+-1</real>", std::nullopt},
        {"<real></real>", std::nullopt},
        {"<true/>", true},
        {"<false></false>", false},
        {"<true>yes</true>", std::nullopt},
        {"<date>2001-01-01T00:00:00Z</date>", Date{0}},
        {"<date>2024-02-29T12:30:45Z</date>", Date::fromSecondsSince1970(1709209845)},
        {"<date>1969-12-31T23:59:59Z</date>", Date::fromSecondsSince1970(-1)},
        {"<date>0001-01-01T00:00:00Z</date>", Date{-63113904000}},
        {"<date>2023-02-29T00:00:00Z</date>", std::nullopt},
        {"<date>2024-13-01T00:00:00Z</date>", std::nullopt},
        {"<date>2024-01-01T24:00:00Z</date>", std::nullopt},
        {"<date>2024-01-01T00:60:00Z</date>", std::nullopt},
        {"<date>2024-01-01T00:00:00</date>", std::nullopt},
        {"<date>2024-1-01T00:00:00Z</date>", std::nullopt},
        {"<date>2024-02-29T12:30Z</date>", Date::fromSecondsSince1970(1709209800)},
        {"<date>2024-02-29T12Z</date>", Date::fromSecondsSince1970(1709208000)},
        {"<date>2024-02-29Z</date>", Date::fromSecondsSince1970(1709164800)},
        {"<date>2024-02Z</date>", Date::fromSecondsSince1970(1706745600)},
        {"<date>2024Z</date>", Date::fromSecondsSince1970(1704067200)},
        {"<date>2024-02-29T12:Z</date>", std::nullopt},
        {"<date>2024-02-29:12Z</date>", std::nullopt},
        {"<date>2024-02-29T12:30:00:00Z</date>", std::nullopt},
        {"<date>2024-02-29</date>", std::nullopt},
        {"<date>Z</date>", std::nullopt},
        {"<date>2024-01-01T00:00:00Z+</date>", std::nullopt},
        {"<data></data>", Data()},
        {"<data>AA==</data>", bytes({0})},
        {"<data>AAE=</data>", bytes({0, 1})},
        {"<data>\n\tAAEC\n\t/v8=\n</data>", bytes({0, 1, 2, 254, 255})},
        {"<data>+/+/</data>", bytes({0xFB, 0xFF, 0xBF})},
        {"<data>A</data>", std::nullopt},
        {"<data>AAE</data>", std::nullopt},
        {"<data>AA=</data>", std::nullopt},
        {"<data>A===</data>", std::nullopt},
        {"<data>AA==AA==</data>", std::nullopt},
        {"<data>AAEC====</data>", std::nullopt},
        {"<data>A-==</data>", std::nullopt},
        {"<array></array>", Array()},
        {"<array/>", Array()},
        {"<array>\n <integer>1</integer> <!-- two --> <string>x</string>\n</array>", list({1, "x"})},
        {"<array>text</array>", std::nullopt},
        {"<array><key>k</key></array>", std::nullopt},
        {"<dict/>", Record()},
        {"<dict><key>k</key><integer>1</integer><key></key><true/></dict>", Record{{"k", 1}, {"", true}}},
        {"<dict><key>k</key><integer>1</integer><key>k</key><integer>2</integer></dict>", Record{{"k", 2}}},
        {"<dict><key>k</key></dict>", std::nullopt},
        {"<dict><integer>1</integer></dict>", std::nullopt},
        {"<dict><key>k</key><key>l</key><integer>1</integer></dict>", std::nullopt},
        {"<dict><key>k</key><integer>1</integer><integer>2</integer></dict>", std::nullopt},
        {"<dict><key><true/></key><integer>1</integer></dict>", std::nullopt},
        {"<key>k</key>", std::nullopt},
        {"<other>x</other>", std::nullopt},
        {"<true/><true/>", std::nullopt},
        {"<plist><true/></plist>", std::nullopt},
        {"<array><plist><true/></plist></array>", std::nullopt},
        {"", std::nullopt},
        {"text", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element);
        EXPECT_EQ(readXmlPropertyList("<plist version=\"1.0\">" + row.element + "</plist>"), row.value);
    }
}

TEST(XmlPropertyList, TakesAProlog) {
    const std::string document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<!-- a comment -->\n<plist version=\"1.0\">\n<array>\n<string>Zoë</string>\n</array>\n</plist>\n";
    EXPECT_EQ(readXmlPropertyList(document), list({"Zoë"}));
    EXPECT_EQ(readXmlPropertyList("<array><string>bare</string></array>"), list({"bare"}));
}

TEST(XmlPropertyList, RefusesEntities) {
    const std::vector<std::string> declarations = {
        "<!ENTITY a \"text\">",
        "<!ENTITY a SYSTEM \"file:///etc/passwd\">",
        "<!ENTITY a SYSTEM \"file:///etc/passwd\" NDATA b>",
        "<!ENTITY % a \"<!ELEMENT b ANY>\">",
        "<!ENTITY % a SYSTEM \"file:///etc/passwd\">",
    };
    for (const std::string& declaration : declarations) {
        SCOPED_TRACE(declaration);
        EXPECT_FALSE(readXmlPropertyList("<!DOCTYPE plist [" + declaration + "]><plist><string>x</string></plist>"));
    }
    EXPECT_TRUE(readXmlPropertyList("<!DOCTYPE plist [<!ELEMENT plist ANY>]><plist><string>x</string></plist>"));
    // With a document type elsewhere an unknown entity need not be an error of the XML itself.
    EXPECT_FALSE(readXmlPropertyList("<!DOCTYPE plist SYSTEM \"x.dtd\"><plist><string>a&b;c</string></plist>"));
}

TEST(XmlPropertyList, RefusesAnEntityBombAtOnce) {
    std::string bomb = "<!DOCTYPE plist [<!ENTITY l0 \"lol\">";
    for (int level = 1; level < 30; ++level) {
        bomb += "<!ENTITY l" + std::to_string(level) + " \"";
        for (int time = 0; time < 10; ++time) {
            bomb += "&l" + std::to_string(level - 1) + ";";
        }
        bomb += "\">";
    }
    EXPECT_FALSE(readXmlPropertyList(bomb + "]><plist><string>&l29;</string></plist>"));
}

std::string nested(std::size_t depth) {
    std::string document;
    for (std::size_t level = 0; level < depth; ++level) {
        document += "<array>";
    }
    for (std::size_t level = 0; level < depth; ++level) {
        document += "</array>";
    }
    return document;
}

TEST(XmlPropertyList, BoundsNesting) {
    EXPECT_TRUE(readXmlPropertyList(nested(maximumNesting)));
    EXPECT_FALSE(readXmlPropertyList(nested(maximumNesting + 1)));
    EXPECT_FALSE(readXmlPropertyList(nested(1000000)));
}

TEST(XmlPropertyList, SharesEqualTexts) {
    const std::optional<Value> value = readXmlPropertyList("<array><string>same</string><string>same</string></array>");
    ASSERT_TRUE(value && value->as<Array>());
    const std::vector<Value>& values = value->as<Array>()->values();
    EXPECT_EQ(&values[0].as<Text>()->string(), &values[1].as<Text>()->string());
}

}  // namespace
}  // namespace kpx::test
