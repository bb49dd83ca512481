#include "core/Keys.h"
#include "lists/ListRecords.h"

#include <gtest/gtest.h>
#include <vector>

namespace kpx {
namespace {

struct RowRow {
    const char* what;
    const ListKind& kind;
    Record record;
    Record row;
};

TEST(ListRecords, RowsStopAtTheFirstAbsentValueButForDrugs) {
    const std::vector<RowRow> rows = {
        {"whole patient",
         patientList(),
         {{patientNameKey, "Ann"},
          {patientAddressKey, ""},
          {patientCityKey, "X"},
          {patientStateKey, "Y"},
          {patientZipKey, "1"}},
         {{"patientname", "Ann"},
          {"patientaddress", ""},
          {"patientcity", "X"},
          {"patientstate", "Y"},
          {"patientpostal", "1"}}},
        {"patient without a name", patientList(), {{patientAddressKey, "A"}, {patientCityKey, "X"}}, {}},
        {"pharmacy without an address",
         pharmacyList(),
         {{pharmacyNameKey, "Corner"}, {pharmacyNoteKey, "N"}, {pharmacyPhoneKey, "1"}},
         {{"provname", "Corner"}}},
        {"e-mail and web page are not shown",
         pharmacyList(),
         {{pharmacyNameKey, "Corner"},
          {pharmacyAddressKey, ""},
          {pharmacyNoteKey, ""},
          {pharmacyEmailKey, "e"},
          {pharmacyWebPageKey, "w"},
          {pharmacyPhoneKey, "1"}},
         {{"provname", "Corner"}, {"provaddress", ""}, {"provnotes", ""}, {"provphone", "1"}}},
        {"drug without a name", drugList(), {{DrugDescriptionKey, "D"}}, {{"Drugdesc", "D"}}},
        {"prescriber columns",
         prescriberList(),
         {{PrescriberNameKey, "Lee"},
          {PrescriberAddressKey, "A"},
          {PrescriberPhoneKey, "1"},
          {PrescriberEmailKey, "e"},
          {PrescriberSpecialtyKey, "s"}},
         {{"prescribername", "Lee"},
          {"prescriberaddress", "A"},
          {"prescriberspecialty", "s"},
          {"prescriberemail", "e"},
          {"prescriberphone", "1"}}},
    };
    for (const RowRow& row : rows) {
        SCOPED_TRACE(row.what);
        Records built;
        populateSheetArray(row.kind, {row.record}, built);
        EXPECT_EQ(built, Records{row.row});
    }
}

TEST(ListRecords, RequiredFieldsAreNotTrimmed) {
    EXPECT_TRUE(requiredFieldsSupplied(patientList(), {"", " ", "", "", "", ""}));
    EXPECT_FALSE(requiredFieldsSupplied(patientList(), {"", "", "address", "", "", ""}));
    EXPECT_FALSE(requiredFieldsSupplied(drugList(), {"", "Aspirin", ""}));
    EXPECT_TRUE(requiredFieldsSupplied(drugList(), {"", "Aspirin", "tablets"}));
}

TEST(ListRecords, NamesDifferByCase) {
    Records drugs = {recordFromFields(drugList(), {"", "Aspirin", "first"}),
                     recordFromFields(drugList(), {"", "aspirin", "b"}),
                     recordFromFields(drugList(), {"", "Aspirin", "second"})};
    EXPECT_TRUE(listHolds(drugList(), drugs, "aspirin"));
    EXPECT_FALSE(listHolds(drugList(), drugs, "ASPIRIN"));
    EXPECT_TRUE(removeRecordNamed(drugList(), drugs, "Aspirin"));
    ASSERT_EQ(drugs.size(), 2U);
    EXPECT_EQ(drugs[1].text(DrugDescriptionKey), Text("second"));
    EXPECT_FALSE(removeRecordNamed(drugList(), drugs, "Ibuprofen"));
}

TEST(ListRecords, TablesSortWithoutNaturalDigits) {
    const Environment environment{{}, Region("en_US", "UTC")};
    Records records = {Record{{patientNameKey, "Ann 9"}}, Record{{patientNameKey, "bob"}},
                       Record{{patientNameKey, "Ann 10"}}};
    sortByName(patientList(), records, environment);
    EXPECT_EQ(records[0].text(patientNameKey), Text("Ann 10"));
    EXPECT_EQ(records[2].text(patientNameKey), Text("bob"));
}

TEST(ListRecords, WarnsOfANameTheHistoryUses) {
    EXPECT_TRUE(historyUses(drugList(), {Record{{MHDrugKey, "Aspirin"}}}, "Aspirin"));
    EXPECT_FALSE(historyUses(drugList(), {Record{{MHPatientKey, "Aspirin"}}}, "Aspirin"));
    const ListWarning warning = historyUseWarning(drugList(), "Aspirin", LocalizedStrings());
    EXPECT_EQ(
        warning.title,
        "The Drug name \"Aspirin\" was deleted as requested but is not recommended because it is used in "
        "prescription maintenance data.\r\rRecommend re-adding the Drug just deleted to avoid data integrity issues.");
    EXPECT_EQ(warning.message,
              "Deleting a Drug creates a mismatch between the Drug data and the prescription maintenance data.");
}

}  // namespace
}  // namespace kpx
