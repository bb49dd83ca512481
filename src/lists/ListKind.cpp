#include "lists/ListKind.h"

#include "core/DataFiles.h"
#include "core/Keys.h"
#include "region/LocalizedStrings.h"

namespace kpx {

const ListKind& drugList() {
    static const ListKind kind{
        .kindWord = "Drug",
        .fileName = drugFile,
        .nameKey = DrugNameKey,
        .historyKey = MHDrugKey,
        .maintainTitle = localizable("Maintain Drugs…"),
        .keysByTag = {"", DrugNameKey, DrugDescriptionKey},
        .columns = {{"Drugname", DrugNameKey}, {"Drugdesc", DrugDescriptionKey}},
        .rowStopsAtMissingValue = false,
        .requiredFields = 2,
        .sortedAfterAdd = true,
        .missingDataTitle = localizable("Drug Data Missing"),
        .missingDataMessage =
            localizable("Drug Name and Drug Description must be entered, please try again.  Thank you"),
        .duplicateTitle = localizable("Duplicate Drug Name - not added"),
        .nameFixedTitle =
            localizable("The Drug name, \"%@\", cannot be changed but all other Drug fields may be changed"),
        .stillUsedMessage =
            localizable("The Drug name \"%@\" was deleted as requested but is not recommended because it is used in "
                        "prescription maintenance data.\r\rRecommend re-adding the Drug just deleted to avoid data "
                        "integrity issues."),
        .stillUsedTitle = localizable("Deleting a Drug creates a mismatch between the Drug data and the prescription "
                                      "maintenance data."),
    };
    return kind;
}

const ListKind& patientList() {
    static const ListKind kind{
        .kindWord = "Patient",
        .fileName = patientFile,
        .nameKey = patientNameKey,
        .historyKey = MHPatientKey,
        .maintainTitle = localizable("Maintain Patients…"),
        .keysByTag = {"", patientNameKey, patientAddressKey, patientCityKey, patientStateKey, patientZipKey},
        .columns = {{"patientname", patientNameKey},
                    {"patientaddress", patientAddressKey},
                    {"patientcity", patientCityKey},
                    {"patientstate", patientStateKey},
                    {"patientpostal", patientZipKey}},
        .missingDataTitle = localizable("patient Data Missing"),
        .missingDataMessage = localizable("patient Name must be entered, please try again.  Thank you"),
        .duplicateTitle = localizable("Duplicate patientName - not added"),
        .nameFixedTitle =
            localizable("The Patient name, \"%@\", cannot be changed but all other Patient fields may be changed"),
        .stillUsedMessage =
            localizable("The Patient name \"%@\" was deleted as requested but is not recommended because it is used in "
                        "prescription maintenance data.\r\rRecommend re-adding the Patient just deleted to avoid data "
                        "integrity issues."),
        .stillUsedTitle =
            localizable("Deleting a Patient creates a mismatch between the Patient data and the prescription "
                        "maintenance data."),
    };
    return kind;
}

const ListKind& pharmacyList() {
    static const ListKind kind{
        .kindWord = "Pharmacy",
        .fileName = pharmacyFile,
        .nameKey = pharmacyNameKey,
        .historyKey = MHPharmacyKey,
        .maintainTitle = localizable("Maintain Pharmacies…"),
        .keysByTag = {"", pharmacyNameKey, pharmacyAddressKey, pharmacyNoteKey, pharmacyEmailKey, pharmacyWebPageKey,
                      pharmacyPhoneKey},
        .columns = {{"provname", pharmacyNameKey},
                    {"provaddress", pharmacyAddressKey},
                    {"provnotes", pharmacyNoteKey},
                    {"provphone", pharmacyPhoneKey}},
        .missingDataTitle = localizable("pharmacy Data Missing"),
        .missingDataMessage = localizable("pharmacy Name must be entered, please try again.  Thank you"),
        .duplicateTitle = localizable("Duplicate pharmacy Name - not added"),
        .nameFixedTitle =
            localizable("The Pharmacy name, \"%@\", cannot be changed but all other Pharmacy fields may be changed"),
        .stillUsedMessage = localizable(
            "The Pharmacy name \"%@\" was deleted as requested but is not recommended because it is used in "
            "prescription maintenance data.\r\rRecommend re-adding the Pharmacy just deleted to avoid data "
            "integrity issues."),
        .stillUsedTitle =
            localizable("Deleting a Pharmacy creates a mismatch between the Pharmacy data and the prescription "
                        "maintenance data."),
    };
    return kind;
}

const ListKind& prescriberList() {
    static const ListKind kind{
        .kindWord = "Prescriber",
        .fileName = prescriberFile,
        .nameKey = PrescriberNameKey,
        .historyKey = MHPrescriberKey,
        .maintainTitle = localizable("Maintain Prescribers…"),
        .keysByTag = {"", PrescriberNameKey, PrescriberAddressKey, PrescriberPhoneKey, PrescriberEmailKey,
                      PrescriberSpecialtyKey},
        .columns = {{"prescribername", PrescriberNameKey},
                    {"prescriberaddress", PrescriberAddressKey},
                    {"prescriberspecialty", PrescriberSpecialtyKey},
                    {"prescriberemail", PrescriberEmailKey},
                    {"prescriberphone", PrescriberPhoneKey}},
        .missingDataTitle = localizable("Prescriber Data Missing"),
        .missingDataMessage = localizable("Prescriber Name must be entered, please try again.  Thank you"),
        .duplicateTitle = localizable("Duplicate Prescriber Name - not added"),
        .nameFixedTitle = localizable(
            "The Prescriber name, \"%@\", cannot be changed but all other Prescriber fields may be changed"),
        .stillUsedMessage = localizable(
            "The Prescriber name \"%@\" was deleted as requested but is not recommended because it is used in "
            "prescription maintenance data.\r\rRecommend re-adding the Prescriber just deleted to avoid data "
            "integrity issues."),
        .stillUsedTitle =
            localizable("Deleting a Prescriber creates a mismatch between the Prescriber data and the prescription "
                        "maintenance data."),
    };
    return kind;
}

}  // namespace kpx
