#include "reports/ReportColumns.h"

#include "core/DateUtilities.h"
#include "core/Keys.h"
#include "core/Numbers.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace kpx {

namespace {

using enum ReportField;

constexpr ReportColumn prescriptions[] = {
    {20, "Patient", PlainText, MHPatientKey},
    {150, "Drug Name", PlainText, MHDrugKey},
    {300, "Rx Number", PlainText, MHRxNumberKey},
    {410, "Dispense/Expire Dates", TwoDates, MHDispenseDateKey, MHExpireDateKey},
    {560, "Type/Remaining Refills", TypeAndRefills, MHFillTypeKey, MHRefillsRemainKey},
    {700, "Cost", Currency, MHTotalCostKey},
};

constexpr ReportColumn prescriptionsByPrescriber[] = {
    {20, "Patient", PlainText, MHPatientKey},
    {150, "Prescriber", PlainText, MHPrescriberKey},
    {260, "Drug Name", PlainText, MHDrugKey},
    {380, "Rx Number", PlainText, MHRxNumberKey},
    {470, "Dispense/Expire Dates", TwoDates, MHDispenseDateKey, MHExpireDateKey},
    {610, "Type/Remaining Refills", TypeAndRefills, MHFillTypeKey, MHRefillsRemainKey},
};

constexpr ReportColumn patients[] = {
    {20, "Patient", PlainText, patientNameKey},     {200, "Address", PlainText, patientAddressKey},
    {400, "City", PlainText, patientCityKey},       {550, "State/County", PlainText, patientStateKey},
    {660, "Postal Code", PlainText, patientZipKey},
};

constexpr ReportColumn pharmacies[] = {
    {20, "Pharmacy", PlainText, pharmacyNameKey},
    {200, "Address", PlainText, pharmacyAddressKey},
    {480, "Phone", PlainText, pharmacyPhoneKey},
    {570, "Notes", PlainText, pharmacyNoteKey},
};

constexpr ReportColumn drugs[] = {
    {20, "Drug Name", PlainText, DrugNameKey},
    {400, "Drug Description", PlainText, DrugDescriptionKey},
};

constexpr ReportColumn prescribers[] = {
    {20, "Prescriber Name", PlainText, PrescriberNameKey},
    {200, "Prescriber Address", PlainText, PrescriberAddressKey},
    {480, "Telephone", PlainText, PrescriberPhoneKey},
    {570, "Specialty", PlainText, PrescriberSpecialtyKey},
};

constexpr ReportColumn tableContents[] = {
    {20, nullptr, PlainText, "patient"},
    {100, nullptr, PlainText, "pharmacy"},
    {200, nullptr, PlainText, "drugname"},
    {310, nullptr, PlainText, "prescriber"},
    {410, nullptr, PlainText, "scriptnote", nullptr, true},
    {540, nullptr, PlainText, "filltype"},
    {580, nullptr, PlainText, "scriptnum"},
    {630, nullptr, NarrowedInteger, "remainingrefills", nullptr, true},
    {685, nullptr, Currency, "cost", nullptr, true},
    {725, nullptr, ShortDate, "dispensedate"},
};

std::string decimalText(auto number) {
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return std::string(buffer.data(), end);
}

/// A text as it is, a number in decimals; null for what has no text, and for nothing.
std::optional<std::string> shownText(const Value* value) {
    if (!value) {
        return std::nullopt;
    }
    if (const auto* text = value->as<Text>()) {
        return text->string();
    }
    if (const auto* number = value->as<std::int64_t>()) {
        return decimalText(*number);
    }
    if (const auto* number = value->as<std::uint64_t>()) {
        return decimalText(*number);
    }
    if (const auto* number = value->as<double>()) {
        return decimalText(*number);
    }
    return std::nullopt;
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
        case 1:
        case 2:
            return prescriptions;
        case 3:
            return prescriptionsByPrescriber;
        case 4:
            return patients;
        case 5:
            return pharmacies;
        case 6:
            return drugs;
        case 7:
            return prescribers;
        case 99:
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
    const auto text = shownText(value);
    return text ? std::optional(dateFromYYMMDDStr(*text, environment)) : std::nullopt;
}

std::optional<std::string> reportFieldText(const ReportColumn& column, const Record& record,
                                           const Environment& environment) {
    const Value* value = record.find(column.key);
    switch (column.field) {
        case TwoDates:
            return joined(shortDate(record, column.key, environment), "\t",
                          shortDate(record, column.secondKey, environment));
        case TypeAndRefills:
            return joined(shownText(value), "\t\t", shownText(record.find(column.secondKey)));
        case Currency:
            if (const auto cost = shownText(value)) {
                return formatCurrency(leadingNumber(*cost), environment);
            }
            return std::nullopt;
        case ShortDate:
            return shortDate(record, column.key, environment);
        case NarrowedInteger:
            return value ? std::optional(decimalText(static_cast<std::int16_t>(integerValue(*value)))) : std::nullopt;
        case PlainText:
            break;
    }
    return shownText(value);
}

}  // namespace kpx
