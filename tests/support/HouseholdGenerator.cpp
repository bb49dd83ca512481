#include "tests/support/HouseholdGenerator.h"

#include "core/Keys.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>

namespace kpx::test {
namespace {

constexpr std::size_t receiptSize = 180;

/// A small generator of our own: the library's distributions differ from one library to another.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15U + 1) {}

    std::uint64_t next() {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return m_state * 0x2545F4914F6CDD1DU >> 16;
    }
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }

    template <typename T, std::size_t size>
    const T& oneOf(const std::array<T, size>& choices) {
        return choices[below(size)];
    }

private:
    std::uint64_t m_state;
};

template <typename... Arguments>
std::string format(const char* pattern, Arguments... arguments) {
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(), pattern, arguments...);
    return text.data();
}

constexpr std::array firstNames = {"Ann", "Bob", "Zoë", "Émile", "Carla", "Dmitri", "Ibrahim", "Mei-Ling"};
constexpr std::array lastNames = {"Abbott", "Brannigan", "Castellanos", "Dvořák", "Eriksen", "Fitzgerald"};
constexpr std::array streets = {"Main Street", "Elm Avenue", "Harbour Road", "Calle Ancha", "Mill Lane"};
constexpr std::array cities = {"Springfield", "Riverside", "Fairview", "Lakewood", "San José"};
constexpr std::array states = {"OH", "CA", "TX", "NY", "WA"};
constexpr std::array shops = {"Corner Pharmacy", "Riverside Chemist", "Town Drugs", "Apotheke am Markt"};
constexpr std::array specialties = {"Family medicine", "Cardiology", "Dermatology", "Paediatrics"};
constexpr std::array syllables = {"lo", "ra", "zi", "met", "cor", "pra", "vas", "ten", "ol", "ine", "xan", "ful"};
constexpr std::array measures = {"tablet", "capsule", "ml", "drop", "puff"};
constexpr std::array occasions = {"With a meal", "At bedtime", "In the morning", "As needed", "Before a meal"};
constexpr std::array notes = {
    "Take with plenty of water and not within two hours of any dairy product; keep it out of direct sunlight.",
    "Ask at the counter for the smaller bottle, the large one does not fit the dispenser. Doctor agreed by phone.",
    "Generic was not in stock, brand given instead.",
    "Überweisung liegt bei der Praxis; nächstes Mal früher bestellen 🙂",
    "",
};

std::string address(Dice& dice) { return format("%zu %s", 1 + dice.below(9999), dice.oneOf(streets)); }
std::string phone(Dice& dice) { return format("(%03zu) 555-%04zu", 200 + dice.below(700), dice.below(10000)); }

Records makePatients(std::size_t count, Dice& dice) {
    Records records;
    for (std::size_t index = 0; index < count; ++index) {
        records.push_back({{patientNameKey, format("%s %s %zu", dice.oneOf(firstNames), dice.oneOf(lastNames), index)},
                           {patientAddressKey, address(dice)},
                           {patientCityKey, dice.oneOf(cities)},
                           {patientStateKey, dice.oneOf(states)},
                           {patientZipKey, format("%05zu", dice.below(100000))}});
    }
    return records;
}

Records makePharmacies(std::size_t count, Dice& dice) {
    Records records;
    for (std::size_t index = 0; index < count; ++index) {
        records.push_back({{pharmacyNameKey, format("%s %zu", dice.oneOf(shops), index)},
                           {pharmacyAddressKey, address(dice)},
                           {pharmacyPhoneKey, phone(dice)},
                           {pharmacyEmailKey, format("counter%zu@pharmacy.example", index)},
                           {pharmacyWebPageKey, format("https://pharmacy%zu.example/", index)},
                           {pharmacyNoteKey, dice.oneOf(notes)}});
    }
    return records;
}

Records makePrescribers(std::size_t count, Dice& dice) {
    Records records;
    for (std::size_t index = 0; index < count; ++index) {
        records.push_back({{PrescriberNameKey, format("Dr. %s %zu", dice.oneOf(lastNames), index)},
                           {PrescriberAddressKey, address(dice)},
                           {PrescriberPhoneKey, phone(dice)},
                           {PrescriberEmailKey, format("practice%zu@medicine.example", index)},
                           {PrescriberSpecialtyKey, dice.oneOf(specialties)}});
    }
    return records;
}

Records makeDrugs(std::size_t count, Dice& dice) {
    Records records;
    for (std::size_t index = 0; index < count; ++index) {
        const std::string name = format("%s%s%s %zu mg", dice.oneOf(syllables), dice.oneOf(syllables),
                                        dice.oneOf(syllables), 5 * (1 + index));
        records.push_back({{DrugNameKey, name}, {DrugDescriptionKey, format("for %s", dice.oneOf(specialties))}});
    }
    return records;
}

