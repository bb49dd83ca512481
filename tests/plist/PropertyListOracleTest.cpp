#include "plist/PropertyList.h"
#include "tests/plist/PropertyListSamples.h"
#include "tests/support/HouseholdGenerator.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

// Python's plistlib, which nobody here wrote, reads our files and writes some for us.

namespace kpx::test {
namespace {

bool runOracle(const std::string& arguments) {
    return std::system(("python3 " KPX_SOURCE_FOLDER "/tests/support/plistlib_oracle.py " + arguments).c_str()) == 0;
}

struct Row {
    std::string literal;  // a Python expression
    Value value;
    bool isInXml = true;
};

std::vector<Row> rows() {
    std::vector<Row> rows = {
        {"[]", Array()},
        {"{}", Record()},
        {"'text'", "text"},
        {"''", ""},
        {"'Zo\\u00eb \\U0001F600 \\ufffc'", "Zoë 😀 \uFFFC"},
        {"'a & b < c > \\\" \\n\\t'", "a & b < c > \" \n\t"},
        {"'x' * 300", std::string(300, 'x')},
        {"'\\u00e9' * 300", [] {
             std::string text;
             for (int count = 0; count < 300; ++count) {
                 text += "é";
             }
             return Value(text);
         }()},
        {"True", true},
        {"False", false},
        {"b''", Data()},
        {"bytes(range(256)) * 3", [] {
             Data::Bytes all;
             for (int index = 0; index < 3 * 256; ++index) {
                 all.push_back(static_cast<std::uint8_t>(index));
             }
             return Value(Data(std::move(all)));
         }()},
        {"datetime(2001, 1, 1)", Date{0}},
        {"datetime(2024, 2, 29, 12, 30, 45)", Date::fromSecondsSince1970(1709209845)},
        {"datetime(1900, 1, 1)", Date::fromSecondsSince1970(-2208988800)},
        {"UID(7)", UniqueIdentifier{7}, false},
        {"UID(2**64 - 1)", UniqueIdentifier{~std::uint64_t{0}}, false},
        {"{'b': [1, {'c': [[], {}, [b'x']]}], 'a': 'b'}",
         Record{{"b", list({1, Record{{"c", list({Array(), Record(), list({bytes({'x'})})})}}})}, {"a", "b"}}},
        {"[['same'], ['same'], 1, True, 1.0, 0, False, 0.0]",
         list({list({"same"}), list({"same"}), 1, true, 1.0, 0, false, 0.0})},
        {"list(range(70000))", [] {
             std::vector<Value> numbers;
             for (int number = 0; number < 70000; ++number) {
                 numbers.emplace_back(number);
             }
             return list(std::move(numbers));
         }()},
    };
    for (const int bits : {0, 7, 8, 15, 16, 31, 32, 62, 63}) {
        const std::uint64_t power = std::uint64_t{1} << bits;
        for (const std::uint64_t number : {power - 1, power, power + 1}) {
            rows.push_back({std::to_string(number), number});
            if (number <= std::uint64_t{1} << 63) {
                rows.push_back({"-" + std::to_string(number), static_cast<std::int64_t>(~number + 1)});
            }
        }
    }
    rows.push_back({"2**64 - 1", ~std::uint64_t{0}});
    for (const char* real : {"0.1", "-2.5e-310", "1.7976931348623157e308", "5e-324", "123456789.123456789"}) {
        rows.push_back({real, std::strtod(real, nullptr)});
    }
    rows.push_back({"float('-inf')", -std::numeric_limits<double>::infinity()});
    return rows;
}

TEST(PropertyListOracle, AgreesOnEveryKindInBothDirections) {
    const TemporaryFolder folder;
    const std::vector<Row> all = rows();
    std::string literals;
    for (std::size_t index = 0; index < all.size(); ++index) {
        literals += all[index].literal + "\n";
        writeFile(folder.path() / (std::to_string(index) + ".ours"), *writePropertyList(all[index].value));
    }
    writeFile(folder.path() / "literals", literals);
    const std::string arguments = (folder.path() / "literals").string() + " " + folder.path().string();
    EXPECT_TRUE(runOracle("compare " + arguments));
    ASSERT_TRUE(runOracle("write " + arguments));
    for (std::size_t index = 0; index < all.size(); ++index) {
        SCOPED_TRACE(all[index].literal);
        const std::string file = folder.path() / std::to_string(index);
        EXPECT_EQ(readPropertyList(readFile(file + ".binary")), all[index].value);
        if (all[index].isInXml) {
            EXPECT_EQ(readPropertyList(readFile(file + ".xml")), all[index].value);
        }
    }
}

TEST(PropertyListOracle, RewritesAHundredThousandRecordsUnchanged) {
    const TemporaryFolder folder;
    const Records records = makeHousehold(100000).history;
    const Value history = list({records.begin(), records.end()});
    const std::string ours = folder.path() / "ours";
    writeFile(ours, *writePropertyList(history));
    ASSERT_TRUE(runOracle("rewrite " + ours + " " + ours + ".binary " + ours + ".xml"));
    EXPECT_TRUE(readPropertyList(readFile(ours + ".binary")) == history);
    EXPECT_TRUE(readPropertyList(readFile(ours + ".xml")) == history);
}

}  // namespace
}  // namespace kpx::test
