#include "earlier/HouseholdFiles.h"

#include "core/Keys.h"
#include "region/LocalizedStrings.h"

#include <algorithm>

namespace kpx {

const std::array<HouseholdFile, householdFileCount>& householdFiles() {
    static const std::array<HouseholdFile, householdFileCount> files = {{
        {prescriptionHistoryFile,
         {MHRxNumberKey, MHPharmacyKey, MHPatientKey, MHFillTypeKey, MHDispenseDateKey},
         "fills",
         localizable("%@ fill"),
         localizable("%@ fills"),
         localizable("The history cannot be read.")},
        {patientFile,
         {patientNameKey},
         "patients",
         localizable("%@ patient"),
         localizable("%@ patients"),
         localizable("The list of patients cannot be read.")},
        {drugFile,
         {DrugNameKey},
         "drugs",
         localizable("%@ drug"),
         localizable("%@ drugs"),
         localizable("The list of drugs cannot be read.")},
        {pharmacyFile,
         {pharmacyNameKey},
         "pharmacies",
         localizable("%@ pharmacy"),
         localizable("%@ pharmacies"),
         localizable("The list of pharmacies cannot be read.")},
        {prescriberFile,
         {PrescriberNameKey},
         "prescribers",
         localizable("%@ prescriber"),
         localizable("%@ prescribers"),
         localizable("The list of prescribers cannot be read.")},
    }};
    return files;
}

std::size_t householdFileNamed(std::string_view name) {
    const auto& files = householdFiles();
    return static_cast<std::size_t>(std::ranges::find(files, name, &HouseholdFile::name) - files.begin());
}

}  // namespace kpx
