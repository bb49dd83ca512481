#include "core/Predicate.h"

#include "core/TextPattern.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

/// The positions of the matching records; none when the text does not parse.
std::optional<std::vector<int>> kept(std::string_view format, const Records& records,
                                     std::vector<Value> arguments = {}) {
    const std::optional<Predicate> predicate = Predicate::withFormat(format, std::move(arguments));
    if (!predicate) {
        return std::nullopt;
    }
    std::vector<int> positions;
    for (std::size_t index = 0; index < records.size(); ++index) {
        if (predicate->matches(records[index])) {
            positions.push_back(static_cast<int>(index));
        }
    }
    return positions;
}

const Records records = {
    Record({{"MHPatientKey", "Ann"}, {"MHDrugKey", "Aspirin"}, {"MHRefillsKey", 3}, {"date", Date{100}}}),
    Record({{"MHPatientKey", "ann"}, {"MHDrugKey", "Zocor"}, {"MHRefillsKey", 3.0}, {"date", Date{200}}}),
    Record({{"MHPatientKey", "Bob"}, {"MHDrugKey", "\u00C4spirin"}, {"MHRefillsKey", "3"}, {"date", "200"}}),
    Record({{"MHPatientKey", "%@"}, {"MHRefillsKey", 10}, {"date", Date{300}}}),
    Record({{"MHPatientKey", "a\\b"}, {"MHDrugKey", "Ann"}, {"MHRefillsKey", -1}}),
};

