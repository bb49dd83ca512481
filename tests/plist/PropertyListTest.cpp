#include "plist/PropertyList.h"

#include "plist/PropertyListFields.h"
#include "tests/plist/PropertyListSamples.h"
#include "tests/support/HouseholdGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>

namespace kpx::test {
namespace {

std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string result;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit);
        result += bigEndian ? high : low;
        result += bigEndian ? low : high;
    }
    return result;
}

std::string utf32(std::u32string_view text, bool bigEndian) {
    std::string bytes;
    for (const char32_t character : text) {
        for (unsigned index = 0; index < 4; ++index) {
            bytes += static_cast<char>(character >> 8 * (bigEndian ? 3 - index : index));
        }
    }
    return bytes;
}

TEST(PropertyList, TellsTheFormatFromTheBytes) {
    struct Row {
        const char* name;
        std::string bytes;
        std::optional<Value> value;
    };
    constexpr std::u16string_view xml =
        u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><plist><string>é😀</string></plist>";
    constexpr std::u16string_view oldStyle = u"\uFEFF( \"é😀\" )";
    const std::vector<Row> rows = {
        {"binary", BinaryFile{{raw("\x51k")}}.bytes(), "k"},
        {"XML", "<?xml version='1.0'?><plist><string>x</string></plist>", "x"},
        {"XML without a declaration", "<plist><string>x</string></plist>", "x"},
        {"XML after blanks", "\n <?xml version='1.0'?><plist><string>x</string></plist>", "x"},
        {"XML after a mark", "\xEF\xBB\xBF<?xml version='1.0'?><plist><string>x</string></plist>", "x"},
        {"XML of a root that begins with a hexadecimal digit", "<dict><key>k</key><data/></dict>",
         Record{{"k", Data()}}},
        {"XML in Latin-1", "<?xml version='1.0' encoding='ISO-8859-1'?><plist><string>\xE9</string></plist>", "é"},
        {"XML in an encoding unknown here", "<?xml version='1.0' encoding='x-none'?><plist><true/></plist>",
         std::nullopt},
        {"XML in Windows' Latin", "<?xml version='1.0' encoding='windows-1252'?><plist><string>\x80</string></plist>",
         "€"},
        {"XML in Shift-JIS", "<?xml version='1.0' encoding='Shift_JIS'?><plist><string>\x96\xF2</string></plist>",
         "薬"},
        {"XML in Shift-JIS, cut", "<?xml version='1.0' encoding='Shift_JIS'?><plist><string>\x96</string></plist>",
         std::nullopt},
        {"XML in GB 18030", "<?xml version='1.0' encoding='GB18030'?><plist><string>\xD2\xA9</string></plist>", "药"},
        {"XML in KOI8-R", "<?xml version='1.0' encoding='KOI8-R'?><plist><string>\xC4\xC1</string></plist>", "да"},
        {"XML in an escaping set",
         "<?xml version='1.0' encoding='ISO-2022-JP'?><plist><string>\x1B$BLt\x1B(B</string></plist>", "薬"},
        {"XML in UTF-32", utf32(U"<?xml version='1.0'?><plist><string>é😀</string></plist>", true), "é😀"},
        {"XML in UTF-32, little-endian", utf32(U"\uFEFF<plist><string>é😀</string></plist>", false), "é😀"},
        {"XML of a mainframe",
         "\x4C\x6F\xA7\x94\x93\x40\xA5\x85\x99\xA2\x89\x96\x95\x7E\x7D\xF1\x4B\xF0\x7D\x40\x85\x95\x83\x96\x84\x89\x95"
         "\x87\x7E\x7D\x89\x82\x94\x60\xF1\xF1\xF4\xF0\x7D\x6F\x6E\x4C\x97\x93\x89\xA2\xA3\x6E\x4C\xA2\xA3\x99\x89\x95"
         "\x87\x6E\x9F\x4C\x61\xA2\xA3\x99\x89\x95\x87\x6E\x4C\x61\x97\x93\x89\xA2\xA3\x6E",
         "€"},
        {"XML of a Turkish mainframe, with quotation marks of its own",
         "\x4C\x6F\xA7\x94\x93\x40\xA5\x85\x99\xA2\x89\x96\x95\x7E\xFC\xF1\x4B\xF0\xFC\x40\x85\x95\x83\x96"
         "\x84\x89\x95\x87\x7E\xFC\xC9\xC2\xD4\xF1\xF0\xF2\xF6\xFC\x6F\x6E\x4C\x97\x93\x89\xA2\xA3\x6E\x4C"
         "\xA2\xA3\x99\x89\x95\x87\x6E\x81\xD0\x4C\x61\xA2\xA3\x99\x89\x95\x87\x6E\x4C\x61\x97\x93\x89\xA2"
         "\xA3\x6E",
         "ağ"},
        {"XML of a Japanese mainframe, with letters of its own",
         "\x4C\x6F\xB7\x75\x74\x40\xB5\x66\x9B\xAB\x71\x77\x76\x7E\x7F\xF1\x4B\xF0\x7F\x40\x66\x76\x64\x77"
         "\x65\x71\x76\x68\x7E\x7F\xC9\xC2\xD4\xF2\xF9\xF0\x7F\x6F\x6E\x4C\x78\x74\x71\xAB\xB3\x6E\x4C\xAB"
         "\xB3\x9B\x71\x76\x68\x6E\xC1\x76\x76\x4C\x61\xAB\xB3\x9B\x71\x76\x68\x6E\x4C\x61\x78\x74\x71\xAB"
         "\xB3\x6E",
         "Ann"},
        {"XML in an escaping set that is announced at the head",
         "\x1B$)C<?xml version='1.0' encoding='ISO-2022-KR'?><plist><string>\x0E>`\x0F</string></plist>", "약"},
        {"XML in compressed Unicode, with its mark",
         "\x0E\xFE\xFF<?xml version='1.0' encoding='SCSU'?><plist><string>\xE9</string></plist>", "é"},
        {"XML in UTF-16, big-endian", utf16(xml, true), "é😀"},
        {"XML in UTF-16, little-endian", utf16(xml, false), "é😀"},
        {"XML in UTF-16 without a mark", utf16(xml.substr(1), false), "é😀"},
        {"XML in UTF-16 without a mark, big-endian", utf16(xml.substr(1), true), "é😀"},
        {"old-style", "(x)", list({"x"})},
        {"old-style data", "<0fbd77>", bytes({0x0F, 0xBD, 0x77})},
        {"old-style data of nothing", " < >", Data()},
        {"old-style after a mark", "\xEF\xBB\xBF(x)", list({"x"})},
        {"old-style in UTF-16, big-endian", utf16(oldStyle, true), list({"é😀"})},
        {"old-style in UTF-16, little-endian", utf16(oldStyle, false), list({"é😀"})},
        {"UTF-16 of an odd length", utf16(oldStyle, false) + ")", std::nullopt},
        {"localised texts", "\"Add\" = \"Hinzufügen\";", Record{{"Add", "Hinzufügen"}}},
        {"nothing", "", std::nullopt},
        {"only a mark", "\xEF\xBB\xBF", std::nullopt},
        {"zeros", std::string(100, '\0'), std::nullopt},
        {"one bracket", "<", std::nullopt},
        {"a picture", "\x89PNG\r\n\x1A\n", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(readPropertyList(row.bytes), row.value);
    }
}

TEST(PropertyList, WritesEveryKindAndReadsItBack) {
    const std::optional<std::string> written = writePropertyList(everyKind());
    ASSERT_TRUE(written);
    EXPECT_EQ(readPropertyList(*written), everyKind());
}

TEST(PropertyList, KeepsANumberThatIsNoneBitForBit) {
    const std::string file = BinaryFile{{raw("\x23\x7F\xF8\0\0\0\0\x12\x34")}}.bytes();
    const std::optional<Value> value = readPropertyList(file);
    ASSERT_TRUE(value && value->as<double>());
    EXPECT_TRUE(std::isnan(*value->as<double>()));
    EXPECT_EQ(writePropertyList(*value)->substr(8, 9), file.substr(8, 9));
}

TEST(PropertyList, KeepsUnpairedSurrogates) {
    const std::string file = BinaryFile{{raw("\x63\xDE\x00\xD8\x3D\x00\x41")}}.bytes();
    const std::optional<Value> value = readPropertyList(file);
    ASSERT_TRUE(value);
    EXPECT_EQ(writePropertyList(*value)->substr(8, 7), file.substr(8, 7));
}

// Each record of a history is asked whether a key of it occurs twice; only then are its fields written anew.
TEST(PropertyList, KeepsTheRecordsWhoseKeysOccurOnce) {
    for (const int count : {0, 1, 18, 30}) {
        Record fields;
        for (int number = 0; number < count; ++number) {
            fields.append(std::to_string(number), number);
        }
        EXPECT_EQ(recordKeepingLastValues(fields).identity(), fields.identity()) << count;
        fields.append("0", "last");
        const Record kept = recordKeepingLastValues(fields);
        EXPECT_EQ(kept.size(), static_cast<std::size_t>(std::max(count, 1)));
        EXPECT_EQ(kept.begin()->second, Value("last"));
    }
}

TEST(PropertyList, IsNullForEveryTruncation) {
    const std::vector<std::pair<const char*, std::string>> files = {
        {"binary", *writePropertyList(everyKind())},
        {"XML",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//x\" \"http://x\">\n"
         "<plist version=\"1.0\"><array><dict><key>k</key><string>v &amp; "
         "é</string><key>d</key><data>AAEC</data></dict>"
         "<integer>-12</integer><real>1.5</real><date>2024-03-31T00:00:00Z</date><true/><array/></array></plist>"},
        {"XML in UTF-16",
         utf16(u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><plist><string>é😀</string></plist>", true)},
        {"old-style", "// c\n( { k = \"v \\U00e6\\341\"; 'l m' = <0f bd>; /* c */ n; }, word, () )"},
        {"old-style in UTF-16", utf16(u"\uFEFF{ k = (\"é😀\"); }", false)},
    };
    for (const auto& [name, bytes] : files) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(readPropertyList(bytes));
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            ASSERT_FALSE(readPropertyList(std::string_view(bytes).substr(0, length))) << length << " bytes";
        }
    }
}

TEST(PropertyList, NeverCrashesOnAChangedByte) {
    const std::string good = *writePropertyList(makeHousehold(4).history[0]);
    std::size_t accepted = 0;
    for (std::size_t position = 0; position < good.size(); ++position) {
        for (int value = 0; value < 256; ++value) {
            std::string changed = good;
            changed[position] = static_cast<char>(value);
            const std::optional<Value> read = readPropertyList(changed);
            accepted += read && writePropertyList(*read) ? 1 : 0;
        }
    }
    EXPECT_GT(accepted, good.size());
}

TEST(PropertyList, GrowsWithTheNumberOfRecords) {
    const auto sizeOf = [](std::size_t count) {
        const Records records = makeHousehold(count).history;
        return writePropertyList(list({records.begin(), records.end()}))->size();
    };
    const std::size_t small = sizeOf(1000);
    const std::size_t large = sizeOf(10000);
    EXPECT_LT(large, 12 * small);
    EXPECT_LT(large, std::size_t{10000} * 150);
}

/// The history as an old-style list, as somebody would type it.
std::string oldStyle(const Records& records) {
    std::string text = "(\n";
    for (const Record& record : records) {
        text += "  {\n";
        for (const auto& [key, value] : record) {
            text += "    " + key.string() + " = ";
            if (const auto* number = value.as<std::int64_t>()) {
                text += std::to_string(*number);
            } else if (const Data* data = value.as<Data>()) {
                text += '<';
                for (const std::uint8_t byte : data->bytes()) {
                    text += "0123456789abcdef"[byte >> 4];
                    text += "0123456789abcdef"[byte & 15];
                }
                text += '>';
            } else {
                text += '"' + value.as<Text>()->string() + '"';
            }
            text += ";\n";
        }
        text += "  },\n";
    }
    return text + ")\n";
}

TEST(PropertyList, ReadsAHundredThousandHandWrittenRecords) {
    Records records = makeHousehold(100000).history;
    const std::optional<Value> read = readPropertyList(oldStyle(records));
    for (Record& record : records) {
        const Record numbers = record;
        for (const auto& [key, value] : numbers) {
            if (const auto* number = value.as<std::int64_t>()) {
                record.set(key, std::to_string(*number));  // the format knows no numbers
            }
        }
    }
    EXPECT_TRUE(read == list({records.begin(), records.end()}));
}

}  // namespace
}  // namespace kpx::test
