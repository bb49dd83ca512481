#include "tests/pdf/ExampleReports.h"

#include "core/Keys.h"
#include "core/Sorting.h"
#include "reports/ReportKind.h"
#include "reports/ReportLayout.h"
#include "ui/ReportPainter.h"

#include <array>
#include <string>

namespace kpx::test {

namespace {

constexpr std::array patients{"Ann Miller", "Bob Miller", "Zoë Müller", "Clara van den Berg"};
constexpr std::array drugs{"Amoxicillin 500 mg", "Lisinopril", "Metformin ER 750 mg", "Office-strength Ibuprofen"};
constexpr std::array prescribers{"Dr. Grey", "Dr. Nakamura", "Dr. O’Brien", "Dr. Fflewddur"};
constexpr std::array pharmacies{"Corner Pharmacy", "Main Street", "Apotheke am Markt", "Hospital"};
constexpr std::array notes{"with food", "", "not before noon", "ask about dose"};

std::string two(std::size_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

Environment reader() { return {Date::fromSecondsSince1970(1709640000), Region("en_US", "UTC")}; }

Record fill(std::size_t index, bool asRow) {
    const std::size_t kind = index % 4;
    const std::string rxNumber = "RX" + std::to_string(70000 + index);
    const std::string cost = std::to_string(index % 90 + 4) + ".50";
    const std::string dispensed = "2023" + two(index % 12 + 1) + two(index % 28 + 1);
    const Value type = index % 3 == 0 ? "Initial" : "Refill";
    const int remaining = static_cast<int>(5 - index % 6);
    if (asRow) {
        return Record{{"patient", patients[kind]},
                      {"pharmacy", pharmacies[kind]},
                      {"drugname", drugs[index / 4 % 4]},
                      {"prescriber", prescribers[kind]},
                      {"scriptnote", notes[kind]},
                      {"filltype", type},
                      {"scriptnum", rxNumber},
                      {"remainingrefills", remaining},
                      {"cost", static_cast<double>(index % 90 + 4) + 0.5},
                      {"dispensedate", dispensed}};
    }
    return Record{{MHPatientKey, patients[kind]},
                  {MHDrugKey, drugs[index / 4 % 4]},
                  {MHPrescriberKey, prescribers[kind]},
                  {MHRxNumberKey, rxNumber},
                  {MHFillTypeKey, type},
                  {MHTotalCostKey, cost},
                  {MHRefillsKey, 5},
                  {MHRefillsRemainKey, remaining},
                  {MHDispenseDateKey, dispensed},
                  {MHExpireDateKey, index % 5 == 0 ? "20240101" : "20241231"}};
}

Record entry(int type, std::size_t index) {
    const std::size_t kind = index % 4;
    const std::string number = " " + std::to_string(index);
    switch (type) {
        case 4:
            return Record{{patientNameKey, patients[kind] + number},
                          {patientAddressKey, "12 Elm Street"},
                          {patientCityKey, "Springfield"},
                          {patientStateKey, "Massachusetts"},
                          {patientZipKey, "01101"}};
        case 5:
            return Record{{pharmacyNameKey, pharmacies[kind] + number},
                          {pharmacyAddressKey, "200 Main Street, Springfield"},
                          {pharmacyPhoneKey, "(413) 555-0134"},
                          {pharmacyNoteKey, "open on Sundays"}};
        case 6:
            return Record{{DrugNameKey, drugs[kind] + number}, {DrugDescriptionKey, "white, oval, with a groove"}};
        default:
            return Record{{PrescriberNameKey, prescribers[kind] + number},
                          {PrescriberAddressKey, "Medical Office Building, Suite 5"},
                          {PrescriberPhoneKey, "(413) 555-0199"},
                          {PrescriberSpecialtyKey, "Family medicine"}};
    }
}

}  // namespace

Document exampleReport(int type, std::size_t recordCount) {
    const bool isTable = type == tableContentsReport;
    Records records;
    for (std::size_t index = 0; index < recordCount; ++index) {
        records.push_back(type <= 3 || isTable ? fill(index, isTable) : entry(type, index));
    }
    if (const ReportKind* kind = reportKind(type)) {
        doSortWithArray(records, kind->order[0], kind->order[1], kind->order[2], reader());
    }
    return printReport(type, records, 12, 2469, 205.75, reader(), {}, ReportPainter::metrics(reportBodyFontSize),
                       {"Patient", "Pharmacy", "Drug Name", "Prescriber", "Note", "Type", "Rx No.", "Remain", "Cost",
                        "Dispensed"})
        .document;
}

}  // namespace kpx::test