TEST(Predicate, Evaluates) {
    struct Row {
        std::string format;
        std::vector<Value> arguments;
        std::vector<int> positions;
    };
    const std::vector<Row> rows = {
        {"MHPatientKey == \"Ann\"", {}, {0}},
        {"MHPatientKey == 'Ann'", {}, {0}},
        {"MHPatientKey = \"Ann\"", {}, {0}},
        {"MHPatientKey==\"Ann\"AND MHDrugKey==\"Aspirin\"", {}, {0}},
        {"\"Ann\" == MHPatientKey", {}, {0}},
        {"MHPatientKey == %@", {"ann"}, {1}},
        {"%K == %@", {"MHPatientKey", "Bob"}, {2}},
        {"%K == %K", {"MHPatientKey", "MHPatientKey"}, {0, 1, 2, 3, 4}},
        {"MHPatientKey == \"%@\"", {"Ann"}, {3}},
        {"MHPatientKey == %@", {"%@"}, {3}},
        {"MHPatientKey == \"a\\b\"", {}, {4}},
        {"MHPatientKey == %@", {"a\\b"}, {4}},
        {"MHPatientKey == %@", {"Ann", "surplus", 3}, {0}},
        {"MHPatientKey == \"\"", {}, {}},
        {"MHPatientKey LIKE[cd] %@", {"*"}, {0, 1, 2, 3, 4}},
        {"MHDrugKey LIKE[cd] \"*\" ", {}, {0, 1, 2, 4}},
        {"MHPatientKey LIKE[cd] \"ANN\"", {}, {0, 1}},
        {"MHPatientKey like[dc] \"ANN\"", {}, {0, 1}},
        {"MHPatientKey LIKE[c] \"a*\"", {}, {0, 1, 4}},
        {"MHPatientKey LIKE \"a*\"", {}, {1, 4}},
        {"MHDrugKey LIKE[cd] \"aspirin\"", {}, {0, 2}},
        {"MHDrugKey LIKE[c] \"aspirin\"", {}, {0}},
        {"MHDrugKey LIKE[d] \"Aspirin\"", {}, {0, 2}},
        {"MHPatientKey LIKE[cd] \"a\\b\"", {}, {4}},
        {"MHPatientKey LIKE[cd] \"?nn\"", {}, {0, 1}},
        {"MHPatientKey LIKE[cd] MHPatientKey", {}, {0, 1, 2, 3, 4}},
        {"MHRefillsKey LIKE[cd] \"*\"", {}, {0, 1, 2, 3, 4}},
        {"MHRefillsKey LIKE[cd] \"3*\"", {}, {2}},
        {"MHPatientKey == \"Ann\" AND MHDrugKey == \"Zocor\"", {}, {}},
        {"MHPatientKey  LIKE[cd]   \"*\"   AND   MHDrugKey == \"Zocor\"  ", {}, {1}},
        {"\tMHPatientKey == \"Ann\"\nand MHDrugKey == \"Aspirin\"\r\n", {}, {0}},
        {"MHPatientKey == %@ And MHDrugKey == %@", {"Ann", "Aspirin"}, {0}},
        {"MHRefillsKey == 3", {}, {0, 1}},
        {"MHRefillsKey == 3.0", {}, {0, 1}},
        {"MHRefillsKey == %@", {3}, {0, 1}},
        {"MHRefillsKey == \"3\"", {}, {2}},
        {"MHRefillsKey == %@", {"3"}, {2}},
        {"MHRefillsKey >= 3", {}, {0, 1, 3}},
        {"MHRefillsKey <= 3.5", {}, {0, 1, 4}},
        {"MHRefillsKey == -1", {}, {4}},
        {"MHRefillsKey >= \"3\"", {}, {2}},
        {"MHRefillsKey >= -1 AND MHRefillsKey <= 3", {}, {0, 1, 4}},
        {"date >= %@ AND date <= %@", {Date{100}, Date{200}}, {0, 1}},
        {"date >= %@ AND date <= %@", {Date{100.5}, Date{199.5}}, {}},
        {"date >= %@", {Date{300}}, {3}},
        {"date == %@", {Date{200}}, {1}},
        {"date >= %@", {100}, {}},
        {"date >= \"200\"", {}, {2}},
        {"MHPatientKey >= \"Bob\"", {}, {1, 2, 4}},
        {"absent == \"Ann\"", {}, {}},
        {"absent == absent", {}, {}},
        {"absent LIKE[cd] \"*\"", {}, {}},
        {"1 == 1", {}, {0, 1, 2, 3, 4}},
        {"\"a\" == \"b\"", {}, {}},
        // The four forms in which the program builds its tests.
        {"MHPatientKey LIKE[cd] %@ AND MHDrugKey LIKE[cd] %@ ", {"*", "*"}, {0, 1, 2, 4}},
        {"MHPatientKey == %@ AND MHDrugKey == %@", {"Ann", "Aspirin"}, {0}},
        {"MHPatientKey LIKE[cd] \"*\"  AND MHDrugKey == \"Zocor\"   AND date >= %@ AND date <= %@",
         {Date{0}, Date{900}},
         {1}},
        {"MHPatientKey == \"Ann\" AND MHDrugKey == \"Aspirin\" AND MHRefillsKey == 3", {}, {0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(kept(row.format, records, row.arguments), row.positions);
    }
}

TEST(Predicate, RefusesWhatDoesNotParse) {
    struct Row {
        std::string format;
        std::vector<Value> arguments;
    };
    const std::vector<Row> rows = {
        {"", {}},
        {"   ", {}},
        {"MHPatientKey", {}},
        {"MHPatientKey ==", {}},
        {"== \"Ann\"", {}},
        {"MHPatientKey == \"Ann", {}},
        {"MHPatientKey == 'Ann\"", {}},
        {"MHPatientKey == \"An\"n\"", {}},
        {"MHPatientKey == \"Ann\" AND", {}},
        {"AND MHPatientKey == \"Ann\"", {}},
        {"MHPatientKey == \"Ann\" OR MHPatientKey == \"Bob\"", {}},
        {"NOT MHPatientKey == \"Ann\"", {}},
        {"MHPatientKey == \"Ann\" MHDrugKey == \"Zocor\"", {}},
        {"MHPatientKey == \"Ann\" ANDMHDrugKey == \"Zocor\"", {}},
        {"MHPatientKey == \"Ann\" AND AND MHDrugKey == \"Zocor\"", {}},
        {"MHPatientKey != \"Ann\"", {}},
        {"MHPatientKey > \"Ann\"", {}},
        {"MHPatientKey === \"Ann\"", {}},
        {"MHPatientKey LIKE[x] \"Ann\"", {}},
        {"MHPatientKey LIKE[] \"Ann\"", {}},
        {"MHPatientKey LIKE[cd \"Ann\"", {}},
        {"MHPatientKey LIKE", {}},
        {"MHPatientKey LIKE LIKE", {}},
        {"MHPatientKey ==[c] \"Ann\"", {}},
        {"MHPatientKey == %@", {}},
        {"%K == %@", {"MHPatientKey"}},
        {"%K == 3", {5}},
        {"%K == 3", {}},
        {"MHPatientKey == %d", {5}},
        {"MHPatientKey == %", {5}},
        {"a == 3x", {}},
        {"a == -", {}},
        {"a == .", {}},
        {"a == 0x10", {}},
        {"a == +3", {}},
        {"a == 1e999", {}},
        {"(a == 1)", {}},
        {"a == 1;", {}},
        {"a == \"b\"c", {}},
        {"\"", {}},
        {"'", {}},
        {std::string("a == 1\0", 7), {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(kept(row.format, records, row.arguments), std::nullopt);
        EXPECT_TRUE(filteredRecords(records, Predicate::withFormat(row.format, row.arguments)).empty());
    }
}

TEST(Predicate, EveryPrefixOfATextIsHarmless) {
    const std::string format = "MHPatientKey LIKE[cd] \"\xff*\" AND date >= %@ AND %K == 'x' AND a == -1.5e3";
    for (std::size_t length = 0; length <= format.size(); ++length) {
        const auto positions = kept(format.substr(0, length), records, {Date{0}, "MHDrugKey"});
        EXPECT_TRUE(!positions || positions->size() <= records.size());
    }
}

TEST(Predicate, FiltersInOrder) {
    const Records filtered = filteredRecords(records, Predicate::withFormat("MHRefillsKey == 3"));
    ASSERT_EQ(filtered.size(), 2U);
    EXPECT_EQ(filtered[0], records[0]);
    EXPECT_EQ(filtered[1], records[1]);
    EXPECT_TRUE(filteredRecords(records, std::nullopt).empty());
    EXPECT_TRUE(filteredRecords({}, Predicate::withFormat("1 == 1")).empty());
}

TEST(TextPattern, Matches) {
    struct Row {
        std::string pattern;
        std::string text;
        bool folded;  ///< with both foldings
        bool exact;   ///< with none
    };
    const std::vector<Row> rows = {
        {"*", "", true, true},
        {"*", "anything", true, true},
        {"**", "", true, true},
        {"", "", true, true},
        {"", "a", false, false},
        {"?", "", false, false},
        {"?", "a", true, true},
        {"?", "ab", false, false},
        {"??", "ab", true, true},
        {"a*", "abc", true, true},
        {"*c", "abc", true, true},
        {"*b*", "abc", true, true},
        {"a*c", "abcbc", true, true},
        {"a*d", "abcbc", false, false},
        {"a*b?c", "aXbXbYc", true, true},
        {"*?", "", false, false},
        {"?*", "a", true, true},
        {"*ab", "aab", true, true},
        {"ANN", "ann", true, false},
        {"muller", "M\u00FCller", true, false},
        {"M\u00FCller", "MULLER", true, false},
        {"M\u00FCller", "Mu\u0308ller", true, false},
        {"STRASSE", "stra\u00DFe", true, false},
        {"?", "\u00E9", true, true},
        {"?", "e\u0301", true, false},
        {"?", "\uAC01", true, true},
        {"?", "\U0001F48A", true, true},
        {"\\*", "\\abc", true, true},
        {"\\*", "*", false, false},
        {"\u0391", "\u03B1", true, false},
        {"\u043C\u0438\u0439", "\u041C\u0418\u0419", true, false},
        {"\xff", "\xff", true, true},
        {"?", "\xff", true, true},
        {std::string("a\0b", 3), std::string("A\0B", 3), true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pattern + " | " + row.text);
        EXPECT_EQ(TextPattern(row.pattern, {true, true}).matches(row.text), row.folded);
        EXPECT_EQ(TextPattern(row.pattern, {}).matches(row.text), row.exact);
    }
    EXPECT_FALSE(TextPattern("\xff", {}).matches("\xfe"));
}

TEST(TextPattern, ManyWildcardsAreNoTrap) {
    std::string pattern;
    for (int index = 0; index < 200; ++index) {
        pattern += "*a";
    }
    const std::string text(20000, 'a');
    EXPECT_FALSE(TextPattern(pattern + "b", {true, true}).matches(text));
    EXPECT_TRUE(TextPattern(pattern, {true, true}).matches(text));
}

}  // namespace
}  // namespace kpx
