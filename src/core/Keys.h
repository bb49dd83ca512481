#pragma once

// The keys of the records as they stand in the data files, and the column identifiers under which
// tables show the same values. Case and odd spellings are part of the file format.

namespace kpx {

// A prescription fill (the history file). MHReceiptKey and MHNoteKey are optional.
inline constexpr char MHPatientKey[] = "MHPatientKey";
inline constexpr char MHPharmacyKey[] = "MHPharmacyKey";
inline constexpr char MHDrugKey[] = "MHDrugKey";
inline constexpr char MHPrescriberKey[] = "MHPrescriberKey";
inline constexpr char MHRxNumberKey[] = "MHRxNumberKey";            ///< as typed, never a number
inline constexpr char MHDaysSupplyKey[] = "MHDaysSupplyKey";        ///< integer, days
inline constexpr char MHTotalCostKey[] = "MHTotalCostKey";          ///< text, "12.50"
inline constexpr char MHRefillsKey[] = "MHRefillsKey";              ///< integer, refills authorised
inline constexpr char MHRefillsRemainKey[] = "MHRefillsRemainKey";  ///< integer, left after this fill
inline constexpr char MHDispenseDateKey[] = "MHDispenseDateKey";    ///< text, YYYYMMDD
inline constexpr char MHExpireDateKey[] = "MHExpireDateKey";        ///< text, YYYYMMDD
inline constexpr char MHTakeNbrKey[] = "MHTakeNbrKey";              ///< integer
inline constexpr char MHDrugTypeMeasureKey[] = "MHDrugTypeMeasureKey";
inline constexpr char MHEveryIntervalKey[] = "MHEveryIntervalKey";  ///< integer
inline constexpr char MHWhenToTakeDrugKey[] = "MHWhenToTakeDrugKey";
inline constexpr char MHFillTypeKey[] = "MHFillTypeKey";  ///< fillTypeInitial or fillTypeRefill
inline constexpr char MHReceiptKey[] = "MHReceiptKey";    ///< data, a bookmark
inline constexpr char MHNoteKey[] = "MHNoteKey";

inline constexpr char fillTypeInitial[] = "Initial";
inline constexpr char fillTypeRefill[] = "Refill";

inline constexpr char patientNameKey[] = "patientNameKey";
inline constexpr char patientAddressKey[] = "patientAddressKey";
inline constexpr char patientCityKey[] = "patientCityKey";
inline constexpr char patientStateKey[] = "patientStateKey";
inline constexpr char patientZipKey[] = "patientZipKey";

inline constexpr char pharmacyNameKey[] = "pharmacyNameKey";
inline constexpr char pharmacyAddressKey[] = "pharmacyAddressKey";
inline constexpr char pharmacyPhoneKey[] = "pharmacyPhoneKey";
inline constexpr char pharmacyEmailKey[] = "pharmacyEmailKey";
inline constexpr char pharmacyWebPageKey[] = "pharmacyWebPageKey";
inline constexpr char pharmacyNoteKey[] = "pharmacyNoteKey";

inline constexpr char DrugNameKey[] = "DrugNameKey";
inline constexpr char DrugDescriptionKey[] = "DrugDescriptionKey";

inline constexpr char PrescriberNameKey[] = "PrescriberNameKey";
inline constexpr char PrescriberAddressKey[] = "PrescriberAddressKey";
inline constexpr char PrescriberPhoneKey[] = "PrescriberPhoneKey";
inline constexpr char PrescriberEmailKey[] = "PrescriberEmailKey";
inline constexpr char PrescriberSpecialtyKey[] = "PrescriberSpecialtyKey";

}  // namespace kpx
