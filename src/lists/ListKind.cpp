#include "lists/ListKind.h"

#include "core/DataFiles.h"
#include "core/Keys.h"

namespace kpx {

const ListKind& drugList() {
    static const ListKind kind{
        .kindWord = "Drug",
        .fileName = drugFile,
        .nameKey = DrugNameKey,
        .historyKey = MHDrugKey,
        .maintainTitle = "Maintain Drugs…",
        .keysByTag = {"", DrugNameKey, DrugDescriptionKey},
        .columns = {{"Drugname", DrugNameKey}, {"Drugdesc", DrugDescriptionKey}},
        .rowStopsAtMissingValue = false,
        .requiredFields = 2,
        .sortedAfterAdd = true,
        .missingDataTitle = "Drug Data Missing",
        .missingDataMessage = "Drug Name and Drug Description must be entered, please try again.  Thank you",
        .duplicateTitle = "Duplicate Drug Name - not added",
    };
    return kind;
}

const ListKind& patientList() {
    static const ListKind kind{
        .kindWord = "Patient",
        .fileName = patientFile,
        .nameKey = patientNameKey,
        .historyKey = MHPatientKey,
        .maintainTitle = "Maintain Patients…",
        .keysByTag = {"", patientNameKey, patientAddressKey, patientCityKey, patientStateKey, patientZipKey},
        .columns = {{"patientname", patientNameKey},
                    {"patientaddress", patientAddressKey},
                    {"patientcity", patientCityKey},
                    {"patientstate", patientStateKey},
                    {"patientpostal", patientZipKey}},
        .missingDataTitle = "patient Data Missing",
        .missingDataMessage = "patient Name must be entered, please try again.  Thank you",
        .duplicateTitle = "Duplicate patientName - not added",
    };
    return kind;
}

const ListKind& pharmacyList() {
    static const ListKind kind{
        .kindWord = "Pharmacy",
        .fileName = pharmacyFile,
        .nameKey = pharmacyNameKey,
        .historyKey = MHPharmacyKey,
        .maintainTitle = "Maintain Pharmacies…",
        .keysByTag = {"", pharmacyNameKey, pharmacyAddressKey, pharmacyNoteKey, pharmacyEmailKey, pharmacyWebPageKey,
                      pharmacyPhoneKey},
        .columns = {{"provname", pharmacyNameKey},
                    {"provaddress", pharmacyAddressKey},
                    {"provnotes", pharmacyNoteKey},
                    {"provphone", pharmacyPhoneKey}},
        .missingDataTitle = "pharmacy Data Missing",
        .missingDataMessage = "pharmacy Name must be entered, please try again.  Thank you",
        .duplicateTitle = "Duplicate pharmacy Name - not added",
    };
    return kind;
}

const ListKind& prescriberList() {
    static const ListKind kind{
        .kindWord = "Prescriber",
        .fileName = prescriberFile,
        .nameKey = PrescriberNameKey,
        .historyKey = MHPrescriberKey,
        .maintainTitle = "Maintain Prescribers…",
        .keysByTag = {"", PrescriberNameKey, PrescriberAddressKey, PrescriberPhoneKey, PrescriberEmailKey,
                      PrescriberSpecialtyKey},
        .columns = {{"prescribername", PrescriberNameKey},
                    {"prescriberaddress", PrescriberAddressKey},
                    {"prescriberspecialty", PrescriberSpecialtyKey},
                    {"prescriberemail", PrescriberEmailKey},
                    {"prescriberphone", PrescriberPhoneKey}},
        .missingDataTitle = "Prescriber Data Missing",
        .missingDataMessage = "Prescriber Name must be entered, please try again.  Thank you",
        .duplicateTitle = "Duplicate Prescriber Name - not added",
    };
    return kind;
}

}  // namespace kpx
