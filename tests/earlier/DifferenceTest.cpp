#include "earlier/Difference.h"

#include "core/Keys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace kpx {
namespace {

Record fill(const char* number, const char* date, const char* cost = "1.00", const char* type = "Initial") {
    return {{MHRxNumberKey, number}, {MHPharmacyKey, "Corner"}, {MHPatientKey, "Ann"},
            {MHFillTypeKey, type},   {MHDispenseDateKey, date}, {MHTotalCostKey, cost}};
}

Record reversed(const Record& record) {
    Record other;
    for (auto field = record.end(); field != record.begin();) {
        --field;
        other.set(field->first, field->second);
    }
    return other;
}

FileDifference differenceOf(const HouseholdFile& file, const Records& present, const Records& earlier) {
    return PresentRecords(file, present).differenceTo(earlier);
}

TEST(Difference, PairsFillsByWhatIdentifiesThem) {
    const Record first = fill("1", "20240101");
    const Record other = fill("1", "20240101", "2.00");
    struct Row {
        const char* name;
        Records present;
        Records earlier;
        FileDifference difference;
    };
    const std::vector<Row> rows = {
        {"nothing", {}, {}, {}},
        {"the same", {first}, {first}, {}},
        {"another order", {first, fill("2", "20240101")}, {fill("2", "20240101"), first}, {}},
        {"one more then", {}, {first}, {1, 0, 0}},
        {"one more now", {first}, {}, {0, 1, 0}},
        {"another cost", {first}, {fill("1", "20240101", "2.00")}, {0, 0, 1}},
        {"another date", {first}, {fill("1", "20240102")}, {1, 1, 0}},
        {"another number", {first}, {fill("01", "20240101")}, {1, 1, 0}},
        {"another type", {first}, {fill("1", "20240101", "1.00", "Refill")}, {1, 1, 0}},
        {"twice then", {first}, {first, first}, {1, 0, 0}},
        {"twice now", {first, first}, {first}, {0, 1, 0}},
        {"alike, one of them changed",
         {first, fill("1", "20240101", "2.00")},
         {fill("1", "20240101", "3.00"), first},
         {0, 0, 1}},
        {"alike, one changed and one gone",
         {fill("1", "20240101", "2.00")},
         {fill("1", "20240101", "3.00"), first},
         {1, 0, 1}},
        {"alike, two changed of three equal", {first, first, first}, {first, other, other}, {0, 0, 2}},
        {"alike, two of three equal gone", {first, first, first}, {other}, {0, 2, 1}},
        {"keys in another order", {first}, {reversed(first)}, {}},
        {"no identity at all", {{{"other", "x"}}}, {{{"other", "y"}}}, {0, 0, 1}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(differenceOf(householdFiles()[0], row.present, row.earlier), row.difference);
    }
}

TEST(Difference, PairsListEntriesByTheirNames) {
    for (std::size_t file = 1; file < householdFileCount; ++file) {
        const HouseholdFile& list = householdFiles()[file];
        SCOPED_TRACE(list.name);
        const std::string_view name = list.pairedBy.front();
        const Records present = {{{name, "Ann"}, {"note", "old"}}, {{name, "ann"}}, {{name, "Bob"}}};
        const Records earlier = {{{name, "Ann"}, {"note", "new"}}, {{name, "Cid"}}, {{name, "Bob"}}};
        EXPECT_EQ(differenceOf(list, present, earlier), (FileDifference{1, 1, 1}));
    }
}

TEST(Difference, LetsNoTwoIdentitiesRunIntoOneAnother) {
    const Record left = {{MHRxNumberKey, "1"}, {MHPharmacyKey, "12"}};
    const Record right = {{MHRxNumberKey, "11"}, {MHPharmacyKey, "2"}};
    EXPECT_EQ(differenceOf(householdFiles()[0], {left}, {right}), (FileDifference{1, 1, 0}));
    const Record elsewhere = {{MHRxNumberKey, "1"}, {MHPatientKey, "12"}};
    EXPECT_EQ(differenceOf(householdFiles()[0], {left}, {elsewhere}), (FileDifference{1, 1, 0}));
}

TEST(Difference, IsToldInOneLine) {
    struct Row {
        std::array<FileDifference, householdFileCount> differences;  // fills, patients, drugs, pharmacies, prescribers
        const char* text;
    };
    const std::vector<Row> rows = {
        {{}, ""},
        {{{{3, 0, 0}, {0, 1, 1}, {0, 0, 1}, {}, {}}}, "+3 fills, \u22121 patient, 2 changed"},
        {{{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}, {1, 0, 0}, {1, 0, 0}}},
         "+1 fill, +1 patient, +1 drug, +1 pharmacy, +1 prescriber"},
        {{{{2, 3, 0}, {2, 3, 0}, {2, 3, 0}, {2, 3, 0}, {2, 3, 0}}},
         "+2 fills, \u22123 fills, +2 patients, \u22123 patients, +2 drugs, \u22123 drugs, +2 pharmacies, \u22123 "
         "pharmacies, +2 prescribers, \u22123 prescribers"},
        {{{{0, 0, 1}, {}, {}, {}, {0, 0, 11}}}, "12 changed"},
        {{{{10000, 0, 0}, {}, {}, {}, {}}}, "+10000 fills"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(differenceText(row.differences, LocalizedStrings()), row.text);
    }
}

}  // namespace
}  // namespace kpx
