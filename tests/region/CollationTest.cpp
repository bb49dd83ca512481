#include "region/Collation.h"

#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace kpx {
namespace {

using enum Comparison;

const std::vector<Comparison> allComparisons = {Plain, LocalizedCaseInsensitive, LocalizedStandard};

/// Texts that are no UTF-8, or look alike, or are equal to a collator without being the same.
const std::vector<std::string> oddTexts = {"",
                                           " ",
                                           "a",
                                           "A",
                                           "\u00E4",
                                           "a\u0308",
                                           "ann",
                                           "Ann",
                                           "ANN",
                                           "Ann 9",
                                           "Ann 09",
                                           "Ann 009",
                                           "Ann 10",
                                           "Bob",
                                           "\xff",
                                           "\xfe",
                                           "\xed\xa0\x80",
                                           "\xed\xb0\x80",
                                           "a\xff",
                                           "\xc3",
                                           "\xf0\x9f\x92",
                                           "\U0001F48A",
                                           "\uFFFD",
                                           std::string("a\0b", 3),
                                           "ab",
                                           "9",
                                           "10",
                                           "9.5",
                                           "\u0663",
                                           "-",
                                           "_",
                                           "stra\u00DFe",
                                           "strasse",
                                           "12345678901234567890123456789012345678901",
                                           "12345678901234567890123456789012345678902"};

int sign(std::strong_ordering order) { return order < 0 ? -1 : (order > 0 ? 1 : 0); }

TEST(Collation, ComparesTexts) {
    struct Row {
        std::string left;
        std::string right;
        int plain;
        int caseInsensitive;
        int standard;
    };
    const std::vector<Row> rows = {
        {"Ann", "Ann", 0, 0, 0},
        {"Ann 9", "Ann 10", 1, 1, -1},
        {"9", "10", 1, 1, -1},
        {"Ann 10", "Bob", -1, -1, -1},
        {"ann", "Ann", 1, 0, -1},
        {"ann", "ANN", 1, 0, -1},
        {"ann b", "Ann a", 1, 1, 1},
        {"Zoe", "anna", -1, 1, 1},
        {"Ann 09", "Ann 9", -1, -1, -1},
        {"Ann 09b", "Ann 9a", -1, -1, 1},
        {"\u00C4nne", "anne", 1, 1, 1},
        {"\u00C4nna", "anne", 1, -1, -1},
        {"", "a", -1, -1, -1},
        {"\u00E4", "a\u0308", 1, 0, 1},
        {"12345678901234567890123456789012345678901", "12345678901234567890123456789012345678902", -1, -1, -1},
    };
    const Environment environment = environmentFor("en_US");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " | " + row.right);
        EXPECT_EQ(sign(compareTexts(row.left, row.right, Plain, environment)), row.plain);
        EXPECT_EQ(sign(compareTexts(row.left, row.right, LocalizedCaseInsensitive, environment)), row.caseInsensitive);
        EXPECT_EQ(sign(compareTexts(row.left, row.right, LocalizedStandard, environment)), row.standard);
        EXPECT_EQ(sign(compareTexts(row.right, row.left, LocalizedStandard, environment)), -row.standard);
    }
}

TEST(Collation, FollowsTheLocale) {
    const auto order = [](const char* locale) {
        return sign(compareTexts("\u00C4pfel", "Zebra", LocalizedStandard, environmentFor(locale)));
    };
    EXPECT_EQ(order("en_US"), -1);
    EXPECT_EQ(order("de_DE"), -1);
    EXPECT_EQ(order("sv_SE"), 1);
}

TEST(Collation, StandardIsATotalOrder) {
    for (const char* locale : {"en_US", "de_DE", "th_TH", "ar_EG", "sv_SE"}) {
        const Environment environment = environmentFor(locale);
        for (const std::string& left : oddTexts) {
            for (const std::string& right : oddTexts) {
                SCOPED_TRACE(left + " | " + right);
                const auto order = compareTexts(left, right, LocalizedStandard, environment);
                EXPECT_EQ(order == 0, left == right);
                EXPECT_EQ(sign(order), -sign(compareTexts(right, left, LocalizedStandard, environment)));
                for (const std::string& third : oddTexts) {
                    if (order < 0 && compareTexts(right, third, LocalizedStandard, environment) < 0) {
                        ASSERT_TRUE(compareTexts(left, third, LocalizedStandard, environment) < 0) << third;
                    }
                }
            }
        }
    }
}

