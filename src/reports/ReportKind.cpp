#include "reports/ReportKind.h"

#include "core/DataFiles.h"
#include "core/Keys.h"

#include <algorithm>

namespace kpx {

namespace {

SortDescriptor exactly(const char* key) { return {key, true, Comparison::Plain}; }
SortDescriptor naturally(const char* key) { return {key, true, Comparison::LocalizedStandard}; }
SortDescriptor nothing() { return {{}, true, Comparison::LocalizedStandard}; }

// The first two reports hold the same prescriptions in deliberately different orders: the second one
// compares patients exactly, the first one fill types.
const std::array<ReportKind, lastReport>& reportKinds() {
    static const std::array<ReportKind, lastReport> kinds = {{
        {activePrescriptionsReport,
         "Prescriptions by Patient( active, not expired )",
         {},
         {naturally(MHPatientKey), naturally(MHRxNumberKey), exactly(MHFillTypeKey)}},
        {allPrescriptionsReport,
         "Prescriptions by Patient( active or inactive )",
         {},
         {exactly(MHPatientKey), naturally(MHRxNumberKey), naturally(MHFillTypeKey)}},
        {3,
         "Prescriptions by Patient and Prescriber",
         {},
         {naturally(MHPatientKey), naturally(MHPrescriberKey), naturally(MHDrugKey)}},
        {4,
         "Patient List",
         patientFile,
         {naturally(patientNameKey), naturally(patientAddressKey), naturally(patientCityKey)}},
        {5, "Pharmacy List", pharmacyFile, {naturally(pharmacyNameKey), naturally(pharmacyAddressKey), nothing()}},
        {6, "Drug List", drugFile, {naturally(DrugNameKey), nothing(), nothing()}},
        {7, "Prescriber List", prescriberFile, {naturally(PrescriberNameKey), nothing(), nothing()}},
    }};
    return kinds;
}

}  // namespace

const ReportKind* reportKind(int type) {
    const auto kind = std::ranges::find(reportKinds(), type, &ReportKind::type);
    return kind == reportKinds().end() ? nullptr : &*kind;
}

std::string_view reportTitle(int type) {
    if (const ReportKind* kind = reportKind(type)) {
        return kind->title;
    }
    return type == tableContentsReport ? "Prescription Table Contents" : "Patient Prescription Report";
}

}  // namespace kpx
