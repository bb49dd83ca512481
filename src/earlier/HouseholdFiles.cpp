#include "earlier/HouseholdFiles.h"

#include "core/Keys.h"

#include <algorithm>

namespace kpx {

const std::array<HouseholdFile, householdFileCount>& householdFiles() {
    static const std::array<HouseholdFile, householdFileCount> files = {{
        {prescriptionHistoryFile,
         {MHRxNumberKey, MHPharmacyKey, MHPatientKey, MHFillTypeKey, MHDispenseDateKey},
         "fills",
         "%@ fill",
         "%@ fills",
         "The history cannot be read."},
        {patientFile,
         {patientNameKey},
         "patients",
         "%@ patient",
         "%@ patients",
         "The list of patients cannot be read."},
        {drugFile, {DrugNameKey}, "drugs", "%@ drug", "%@ drugs", "The list of drugs cannot be read."},
        {pharmacyFile,
         {pharmacyNameKey},
         "pharmacies",
         "%@ pharmacy",
         "%@ pharmacies",
         "The list of pharmacies cannot be read."},
        {prescriberFile,
         {PrescriberNameKey},
         "prescribers",
         "%@ prescriber",
         "%@ prescribers",
         "The list of prescribers cannot be read."},
    }};
    return files;
}

std::size_t householdFileNamed(std::string_view name) {
    const auto& files = householdFiles();
    return static_cast<std::size_t>(std::ranges::find(files, name, &HouseholdFile::name) - files.begin());
}

}  // namespace kpx