TEST(Collation, RanksAgreeWithComparing) {
    std::vector<std::string> texts = oddTexts;
    std::mt19937 random(7);
    for (int index = 0; index < 200; ++index) {
        std::string text;
        for (unsigned length = random() % 6; length > 0; --length) {
            text += oddTexts[random() % oddTexts.size()];
        }
        texts.push_back(text);
        texts.push_back(text);
    }
    for (std::size_t zeros = 0; zeros < 20; zeros += 3) {
        texts.push_back("ab" + std::string(zeros, '\0'));
        texts.push_back("a common beginning" + std::string(zeros, 'x'));
    }
    texts.push_back(std::string(5000, 'x'));
    texts.push_back(std::string(5000, 'x') + "y");
    texts.push_back(std::string(5000, 'X'));
    for (const char* locale : {"en_US", "de_DE", "th_TH"}) {
        const Environment environment = environmentFor(locale);
        for (const Comparison comparison : allComparisons) {
            const std::vector<std::size_t> ranks = ranksOfTexts({texts.begin(), texts.end()}, comparison, environment);
            ASSERT_EQ(ranks.size(), texts.size());
            for (std::size_t left = 0; left < texts.size(); ++left) {
                ASSERT_LT(ranks[left], texts.size());
                for (std::size_t right = 0; right < texts.size(); ++right) {
                    ASSERT_EQ(sign(ranks[left] <=> ranks[right]),
                              sign(compareTexts(texts[left], texts[right], comparison, environment)))
                        << texts[left] << " | " << texts[right];
                }
            }
        }
    }
    EXPECT_TRUE(ranksOfTexts({}, LocalizedStandard, environmentFor("en_US")).empty());
    EXPECT_EQ(ranksOfTexts({"", "", ""}, Plain, environmentFor("en_US")), (std::vector<std::size_t>{0, 0, 0}));
}

TEST(Collation, SortArray) {
    struct Row {
        std::vector<std::string> titles;
        std::vector<std::string> sorted;
    };
    const std::vector<Row> rows = {
        {{}, {}},
        {{"Ann 10", "Bob", "Ann 9"}, {"Ann 9", "Ann 10", "Bob"}},
        {{"Bob", "ann", "Ann", "ANN"}, {"ann", "Ann", "ANN", "Bob"}},
        {{"Rx 10", "Rx 9", "rx 9"}, {"rx 9", "Rx 9", "Rx 10"}},
        {{"b", "a", "b", "a"}, {"a", "a", "b", "b"}},
        {{"9", "09", "10", "009"}, {"009", "09", "9", "10"}},
    };
    for (const Row& row : rows) {
        std::vector<std::string> titles = row.titles;
        sortArray(titles, environmentFor("en_US"));
        EXPECT_EQ(titles, row.sorted);
    }
    std::vector<std::string> odd = oddTexts;
    std::vector<std::string> reversed(odd.rbegin(), odd.rend());
    sortArray(odd, environmentFor("de_DE"));
    sortArray(reversed, environmentFor("de_DE"));
    EXPECT_EQ(odd, reversed);
    EXPECT_EQ(odd.size(), oddTexts.size());
}

TEST(Collation, SortNumberArray) {
    std::vector<double> numbers = {10, 9, -1, 9.5, 0, -HUGE_VAL, 100, 9};
    sortNumberArray(numbers);
    EXPECT_EQ(numbers, (std::vector<double>{-HUGE_VAL, -1, 0, 9, 9, 9.5, 10, 100}));
    std::vector<double> odd = {3, std::nan(""), 1, std::nan(""), 2};
    sortNumberArray(odd);
    EXPECT_EQ(std::vector<double>(odd.begin(), odd.begin() + 3), (std::vector<double>{1, 2, 3}));
}

}  // namespace
}  // namespace kpx
