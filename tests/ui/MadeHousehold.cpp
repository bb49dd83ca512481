#include "tests/ui/MadeHousehold.h"

#include "core/DataFiles.h"
#include "core/Keys.h"
#include "tests/support/HouseholdGenerator.h"
#include "values/Record.h"

#include <QDate>
#include <QStandardPaths>

#include <string>

namespace kpx::test {

namespace {

struct Fill {
    const char* patient;
    const char* drug;
    const char* prescriber;
    const char* pharmacy;
    const char* number;
    const char* type;
    int daysAgo;
    int expiresInDays;
    int supply;
    int refills;
    int remaining;
    const char* cost;
    int take;
    const char* measure;
    int every;
    const char* when;
    const char* note;
};

constexpr char corner[] = "Corner Pharmacy";
constexpr char riverside[] = "Riverside Chemist & Compounding Laboratory of the Old Town";
constexpr char okafor[] = "Dr. Amara Okafor";
constexpr char lindqvist[] = "Dr. Henrik Lindqvist-Baumgartner, Department of Cardiology";

constexpr Fill fills[] = {
    {"Ann Holloway", "Lisinopril 10 mg", okafor, corner, "4417203", "Initial", 330, 35, 90, 3, 3, "12.40", 1, "tablet",
     1, "in the morning", nullptr},
    {"Ann Holloway", "Lisinopril 10 mg", okafor, corner, "4417203", "Refill", 240, 35, 90, 3, 2, "12.40", 1, "tablet",
     1, "in the morning", nullptr},
    {"Ann Holloway", "Lisinopril 10 mg", okafor, corner, "4417203", "Refill", 150, 35, 90, 3, 1, "13.10", 1, "tablet",
     1, "in the morning", "Price went up in spring."},
    {"Ann Holloway", "Lisinopril 10 mg", okafor, corner, "4417203", "Refill", 62, 35, 90, 3, 0, "13.10", 1, "tablet", 1,
     "in the morning", "Last refill: ask for a new prescription."},
    {"Ann Holloway", "Vitamin D3 drops", okafor, corner, "4420988", "Initial", 45, 320, 60, 5, 5, "9.95", 4, "drop", 1,
     "with food", nullptr},
    {"Bartholomew Christopher Featherstonehaugh-Holloway", "Amoxicillin/Clavulanic acid oral suspension 457 mg/5 mL",
     lindqvist, riverside, "R-88120/24", "Initial", 20, -6, 10, 0, 0, "1248.50", 5, "mL", 8, "hours",
     "Keep in the refrigerator and shake well before each dose; discard what is left after ten days."},
    {"Bartholomew Christopher Featherstonehaugh-Holloway", "Salbutamol inhaler", lindqvist, riverside, "R-88213/24",
     "Initial", 200, 165, 30, 6, 6, "4.75", 2, "puff", 4, "as needed", nullptr},
    {"Bartholomew Christopher Featherstonehaugh-Holloway", "Salbutamol inhaler", lindqvist, riverside, "R-88213/24",
     "Refill", 33, 165, 30, 6, 5, "4.75", 2, "puff", 4, "as needed", nullptr},
    {"Zoë Holloway", "Cetirizine 5 mg", okafor, corner, "4419001", "Initial", 95, 270, 30, 11, 11, "6.20", 1, "tablet",
     1, "at bedtime", nullptr},
    {"Zoë Holloway", "Cetirizine 5 mg", okafor, corner, "4419001", "Refill", 64, 270, 30, 11, 10, "6.20", 1, "tablet",
     1, "at bedtime", nullptr},
    {"Zoë Holloway", "Cetirizine 5 mg", okafor, corner, "4419001", "Refill", 12, 270, 30, 11, 9, ".80", 1, "tablet", 1,
     "at bedtime", "Paid by the insurance but for the fee."},
};

std::string stored(int daysFromToday) {
    return QDate::currentDate().addDays(daysFromToday).toString(QStringLiteral("yyyyMMdd")).toStdString();
}

Records history() {
    Records records;
    for (const Fill& fill : fills) {
        Record record{{MHPatientKey, fill.patient},
                      {MHPharmacyKey, fill.pharmacy},
                      {MHDrugKey, fill.drug},
                      {MHPrescriberKey, fill.prescriber},
                      {MHRxNumberKey, fill.number},
                      {MHDaysSupplyKey, fill.supply},
                      {MHTotalCostKey, fill.cost},
                      {MHRefillsKey, fill.refills},
                      {MHRefillsRemainKey, fill.remaining},
                      {MHDispenseDateKey, stored(-fill.daysAgo)},
                      {MHExpireDateKey, stored(fill.expiresInDays)},
                      {MHTakeNbrKey, fill.take},
                      {MHDrugTypeMeasureKey, fill.measure},
                      {MHEveryIntervalKey, fill.every},
                      {MHWhenToTakeDrugKey, fill.when},
                      {MHFillTypeKey, fill.type}};
        if (fill.note) {
            record.set(MHNoteKey, fill.note);
        }
        records.push_back(record);
    }
    return records;
}

Record patient(const char* name, const char* address) {
    return {{patientNameKey, name},
            {patientAddressKey, address},
            {patientCityKey, "Springfield"},
            {patientStateKey, "OH"},
            {patientZipKey, "45501"}};
}

Record pharmacy(const char* name, const char* address, const char* note) {
    return {{pharmacyNameKey, name},
            {pharmacyAddressKey, address},
            {pharmacyNoteKey, note},
            {pharmacyEmailKey, "counter@pharmacy.example"},
            {pharmacyWebPageKey, "https://pharmacy.example"},
            {pharmacyPhoneKey, "(937) 555-0142"}};
}

Record prescriber(const char* name, const char* specialty) {
    return {{PrescriberNameKey, name},
            {PrescriberAddressKey, "12 Mill Lane"},
            {PrescriberPhoneKey, "(937) 555-0177"},
            {PrescriberEmailKey, "practice@clinic.example"},
            {PrescriberSpecialtyKey, specialty}};
}

Record drug(const char* name, const char* description) {
    return {{DrugNameKey, name}, {DrugDescriptionKey, description}};
}

void write(const Household& household) {
    removeHousehold();
    std::filesystem::create_directories(dataFolder());
    const auto check = [](bool isWritten) {
        if (!isWritten) {
            qFatal("the household cannot be written");
        }
    };
    check(writeArray(household.history, dataFolder(), prescriptionHistoryFile));
    check(writeArray(household.patients, dataFolder(), patientFile));
    check(writeArray(household.pharmacies, dataFolder(), pharmacyFile));
    check(writeArray(household.prescribers, dataFolder(), prescriberFile));
    check(writeArray(household.drugs, dataFolder(), drugFile));
}

}  // namespace

std::filesystem::path dataFolder() {
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return std::filesystem::path(base.toStdString()) / dataFolderName;
}

void removeHousehold() { std::filesystem::remove_all(dataFolder()); }

void writeSmallHousehold() {
    write({.history = history(),
           .patients = {patient("Ann Holloway", "7 Elm Avenue"), patient("Zoë Holloway", "7 Elm Avenue"),
                        patient("Bartholomew Christopher Featherstonehaugh-Holloway",
                                "Apartment 3, Old Customs House, 118 Upper Harbour Road")},
           .pharmacies = {pharmacy(corner, "1 Main Street", "Open until eight"),
                          pharmacy(riverside, "44 Quay Street", "Delivers on weekdays")},
           .prescribers = {prescriber(okafor, "Family medicine"), prescriber(lindqvist, "Cardiology")},
           .drugs = {drug("Lisinopril 10 mg", "For blood pressure"), drug("Vitamin D3 drops", "400 units a drop"),
                     drug("Amoxicillin/Clavulanic acid oral suspension 457 mg/5 mL", "Antibiotic"),
                     drug("Salbutamol inhaler", "Opens the airways"), drug("Cetirizine 5 mg", "Against hay fever")}});
}

void writeLargeHousehold(std::size_t fillCount) { write(makeHousehold(fillCount)); }

}  // namespace kpx::test
