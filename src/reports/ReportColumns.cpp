#include "reports/ReportColumns.h"

#include "core/Keys.h"
#include "core/StoredWords.h"
#include "region/DateUtilities.h"
#include "region/Numbers.h"
#include "reports/ReportKind.h"
#include "values/NumberText.h"

#include <cstdint>

namespace kpx {

namespace {

using enum ReportField;

constexpr ReportColumn prescriptions[] = {
    {20, localizable("Patient"), PlainText, MHPatientKey},
    {150, localizable("Drug Name"), PlainText, MHDrugKey},
    {300, localizable("Rx Number"), PlainText, MHRxNumberKey},
    {410, localizable("Dispense/Expire Dates"), TwoDates, MHDispenseDateKey, MHExpireDateKey},
    {560, localizable("Type/Remaining Refills"), TypeAndRefills, MHFillTypeKey, MHRefillsRemainKey},
    {700, localizable("Cost"), Currency, MHTotalCostKey},
};

constexpr ReportColumn prescriptionsByPrescriber[] = {
    {20, localizable("Patient"), PlainText, MHPatientKey},
    {150, localizable("Prescriber"), PlainText, MHPrescriberKey},
    {260, localizable("Drug Name"), PlainText, MHDrugKey},
    {380, localizable("Rx Number"), PlainText, MHRxNumberKey},
    {470, localizable("Dispense/Expire Dates"), TwoDates, MHDispenseDateKey, MHExpireDateKey},
    {610, localizable("Type/Remaining Refills"), TypeAndRefills, MHFillTypeKey, MHRefillsRemainKey},
};

constexpr ReportColumn patients[] = {
    {20, localizable("Patient"), PlainText, patientNameKey},
    {200, localizable("Address"), PlainText, patientAddressKey},
    {400, localizable("City"), PlainText, patientCityKey},
    {550, localizable("State/County"), PlainText, patientStateKey},
    {660, localizable("Postal Code"), PlainText, patientZipKey},
};

constexpr ReportColumn pharmacies[] = {
    {20, localizable("Pharmacy"), PlainText, pharmacyNameKey},
    {200, localizable("Address"), PlainText, pharmacyAddressKey},
    {480, localizable("Phone"), PlainText, pharmacyPhoneKey},
    {570, localizable("Notes"), PlainText, pharmacyNoteKey},
};

constexpr ReportColumn drugs[] = {
    {20, localizable("Drug Name"), PlainText, DrugNameKey},
    {400, localizable("Drug Description"), PlainText, DrugDescriptionKey},
};

constexpr ReportColumn prescribers[] = {
    {20, localizable("Prescriber Name"), PlainText, PrescriberNameKey},
    {200, localizable("Prescriber Address"), PlainText, PrescriberAddressKey},
    {480, localizable("Telephone"), PlainText, PrescriberPhoneKey},
    {570, localizable("Specialty"), PlainText, PrescriberSpecialtyKey},
};

constexpr ReportColumn tableContents[] = {
    {20, nullptr, PlainText, "patient"},
    {100, nullptr, PlainText, "pharmacy"},
    {200, nullptr, PlainText, "drugname"},
    {310, nullptr, PlainText, "prescriber"},
    {410, nullptr, PlainText, "scriptnote", nullptr, true},
    {540, nullptr, Word, "filltype"},
    {580, nullptr, PlainText, "scriptnum"},
    {630, nullptr, NarrowedInteger, "remainingrefills", nullptr, true},
    {685, nullptr, Currency, "cost", nullptr, true},
    {725, nullptr, ShortDate, "dispensedate"},
};

std::optional<std::string> plainText(const Value* value) {
    const auto text = textOfValue(value);
    return text ? std::optional(text->string()) : std::nullopt;
}

std::optional<std::string> word(const char* key, const Value* value, const LocalizedStrings& localized) {
    const auto text = plainText(value);
    return text ? std::optional(shownWord(key, *text, localized)) : std::nullopt;
}

std::optional<std::string> shortDate(const Record& record, const char* key, const Environment& environment) {
    const auto date = reportDate(record, key, environment);
    return date ? std::optional(shortStyleFromDate(*date, environment)) : std::nullopt;
}

std::optional<std::string> joined(std::optional<std::string> first, const char* tabs,
                                  const std::optional<std::string>& second) {
    return first && second ? std::optional(std::move(*first) + tabs + *second) : std::nullopt;
}

}  // namespace

std::span<const ReportColumn> reportColumns(int type) {
    switch (type) {
        case activePrescriptionsReport:
        case allPrescriptionsReport:
            return prescriptions;
        case prescriptionsByPrescriberReport:
            return prescriptionsByPrescriber;
        case patientListReport:
            return patients;
        case pharmacyListReport:
            return pharmacies;
        case drugListReport:
            return drugs;
        case prescriberListReport:
            return prescribers;
        case tableContentsReport:
            return tableContents;
        default:
            return {};
    }
}

std::optional<Date> reportDate(const Record& record, const char* key, const Environment& environment) {
    const Value* value = record.find(key);
    if (const auto* date = value ? value->as<Date>() : nullptr) {
        return *date;
    }
    const auto text = plainText(value);
    return text ? std::optional(dateFromYYMMDDStr(*text, environment)) : std::nullopt;
}

std::optional<std::string> reportFieldText(const ReportColumn& column, const Record& record,
                                           const Environment& environment, const LocalizedStrings& localized) {
    const Value* value = record.find(column.key);
    switch (column.field) {
        case TwoDates:
            return joined(shortDate(record, column.key, environment), "\t",
                          shortDate(record, column.secondKey, environment));
        case TypeAndRefills:
            return joined(word(column.key, value, localized), "\t\t", plainText(record.find(column.secondKey)));
        case Word:
            return word(column.key, value, localized);
        case Currency:
            if (const auto cost = plainText(value)) {
                return formatCurrency(leadingNumber(*cost), environment);
            }
            return std::nullopt;
        case ShortDate:
            return shortDate(record, column.key, environment);
        case NarrowedInteger:
            return value ? std::optional(std::to_string(static_cast<std::int16_t>(integerValue(*value))))
                         : std::nullopt;
        case PlainText:
            break;
    }
    return plainText(value);
}

}  // namespace kpx
