#include "reports/ReportKind.h"

#include "tests/reports/ReportSupport.h"

#include <gmock/gmock.h>

namespace kpx {
namespace {

TEST(ReportKind, TitlesAndSources) {
    struct Row {
        int type;
        std::string_view title;
        std::string_view listFile;
    };
    const std::vector<Row> rows = {{1, "Prescriptions by Patient( active, not expired )", ""},
                                   {2, "Prescriptions by Patient( active or inactive )", ""},
                                   {3, "Prescriptions by Patient and Prescriber", ""},
                                   {4, "Patient List", "patientFileForKPX"},
                                   {5, "Pharmacy List", "pharmacyFileForKPX"},
                                   {6, "Drug List", "DrugFileForKPX"},
                                   {7, "Prescriber List", "prescriberFileForKPX"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        ASSERT_NE(reportKind(row.type), nullptr);
        EXPECT_EQ(reportTitle(row.type), row.title);
        EXPECT_EQ(reportKind(row.type)->listFile, row.listFile);
    }
}

TEST(ReportKind, OtherTypesHaveATitleOnly) {
    for (const int type : {0, 8, 10, 99, -1}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(reportKind(type), nullptr);
        EXPECT_EQ(reportTitle(type), type == 99 ? "Prescription Table Contents" : "Patient Prescription Report");
    }
}

std::vector<std::string> sortedBy(int type, Records records, const char* shownKey) {
    const auto& order = reportKind(type)->order;
    doSortWithArray(records, order[0], order[1], order[2], reportEnvironment());
    std::vector<std::string> values;
    for (const Record& record : records) {
        values.push_back(record.text(shownKey)->string());
    }
    return values;
}

TEST(ReportKind, OneNaturallyTwoExactly) {
    const Records records = {prescription("bob", "1"), prescription("ann", "10"), prescription("Zoe", "1"),
                             prescription("Ann", "5"), prescription("ann", "9")};
    EXPECT_THAT(sortedBy(1, records, MHPatientKey), testing::ElementsAre("ann", "ann", "Ann", "bob", "Zoe"));
    EXPECT_THAT(sortedBy(2, records, MHPatientKey), testing::ElementsAre("Ann", "Zoe", "ann", "ann", "bob"));
    EXPECT_THAT(sortedBy(1, records, MHRxNumberKey), testing::ElementsAre("9", "10", "5", "1", "1"));
    EXPECT_THAT(sortedBy(2, records, MHRxNumberKey), testing::ElementsAre("5", "1", "9", "10", "1"));
}

TEST(ReportKind, FillTypeExactlyOnOneNaturallyOnTwo) {
    Records records = {prescription(), prescription(), prescription()};
    records[0].set(MHFillTypeKey, "initial");
    records[1].set(MHFillTypeKey, "Refill");
    records[2].set(MHFillTypeKey, "Initial");
    EXPECT_THAT(sortedBy(1, records, MHFillTypeKey), testing::ElementsAre("Initial", "Refill", "initial"));
    EXPECT_THAT(sortedBy(2, records, MHFillTypeKey), testing::ElementsAre("initial", "Initial", "Refill"));
}

TEST(ReportKind, ListsByTheirNamesAndAddresses) {
    const Records patients = {Record{{patientNameKey, "Bob"}, {patientCityKey, "1"}},
                              Record{{patientNameKey, "Ann 10"}, {patientAddressKey, "A"}, {patientCityKey, "2"}},
                              Record{{patientNameKey, "Ann 9"}, {patientAddressKey, "B"}, {patientCityKey, "4"}},
                              Record{{patientNameKey, "Ann 9"}, {patientAddressKey, "B"}, {patientCityKey, "3"}}};
    EXPECT_THAT(sortedBy(4, patients, patientCityKey), testing::ElementsAre("3", "4", "2", "1"));

    // No third key: the records keep their order.
    const Records pharmacies = {Record{{pharmacyNameKey, "C"}, {pharmacyAddressKey, "2"}, {pharmacyPhoneKey, "9"}},
                                Record{{pharmacyNameKey, "C"}, {pharmacyAddressKey, "2"}, {pharmacyPhoneKey, "8"}},
                                Record{{pharmacyNameKey, "C"}, {pharmacyAddressKey, "1"}, {pharmacyPhoneKey, "7"}}};
    EXPECT_THAT(sortedBy(5, pharmacies, pharmacyPhoneKey), testing::ElementsAre("7", "9", "8"));

    const Records drugs = {Record{{DrugNameKey, "x"}, {DrugDescriptionKey, "b"}},
                           Record{{DrugNameKey, "x"}, {DrugDescriptionKey, "a"}}};
    EXPECT_THAT(sortedBy(6, drugs, DrugDescriptionKey), testing::ElementsAre("b", "a"));
}

}  // namespace
}  // namespace kpx
