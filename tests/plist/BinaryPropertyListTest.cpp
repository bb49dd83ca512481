#include "plist/BinaryPropertyList.h"

#include "plist/BinaryPropertyListTable.h"
#include "plist/PropertyListLimits.h"
#include "tests/plist/PropertyListSamples.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace kpx::test {
namespace {

TEST(BinaryPropertyList, ReadsEveryFormOfAnObject) {
    struct Row {
        const char* name;
        std::string object;
        std::optional<Value> value;
    };
    const std::vector<Row> rows = {
        {"false", raw("\x08"), false},
        {"true", raw("\x09"), true},
        {"null has no value here", raw("\x00"), std::nullopt},
        {"1 byte", raw("\x10\xFF"), 255},
        {"2 bytes", raw("\x11\xFF\xFE"), 65534},
        {"4 bytes", raw("\x12\xFF\xFF\xFF\xFE"), std::int64_t{4294967294}},
        {"8 bytes", raw("\x13\x00\x00\x00\x01\x00\x00\x00\x00"), std::int64_t{4294967296}},
        {"8 bytes, negative", raw("\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"), -2},
        {"16 bytes, unsigned", raw("\x14\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), ~std::uint64_t{0}},
        {"16 bytes, small", raw("\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x05"), 5},
        {"16 bytes, negative", raw("\x14\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFD"), -3},
        {"16 bytes, wide", raw("\x14\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\x02"), WideInteger(1, 2)},
        {"16 bytes, wide and negative", raw("\x14\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F\0\0\0\0\0\0\0"),
         WideInteger(-1, 0x7F00000000000000)},
        {"32 bytes", raw("\x15") + std::string(32, '\0'), std::nullopt},
        {"short real", raw("\x22\x3F\x80\x00\x00"), 1.0},
        {"real", raw("\x23\xBF\xE0\0\0\0\0\0\0"), -0.5},
        {"real of 2 bytes", raw("\x21\0\0"), std::nullopt},
        {"date", raw("\x33\x40\x59\0\0\0\0\0\0"), Date{100}},
        {"date of 4 bytes", raw("\x32\0\0\0\0"), std::nullopt},
        {"data", raw("\x43\x01\x00\xFF"), bytes({1, 0, 255})},
        {"extended length", raw("\x4F\x10\x02\xAB\xCD"), bytes({0xAB, 0xCD})},
        {"length of 2 bytes", raw("\x4F\x11\x00\x01\xAB"), bytes({0xAB})},
        {"length of 4 bytes", raw("\x4F\x12\x00\x00\x00\x01\xAB"), bytes({0xAB})},
        {"length of 8 bytes", raw("\x4F\x13\0\0\0\0\0\0\0\x01\xAB"), bytes({0xAB})},
        {"length of 16 bytes", raw("\x4F\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x01\xAB"), std::nullopt},
        {"length that is no integer", raw("\x4F\x33\xAB"), std::nullopt},
        {"length beyond the end", raw("\x4F\x10\x03\xAB\xCD"), std::nullopt},
        {"length beyond everything", raw("\x4F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xAB"), std::nullopt},
        {"ASCII", raw("\x53yes"), "yes"},
        {"ASCII that is none", raw("\x51\xE9"), std::nullopt},
        {"ASCII beyond the end", raw("\x54yes"), std::nullopt},
        {"UTF-16", raw("\x62\x00\x41\x00\xE9"), "A\u00E9"},
        {"surrogate pair", raw("\x62\xD8\x3D\xDE\x00"), "\U0001F600"},
        {"unpaired high surrogate", raw("\x62\xD8\x3D\x00\x41"), "\xED\xA0\xBD\x41"},
        {"unpaired low surrogate", raw("\x61\xDE\x00"), "\xED\xB8\x80"},
        {"surrogates the wrong way round", raw("\x62\xDE\x00\xD8\x3D"), "\xED\xB8\x80\xED\xA0\xBD"},
        {"UTF-16 beyond the end", raw("\x62\x00\x41\x00"), std::nullopt},
        {"UTF-16 of twice too many units", raw("\x6F\x13\x80\0\0\0\0\0\0\0\0\0"), std::nullopt},
        {"unique identifier", raw("\x80\x07"), UniqueIdentifier{7}},
        {"unique identifier of 3 bytes", raw("\x82\x01\x00\x00"), UniqueIdentifier{65536}},
        {"unique identifier of 9 bytes", raw("\x88") + std::string(9, '\1'), std::nullopt},
        {"set", raw("\xC0"), std::nullopt},
        {"unknown marker", raw("\x70"), std::nullopt},
        {"empty array", raw("\xA0"), Array()},
        {"empty dictionary", raw("\xD0"), Record()},
        {"array that holds itself", raw("\xA1\x00"), std::nullopt},
        {"array of an object that is not there", raw("\xA1\x01"), std::nullopt},
        {"array beyond the end", raw("\xA2\x00"), std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(readBinaryPropertyList(BinaryFile{{row.object}}.bytes()), row.value);
    }
}

TEST(BinaryPropertyList, ReadsReferencesAndOffsetsOfEverySize) {
    for (unsigned offsetSize = 1; offsetSize <= 8; ++offsetSize) {
        for (unsigned referenceSize = 1; referenceSize <= 8; ++referenceSize) {
            SCOPED_TRACE(testing::Message() << "offsets of " << offsetSize << ", references of " << referenceSize);
            BinaryFile file{{}, offsetSize, referenceSize, 3};
            const auto reference = [&](std::uint64_t object) { return BinaryFile::number(object, referenceSize); };
            file.objects = {raw("\x51k"), raw("\x10\x05"), raw("\xD1") + reference(0) + reference(1),
                            raw("\xA2") + reference(2) + reference(1)};
            EXPECT_EQ(readBinaryPropertyList(file.bytes()), list({Record{{"k", 5}}, 5}));
        }
    }
}

TEST(BinaryPropertyList, RefusesDictionariesThatAreNone) {
    struct Row {
        const char* name;
        std::vector<std::string> objects;
        std::optional<Value> value;
    };
    const std::vector<Row> rows = {
        {"a key that is no text", {raw("\xD1\x01\x02"), raw("\x10\x05"), raw("\x51v")}, std::nullopt},
        {"a key that is the dictionary", {raw("\xD1\x00\x01"), raw("\x51v")}, std::nullopt},
        {"a key without a value", {raw("\xD2\x01\x02\x01"), raw("\x51k"), raw("\x51v")}, std::nullopt},
        {"the last of two values of a key, in the place of the first",
         {raw("\xD3\x01\x02\x03\x04\x02\x05"), raw("\x51k"), raw("\x51m"), raw("\x51k"), raw("\x10\x01"),
          raw("\x10\x02")},
         Record{{"k", 2}, {"m", "m"}}},
        {"a cycle of three", {raw("\xA1\x01"), raw("\xD1\x02\x00"), raw("\x51k")}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(readBinaryPropertyList(BinaryFile{row.objects}.bytes()), row.value);
    }
}

TEST(BinaryPropertyList, KeepsTheFirstPlaceOfAKeyThatOccursTwice) {
    const BinaryFile file{{raw("\xD3\x01\x02\x01\x01\x02\x02"), raw("\x51k"), raw("\x51m")}};
    const std::optional<Value> value = readBinaryPropertyList(file.bytes());
    ASSERT_TRUE(value && value->as<Record>());
    EXPECT_EQ(value->as<Record>()->begin()->first, Text("k"));
    EXPECT_EQ(value->as<Record>()->size(), 2U);
}

TEST(BinaryPropertyList, RefusesTrailersThatDoNotFit) {
    const BinaryFile good{{raw("\x10\x05")}};
    const std::string head = raw("bplist00\x10\x05");
    const std::string whole = head + BinaryFile::number(8, 2);
    struct Row {
        const char* name;
        std::string bytes;
    };
    const auto trailer = [&](unsigned offsetSize, unsigned referenceSize, std::uint64_t count, std::uint64_t root,
                             std::uint64_t table) {
        return BinaryFile{{}, offsetSize, referenceSize, root}.trailer(count, table);
    };
    ASSERT_EQ(readBinaryPropertyList(whole + trailer(2, 1, 1, 0, 10)), Value(5));
    const std::vector<Row> rows = {
        {"no offset size", whole + trailer(0, 1, 1, 0, 10)},
        {"offset size 9", whole + trailer(9, 1, 1, 0, 10)},
        {"no reference size", whole + trailer(2, 0, 1, 0, 10)},
        {"reference size 9", whole + trailer(2, 9, 1, 0, 10)},
        {"no objects", whole + trailer(2, 1, 0, 0, 10)},
        {"more objects than offsets", whole + trailer(2, 1, 2, 0, 10)},
        {"so many objects that the table overflows", whole + trailer(2, 1, (std::uint64_t{1} << 63) + 1, 0, 10)},
        {"root beyond the objects", whole + trailer(2, 1, 1, 1, 10)},
        {"table beyond the file", whole + trailer(2, 1, 1, 0, 1000)},
        {"table beyond everything", whole + trailer(2, 1, 1, 0, ~std::uint64_t{0})},
        {"table in the header", whole + trailer(2, 1, 1, 0, 4)},
        {"offset in the header", head + BinaryFile::number(7, 2) + trailer(2, 1, 1, 0, 10)},
        {"offset in the table", head + BinaryFile::number(10, 2) + trailer(2, 1, 1, 0, 10)},
        {"offset beyond the file", head + BinaryFile::number(60000, 2) + trailer(2, 1, 1, 0, 10)},
        {"bytes after the trailer", good.bytes() + "\n"},
        {"another version", "bplist15" + good.bytes().substr(8)},
        {"only a header", "bplist00"},
        {"nothing", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(readBinaryPropertyList(row.bytes), std::nullopt);
    }
}

std::string nestedArrays(std::size_t depth) {
    BinaryFile file{{}, 4, 2, 0};
    for (std::size_t level = 1; level < depth; ++level) {
        file.objects.push_back(raw("\xA1") + BinaryFile::number(level, 2));
    }
    file.objects.push_back(raw("\xA0"));
    return file.bytes();
}

TEST(BinaryPropertyList, BoundsNesting) {
    EXPECT_TRUE(readBinaryPropertyList(nestedArrays(maximumNesting)));
    EXPECT_FALSE(readBinaryPropertyList(nestedArrays(maximumNesting + 1)));
    EXPECT_FALSE(readBinaryPropertyList(nestedArrays(60000)));
}

TEST(BinaryPropertyList, BoundsNestingAlsoOfAnArrayFirstMetHigherUp) {
    // The root names the deep array directly and again below another deep one.
    BinaryFile file{{}, 4, 2, 0};
    const std::size_t half = maximumNesting / 2 + 10;
    file.objects.push_back(raw("\xA2") + BinaryFile::number(half, 2) + BinaryFile::number(1, 2));
    for (std::size_t level = 1; level < 2 * half; ++level) {
        file.objects.push_back(raw("\xA1") + BinaryFile::number(level + 1, 2));
    }
    file.objects.push_back(raw("\xA0"));
    EXPECT_FALSE(readBinaryPropertyList(file.bytes()));
}

/// Each of so many arrays names the next one twice.
std::string doubling(std::size_t levels) {
    BinaryFile file{{}, 4, 2, 0};
    for (std::size_t level = 1; level < levels; ++level) {
        file.objects.push_back(raw("\xA2") + BinaryFile::number(level, 2) + BinaryFile::number(level, 2));
    }
    file.objects.push_back(raw("\xA0"));
    return file.bytes();
}

// Equal texts are found by it, wherever their bytes lie.
TEST(BinaryPropertyList, HashesEachByteAndNothingElse) {
    for (std::size_t length = 0; length <= 40; ++length) {
        SCOPED_TRACE(length);
        const std::string bytes(length, 'b');
        const std::string around = std::string(60, 'x') + bytes + "x";
        const std::uint64_t hash = hashOfBytes(bytes);
        EXPECT_EQ(hashOfBytes(std::string_view(around).substr(60, length)), hash);
        EXPECT_NE(hashOfBytes(bytes + "b"), hash);
        for (std::size_t place = 0; place < length; ++place) {
            std::string other = bytes;
            other[place] = 'c';
            EXPECT_NE(hashOfBytes(other), hash) << place;
        }
    }
}

TEST(BinaryPropertyList, SharesWhatIsReferredToTwice) {
    const std::optional<Value> value = readBinaryPropertyList(doubling(15));
    ASSERT_TRUE(value);
    EXPECT_EQ(value, readBinaryPropertyList(doubling(15)));
    const std::optional<std::string> written = writeBinaryPropertyList(*value);
    ASSERT_TRUE(written);
    EXPECT_LT(written->size(), 200U);
    EXPECT_EQ(readBinaryPropertyList(*written), value);
}

TEST(BinaryPropertyList, RefusesWhatMultipliesWithoutEnd) {
    EXPECT_TRUE(readBinaryPropertyList(doubling(19)));
    EXPECT_FALSE(readBinaryPropertyList(doubling(24)));
    EXPECT_FALSE(readBinaryPropertyList(doubling(300)));
}

TEST(BinaryPropertyList, ReadsAListThatRepeatsOneRecord) {
    BinaryFile file{{raw("\xAF\x12\x00\x01\x00\x00") + std::string(65536, '\1'), raw("\xD2\x02\x03\x03\x02"),
                     raw("\x51k"), raw("\x51m")},
                    4,
                    1,
                    0};
    const std::optional<Value> value = readBinaryPropertyList(file.bytes());
    ASSERT_TRUE(value && value->as<Array>());
    EXPECT_EQ(value->as<Array>()->values().size(), 65536U);
}

TEST(BinaryPropertyList, RefusesObjectsThatOverlap) {
    // Every one of ten thousand arrays would be made of all the bytes behind it.
    std::string file = "bplist00";
    std::string offsets;
    constexpr std::size_t count = 10000;
    for (std::size_t index = 0; index < count; ++index) {
        offsets += BinaryFile::number(file.size(), 4);
        file += raw("\xAF\x11\x40\x00");
    }
    file += std::string(0x4000 * 2, '\0');
    const std::size_t table = file.size();
    file += offsets + BinaryFile{{}, 4, 2, 0}.trailer(count, table);
    EXPECT_FALSE(readBinaryPropertyList(file));
}

TEST(BinaryPropertyList, RefusesDataThatLiesInsideOtherData) {
    // An array of two pieces of data, the second at the offset given; every reference is in range.
    const auto list = [](const std::string& objects, std::uint64_t second) {
        const std::string offsets =
            BinaryFile::number(8, 1) + BinaryFile::number(11, 1) + BinaryFile::number(second, 1);
        return "bplist00" + objects + offsets + BinaryFile{{}, 1, 1, 0}.trailer(3, 8 + objects.size());
    };
    EXPECT_EQ(readBinaryPropertyList(list(raw("\xA2\x01\x02\x44\x42\x01\x02\x03\x42\x01\x02"), 16)),
              Value(Array({bytes({0x42, 1, 2, 3}), bytes({1, 2})})));
    EXPECT_EQ(readBinaryPropertyList(list(raw("\xA2\x01\x02\x44\x42\x01\x02\x03"), 12)), std::nullopt);
}

TEST(BinaryPropertyList, WritesTheSmallestForms) {
    struct Row {
        const char* name;
        Value value;
        std::string objects;  // what stands between header and offsets
    };
    const std::vector<Row> rows = {
        {"zero", 0, raw("\x10\x00")},
        {"largest of 1 byte", 255, raw("\x10\xFF")},
        {"smallest of 2 bytes", 256, raw("\x11\x01\x00")},
        {"smallest of 4 bytes", 65536, raw("\x12\x00\x01\x00\x00")},
        {"smallest of 8 bytes", std::int64_t{1} << 32, raw("\x13\0\0\0\x01\0\0\0\0")},
        {"negative", -1, raw("\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF")},
        {"unsigned", std::uint64_t{1} << 63, raw("\x14\0\0\0\0\0\0\0\0\x80\0\0\0\0\0\0\0")},
        {"wide", WideInteger(-2, 3), raw("\x14\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE\0\0\0\0\0\0\0\x03")},
        {"equal wide ones once", list({WideInteger(1, 0), WideInteger(1, 0), WideInteger(0, ~std::uint64_t{0} - 1)}),
         raw("\xA3\x01\x01\x02\x14\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0"
             "\x14\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE")},
        {"real", 1.0, raw("\x23\x3F\xF0\0\0\0\0\0\0")},
        {"date", Date{100}, raw("\x33\x40\x59\0\0\0\0\0\0")},
        {"true", true, raw("\x09")},
        {"14 characters", "aaaaaaaaaaaaaa", raw("\x5E") + std::string(14, 'a')},
        {"15 characters", "aaaaaaaaaaaaaaa", raw("\x5F\x10\x0F") + std::string(15, 'a')},
        {"not ASCII", "é😀", raw("\x63\x00\xE9\xD8\x3D\xDE\x00")},
        {"a byte that is no UTF-8", "a\xFFz", raw("\x63\x00\x61\xFF\xFD\x00\x7A")},
        {"unpaired surrogate", "\xED\xA0\xBD", raw("\x61\xD8\x3D")},
        {"unique identifier", UniqueIdentifier{256}, raw("\x81\x01\x00")},
        {"equal scalars once", list({"a", 7, "a", 7, bytes({7}), bytes({7})}),
         raw("\xA6\x01\x02\x01\x02\x03\x03\x51\x61\x10\x07\x41\x07")},
        {"a text and data of the same bytes", list({"a", bytes({'a'})}), raw("\xA2\x01\x02\x51\x61\x41\x61")},
        {"numbers of the same bits", list({1, true, UniqueIdentifier{1}}), raw("\xA3\x01\x02\x03\x10\x01\x09\x80\x01")},
        {"keys before values", Record{{"k", "v"}, {"l", list({"k"})}},
         raw("\xD2\x01\x02\x03\x04\x51\x6B\x51\x6C\x51\x76\xA1\x01")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::optional<std::string> written = writeBinaryPropertyList(row.value);
        ASSERT_TRUE(written && written->size() > 8 + 32);
        const std::size_t table = 8 + row.objects.size();
        EXPECT_EQ(written->substr(8, row.objects.size()), row.objects);
        EXPECT_EQ(written->substr(written->size() - 8), BinaryFile::number(table, 8));
    }
}

TEST(BinaryPropertyList, UsesReferencesAsLargeAsNeeded) {
    for (const std::size_t count : {1, 255, 256, 257, 65535, 65536, 65537}) {
        SCOPED_TRACE(count);
        std::vector<Value> values;
        for (std::size_t index = 0; index < count; ++index) {
            values.emplace_back(static_cast<std::int64_t>(index * 7));
        }
        const std::optional<std::string> written = writeBinaryPropertyList(list(values));
        ASSERT_TRUE(written);
        const int referenceSize = (*written)[written->size() - 25];
        EXPECT_EQ(referenceSize, count < 256 ? 1 : count < 65536 ? 2 : 3);
        EXPECT_EQ(readBinaryPropertyList(*written), list(values));
    }
}

TEST(BinaryPropertyList, RefusesToWriteWhatCannotBeReadBack) {
    Value nested = Array();
    for (std::uint32_t level = 1; level < maximumNesting; ++level) {
        nested = list({nested});
    }
    const std::optional<std::string> written = writeBinaryPropertyList(nested);
    ASSERT_TRUE(written);
    EXPECT_TRUE(readBinaryPropertyList(*written));
    EXPECT_FALSE(writeBinaryPropertyList(list({nested})));

    Value doubled = Array();
    for (int level = 0; level < 40; ++level) {
        doubled = list({doubled, doubled});
    }
    EXPECT_FALSE(writeBinaryPropertyList(doubled));
}

TEST(BinaryPropertyList, WritesAVeryLongTextSharedByManyPlacesOnce) {
    const Text text(std::string(1 << 20, 'n'));
    const Data data(Data::Bytes(1 << 20, 1));
    std::vector<Value> values;
    for (int index = 0; index < 20000; ++index) {
        values.emplace_back(text);
        values.emplace_back(data);
    }
    const std::optional<std::string> written = writeBinaryPropertyList(list(values));
    ASSERT_TRUE(written);
    EXPECT_LT(written->size(), (std::size_t{2} << 20) + 50000);
}

}  // namespace
}  // namespace kpx::test
