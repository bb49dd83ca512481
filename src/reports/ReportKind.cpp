#include "reports/ReportKind.h"

#include "core/DataFiles.h"
#include "core/Keys.h"
#include "region/LocalizedStrings.h"

#include <algorithm>

namespace kpx {

namespace {

SortDescriptor exactly(const char* key) { return {key, true, Comparison::Plain}; }
SortDescriptor naturally(const char* key) { return {key, true, Comparison::LocalizedStandard}; }
SortDescriptor nothing() { return {{}, true, Comparison::LocalizedStandard}; }

// The first two reports hold the same prescriptions in different orders (see behaviours): the second one
// compares patients exactly, the first one fill types.
const std::array<ReportKind, lastReport>& reportKinds() {
    static const std::array<ReportKind, lastReport> kinds = {{
        {activePrescriptionsReport,
         localizable("Prescriptions by Patient( active, not expired )"),
         {},
         {naturally(MHPatientKey), naturally(MHRxNumberKey), exactly(MHFillTypeKey)}},
        {allPrescriptionsReport,
         localizable("Prescriptions by Patient( active or inactive )"),
         {},
         {exactly(MHPatientKey), naturally(MHRxNumberKey), naturally(MHFillTypeKey)}},
        {prescriptionsByPrescriberReport,
         localizable("Prescriptions by Patient and Prescriber"),
         {},
         {naturally(MHPatientKey), naturally(MHPrescriberKey), naturally(MHDrugKey)}},
        {patientListReport,
         localizable("Patient List"),
         patientFile,
         {naturally(patientNameKey), naturally(patientAddressKey), naturally(patientCityKey)}},
        {pharmacyListReport,
         localizable("Pharmacy List"),
         pharmacyFile,
         {naturally(pharmacyNameKey), naturally(pharmacyAddressKey), nothing()}},
        {drugListReport, localizable("Drug List"), drugFile, {naturally(DrugNameKey), nothing(), nothing()}},
        {prescriberListReport,
         localizable("Prescriber List"),
         prescriberFile,
         {naturally(PrescriberNameKey), nothing(), nothing()}},
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
    return type == tableContentsReport ? localizable("Prescription Table Contents")
                                       : localizable("Patient Prescription Report");
}

}  // namespace kpx
