#include "history/HistoryRecord.h"

#include "core/Keys.h"
#include "region/DateUtilities.h"
#include "region/Numbers.h"
#include "values/FieldFinder.h"
#include "values/NumberText.h"

#include <array>

namespace kpx {

namespace {

enum class RowValue { AsStored, Count, Date, Cost };

struct Column {
    Text key;
    Text identifier;
    RowValue value = RowValue::AsStored;
};

/// In the order in which a record is stored. The column identifier "everinterval" is spelled so.
const std::array<Column, 18>& historyColumns() {
    static const std::array<Column, 18> columns = {{
        {MHPatientKey, "patient"},
        {MHPharmacyKey, "pharmacy"},
        {MHDrugKey, "drugname"},
        {MHPrescriberKey, "prescriber"},
        {MHRxNumberKey, "scriptnum"},
        {MHDaysSupplyKey, "dayssupply", RowValue::Count},
        {MHTotalCostKey, "cost", RowValue::Cost},
        {MHRefillsKey, "refills", RowValue::Count},
        {MHRefillsRemainKey, "remainingrefills", RowValue::Count},
        {MHDispenseDateKey, "dispensedate", RowValue::Date},
        {MHExpireDateKey, "expiredate", RowValue::Date},
        {MHTakeNbrKey, "takenumber", RowValue::Count},
        {MHDrugTypeMeasureKey, "typemeasure"},
        {MHEveryIntervalKey, "everinterval", RowValue::Count},
        {MHWhenToTakeDrugKey, "whentotake"},
        {MHFillTypeKey, "filltype"},
        {MHReceiptKey, "receiptdata"},
        {MHNoteKey, "scriptnote"},
    }};
    return columns;
}

std::optional<Value> rowValue(const Value& stored, RowValue kind, const Environment& environment) {
    const Text* text = stored.as<Text>();
    if (kind == RowValue::AsStored || !text) {
        return stored;
    }
    if (kind == RowValue::Count) {
        // Old-style files know no numbers; in the table 9 stands before 10 all the same.
        return isWholeNumber(*text) ? Value(leadingInteger(*text)) : stored;
    }
    if (kind == RowValue::Date) {
        return Value(dateFromYYMMDDStr(*text, environment));
    }
    const auto cost = rowCostFromStoredText(*text);
    return cost ? std::optional<Value>(*cost) : std::nullopt;
}

Value storedValue(const Value& shown, RowValue kind, const Environment& environment) {
    if (const Date* date = shown.as<Date>(); date && kind == RowValue::Date) {
        return YYYYMMDDStrFromDate(*date, environment);
    }
    if (const double* cost = shown.as<double>(); cost && kind == RowValue::Cost) {
        // Straight from the number: a detour over the locale's separators would lose the decimal point
        // where "." groups.
        return formatCostStrings(*cost);
    }
    return shown;
}

}  // namespace

Record copyDictFromInputFieldsArray(const InputArray& input, const EntryForm& form, const Environment& environment) {
    return Record{
        {MHPatientKey, input.patient},
        {MHPharmacyKey, input.pharmacy},
        {MHDrugKey, input.drug},
        {MHPrescriberKey, input.prescriber},
        {MHRxNumberKey, input.rxNumber},
        {MHDaysSupplyKey, input.daysSupply},
        {MHTotalCostKey, cleanFormatCostStr(input.cost, environment)},
        {MHRefillsKey, input.initialRefills},
        {MHRefillsRemainKey, input.refillsRemaining},
        {MHDispenseDateKey, YYYYMMDDStrFromDate(form.dispenseDate, environment)},
        {MHExpireDateKey, YYYYMMDDStrFromDate(form.expirationDate, environment)},
        {MHTakeNbrKey, leadingInteger(form.takeNumber.value_or(""))},
        {MHDrugTypeMeasureKey, form.drugTypeOrMeasure.value_or("")},
        {MHEveryIntervalKey, leadingInteger(form.everyInterval.value_or(""))},
        {MHWhenToTakeDrugKey, form.whenToTake.value_or("")},
        {MHFillTypeKey, form.fillType.value_or("")},
    };
}

void keepUnchosenDosage(const EntryForm& form, const Record& stored, Record& changed) {
    const auto keep = [&](const std::optional<std::string>& chosen, const char* key) {
        const Value* value = stored.find(key);
        if (!chosen && value) {
            changed.set(key, *value);
        }
    };
    keep(form.takeNumber, MHTakeNbrKey);
    keep(form.drugTypeOrMeasure, MHDrugTypeMeasureKey);
    keep(form.everyInterval, MHEveryIntervalKey);
    keep(form.whenToTake, MHWhenToTakeDrugKey);
}

void populateMaintArray(const Records& records, Records& tvArray, const Environment& environment) {
    const auto& columns = historyColumns();
    const std::vector<FieldFinder> fields = [&] {
        std::vector<FieldFinder> finders;
        finders.reserve(columns.size());
        for (const Column& column : columns) {
            finders.emplace_back(column.key.view());
        }
        return finders;
    }();
    tvArray.reserve(tvArray.size() + records.size());
    for (const Record& record : records) {
        Record row;
        row.reserve(record.size());
        for (std::size_t index = 0; index < columns.size(); ++index) {
            const Value* stored = fields[index].in(record);
            if (!stored) {
                continue;
            }
            if (auto shown = rowValue(*stored, columns[index].value, environment)) {
                row.append(columns[index].identifier, std::move(*shown));
            }
        }
        tvArray.push_back(std::move(row));
    }
}

Record copyDictForSearchingDataFileArray(const Record& row, const Environment& environment) {
    Record record;
    for (const Column& column : historyColumns()) {
        if (const Value* shown = row.find(column.identifier)) {
            record.append(column.key, storedValue(*shown, column.value, environment));
        }
    }
    return record;
}

}  // namespace kpx
