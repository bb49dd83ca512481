#include "schedule/RefillSchedule.h"

#include "core/Keys.h"
#include "core/Sorting.h"
#include "region/DateUtilities.h"
#include "region/LocalizedStrings.h"
#include "values/FieldFinder.h"

namespace kpx {

namespace {

constexpr double secondsPerDay = 86400;

/// The dates of fills, one after the other; none where the record lacks what it takes.
class FillDates {
public:
    explicit FillDates(const Environment& environment) : m_environment(environment) {}

    std::optional<Date> dispensed(const Record& record) const { return storedDate(m_dispensed, record); }
    std::optional<Date> expiration(const Record& record) const { return storedDate(m_expiration, record); }
    std::optional<Date> nextFill(const Record& record) const { return nextFill(record, dispensed(record)); }
    std::optional<Date> nextFill(const Record& record, std::optional<Date> dispensed) const {
        if (!dispensed) {
            return std::nullopt;
        }
        const Value* days = m_daysSupply.in(record);
        return dispensed->addingSeconds(static_cast<double>(days ? integerValue(*days) : 0) * secondsPerDay);
    }

private:
    std::optional<Date> storedDate(const FieldFinder& field, const Record& record) const {
        const Text* text = field.textIn(record);
        return text ? std::optional(dateFromYYMMDDStr(*text, m_environment)) : std::nullopt;
    }

    const Environment& m_environment;
    FieldFinder m_dispensed{MHDispenseDateKey};
    FieldFinder m_expiration{MHExpireDateKey};
    FieldFinder m_daysSupply{MHDaysSupplyKey};
};

/// Of each record the text under the key, empty where it has none; views of the records' own bytes.
std::vector<std::string_view> textsOf(const Records& records, const char* key) {
    const FieldFinder field(key);
    std::vector<std::string_view> texts;
    texts.reserve(records.size());
    for (const Record& record : records) {
        const Text* text = field.textIn(record);
        texts.push_back(text ? text->view() : std::string_view());
    }
    return texts;
}

}  // namespace

std::optional<std::string> scheduleRefusal(const std::optional<std::string>& patient,
                                           const std::optional<std::string>& drug, const Records& history, int tag) {
    if (patient.value_or("").empty()) {
        return localizable(
            "No Patient Selected. Please select a Patient or if no patients, please add a patient first. ");
    }
    if (drug.value_or("").empty()) {
        return localizable("No Drug Selected. Please select a Drug or if no Drugs, please add a Drug first.");
    }
    if (history.empty()) {
        return localizable("There is no prescription maintenance history to show");
    }
    if (tag < static_cast<int>(ScheduleMode::LatestFill) || tag > static_cast<int>(ScheduleMode::Expired)) {
        return localizable("Invalid 'case' in respondToShowBtnPane2: Contact the developer");
    }
    return std::nullopt;
}

void removeDictsWithEarlierDispenseDate(Records& records, const Environment& environment) {
    const auto order = sortedOrder(records,
                                   {{MHPatientKey, true, Comparison::LocalizedStandard},
                                    {MHDrugKey, true, Comparison::LocalizedStandard},
                                    {MHDispenseDateKey, false, Comparison::LocalizedStandard}},
                                   environment);
    const std::vector<std::string_view> patients = textsOf(records, MHPatientKey);
    const std::vector<std::string_view> drugs = textsOf(records, MHDrugKey);
    std::string_view patient;
    std::string_view drug;
    Records latest;
    for (const std::size_t index : order) {
        if (patients[index] != patient || drugs[index] != drug) {
            patient = patients[index];
            drug = drugs[index];
            latest.push_back(records[index]);
        }
    }
    records = std::move(latest);
}

void overDueOnly(Records& records, const Environment& environment) {
    const FillDates dates(environment);
    std::erase_if(records, [&](const Record& record) {
        const auto expiration = dates.expiration(record);
        if (expiration && *expiration < environment.now) {
            return true;
        }
        const auto nextFill = dates.nextFill(record);
        return nextFill && *nextFill > environment.now;
    });
}

void expiredOnly(Records& records, const Environment& environment) {
    const FillDates dates(environment);
    std::erase_if(records, [&](const Record& record) {
        const auto expiration = dates.expiration(record);
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

    const FieldFinder patient(MHPatientKey);
    const FieldFinder drug(MHDrugKey);
    const FieldFinder rxNumber(MHRxNumberKey);
    const FillDates dates(environment);
    Records rows;
    rows.reserve(records.size());
    for (const Record& record : records) {
        Record row;
        row.reserve(6);
        const auto copy = [&](const FieldFinder& field, const Text& column) {
            if (const Value* value = field.in(record)) {
                row.append(column, *value);
            }
        };
        const auto put = [&](std::optional<Date> date, const Text& column) {
            if (date) {
                row.append(column, *date);
            }
        };
        copy(patient, patientColumn);
        copy(drug, drugColumn);
        copy(rxNumber, rxNumberColumn);
        const auto dispensed = dates.dispensed(record);
        put(dispensed, lastColumn);
        put(dates.expiration(record), expirationColumn);
        put(dates.nextFill(record, dispensed), nextColumn);
        rows.push_back(std::move(row));
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
