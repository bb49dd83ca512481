#include "schedule/RefillSchedule.h"

#include "core/DateUtilities.h"
#include "core/Keys.h"
#include "core/Sorting.h"

namespace kpx {

namespace {

constexpr double secondsPerDay = 86400;

std::optional<Date> storedDate(const Record& record, const char* key, const Environment& environment) {
    const auto text = record.text(key);
    return text ? std::optional(dateFromYYMMDDStr(*text, environment)) : std::nullopt;
}

std::optional<Date> nextFillDate(const Record& record, const Environment& environment) {
    const auto dispensed = storedDate(record, MHDispenseDateKey, environment);
    if (!dispensed) {
        return std::nullopt;
    }
    return dispensed->addingSeconds(static_cast<double>(record.integer(MHDaysSupplyKey)) * secondsPerDay);
}

}  // namespace

void removeDictsWithEarlierDispenseDate(Records& records, const Environment& environment) {
    doSortWithArray(records, {MHPatientKey, true, Comparison::LocalizedStandard},
                    {MHDrugKey, true, Comparison::LocalizedStandard},
                    {MHDispenseDateKey, false, Comparison::LocalizedStandard}, environment);
    Text patient;
    Text drug;
    std::erase_if(records, [&](const Record& record) {
        const Text recordPatient = record.text(MHPatientKey).value_or(Text());
        const Text recordDrug = record.text(MHDrugKey).value_or(Text());
        if (recordPatient == patient && recordDrug == drug) {
            return true;
        }
        patient = recordPatient;
        drug = recordDrug;
        return false;
    });
}

void overDueOnly(Records& records, const Environment& environment) {
    std::erase_if(records, [&](const Record& record) {
        const auto expiration = storedDate(record, MHExpireDateKey, environment);
        if (expiration && *expiration < environment.now) {
            return true;
        }
        const auto nextFill = nextFillDate(record, environment);
        return nextFill && *nextFill > environment.now;
    });
}

void expiredOnly(Records& records, const Environment& environment) {
    std::erase_if(records, [&](const Record& record) {
        const auto expiration = storedDate(record, MHExpireDateKey, environment);
        return expiration && *expiration > environment.now;
    });
}

void applyScheduleMode(Records& records, ScheduleMode mode, const Environment& environment) {
    if (mode == ScheduleMode::WholeHistory) {
        return;
    }
    removeDictsWithEarlierDispenseDate(records, environment);
    if (mode == ScheduleMode::Overdue) {
        overDueOnly(records, environment);
    } else if (mode == ScheduleMode::Expired) {
        expiredOnly(records, environment);
    }
}

Records copyMaintDueArrayForTVFromFilteredArray(const Records& records, const Environment& environment) {
    static const Text patientColumn = "patientTabTwo";
    static const Text drugColumn = "drugTabTwo";
    static const Text rxNumberColumn = "rxnumTabTwo";
    static const Text lastColumn = "lastdate";
    static const Text expirationColumn = "expiredateTabTwo";
    static const Text nextColumn = "nextdate";

    Records rows;
    rows.reserve(records.size());
    for (const Record& record : records) {
        Record::Fields row;
        row.reserve(6);
        const auto copy = [&](const char* key, const Text& column) {
            if (const Value* value = record.find(key)) {
                row.emplace_back(column, *value);
            }
        };
        const auto put = [&](std::optional<Date> date, const Text& column) {
            if (date) {
                row.emplace_back(column, *date);
            }
        };
        copy(MHPatientKey, patientColumn);
        copy(MHDrugKey, drugColumn);
        copy(MHRxNumberKey, rxNumberColumn);
        put(storedDate(record, MHDispenseDateKey, environment), lastColumn);
        put(storedDate(record, MHExpireDateKey, environment), expirationColumn);
        put(nextFillDate(record, environment), nextColumn);
        rows.emplace_back(std::move(row));
    }
    return rows;
}

bool isDueCell(const Record& row, const std::string& column, Date now) {
    if (column != "nextdate" && column != "expiredateTabTwo") {
        return false;
    }
    const auto date = row.date(column);
    return date && *date <= now;
}

}  // namespace kpx