std::string eightDigits(std::chrono::sys_days day) {
    const std::chrono::year_month_day date(day);
    return format("%04d%02u%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()));
}

Data makeReceipt(Dice& dice) {
    Data::Bytes bytes(receiptSize);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(dice.next());
    }
    return Data(std::move(bytes));
}

/// One prescription being filled again and again.
struct Prescription {
    Text patient, pharmacy, drug, prescriber, number, measure, occasion, expires;
    int daysSupply = 30;
    int refills = 0;
    int refillsLeft = 0;
    int take = 1;
    int interval = 1;
    bool isNew = true;
};

Prescription makePrescription(const Household& household, std::chrono::sys_days day, Dice& dice) {
    const auto nameOf = [&](const Records& records, const char* key) {
        return *records[dice.below(records.size())].text(key);
    };
    constexpr std::array supplies = {7, 10, 14, 28, 30, 60, 90};
    Prescription made;
    made.patient = nameOf(household.patients, patientNameKey);
    made.pharmacy = nameOf(household.pharmacies, pharmacyNameKey);
    made.drug = nameOf(household.drugs, DrugNameKey);
    made.prescriber = nameOf(household.prescribers, PrescriberNameKey);
    made.number = format("%07zu-%02zu", dice.below(10000000), dice.below(100));
    made.measure = dice.oneOf(measures);
    made.occasion = dice.oneOf(occasions);
    made.expires = eightDigits(day + std::chrono::days(365));
    made.daysSupply = dice.oneOf(supplies);
    made.refills = static_cast<int>(dice.below(12));
    made.refillsLeft = made.refills;
    made.take = 1 + static_cast<int>(dice.below(3));
    made.interval = 1 + static_cast<int>(dice.below(24));
    return made;
}

Record makeFill(const Prescription& prescription, std::chrono::sys_days day, Dice& dice) {
    Record fill = {
        {MHPatientKey, prescription.patient},
        {MHPharmacyKey, prescription.pharmacy},
        {MHDrugKey, prescription.drug},
        {MHPrescriberKey, prescription.prescriber},
        {MHRxNumberKey, prescription.number},
        {MHDaysSupplyKey, prescription.daysSupply},
        {MHTotalCostKey, format("%zu.%02zu", dice.below(400), dice.below(100))},
        {MHRefillsKey, prescription.refills},
        {MHRefillsRemainKey, prescription.refillsLeft},
        {MHDispenseDateKey, eightDigits(day)},
        {MHExpireDateKey, prescription.expires},
        {MHTakeNbrKey, prescription.take},
        {MHDrugTypeMeasureKey, prescription.measure},
        {MHEveryIntervalKey, prescription.interval},
        {MHWhenToTakeDrugKey, prescription.occasion},
        {MHFillTypeKey, prescription.isNew ? fillTypeInitial : fillTypeRefill},
    };
    if (dice.below(12) == 0) {
        fill.append(MHReceiptKey, makeReceipt(dice));
    }
    if (dice.below(3) == 0) {
        const std::string note = dice.oneOf(notes);
        fill.append(MHNoteKey, dice.below(2) == 0 ? note : format("%s (no. %zu)", note.c_str(), dice.below(100000)));
    }
    return fill;
}

}  // namespace

Household makeHousehold(std::size_t fillCount, std::uint64_t seed) {
    Dice dice(seed);
    Household household;
    household.patients = makePatients(8, dice);
    household.pharmacies = makePharmacies(6, dice);
    household.prescribers = makePrescribers(12, dice);
    household.drugs = makeDrugs(60, dice);

    // Ten fills a day at most, so that the first ones lie far enough back.
    constexpr std::size_t fillsPerDay = 10;
    const std::chrono::sys_days last = std::chrono::year(2024) / 6 / 30;
    std::vector<Prescription> running;
    for (std::size_t index = 0; index < fillCount; ++index) {
        const auto day = last - std::chrono::days((fillCount - 1 - index) / fillsPerDay);
        const std::size_t place = dice.below(200);
        if (place >= running.size()) {
            running.push_back(makePrescription(household, day, dice));
        }
        Prescription& prescription = running[std::min(place, running.size() - 1)];
        if (!prescription.isNew && prescription.refillsLeft == 0) {
            prescription = makePrescription(household, day, dice);
        }
        if (!prescription.isNew) {
            --prescription.refillsLeft;
        }
        household.history.push_back(makeFill(prescription, day, dice));
        prescription.isNew = false;
    }
    return household;
}

}  // namespace kpx::test
