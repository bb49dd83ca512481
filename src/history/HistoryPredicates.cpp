#include "history/HistoryPredicates.h"

#include "core/Keys.h"
#include "region/LocalizedStrings.h"

namespace kpx {

namespace {

constexpr char anything[] = "*";

std::string fillTypeClause(int scriptType) {
    switch (scriptType) {
        case scriptTypeInitial:
            return formatted("AND MHFillTypeKey == \"%@\" ", {fillTypeInitial});
        case scriptTypeRefill:
            return formatted("AND MHFillTypeKey == \"%@\" ", {fillTypeRefill});
        case scriptTypeAll:
            return formatted("AND MHFillTypeKey LIKE[cd] \"%@\" ", {anything});
        default:
            return {};
    }
}

}  // namespace

std::optional<Predicate> copyPredicateString(const std::optional<std::string>& patientTitle,
                                             const std::optional<std::string>& drugTitle, Date begin, Date end,
                                             int scriptType, const std::string& allTitle) {
    const bool allPatients = patientTitle == allTitle;
    const bool allDrugs = !drugTitle || drugTitle == allTitle;
    const auto breaksItsLiteral = [](const std::optional<std::string>& name) {
        return !name || name->find('"') != std::string::npos;
    };
    if ((!allPatients && breaksItsLiteral(patientTitle)) || (!allDrugs && breaksItsLiteral(drugTitle))) {
        return std::nullopt;
    }
    const std::string patientClause = allPatients ? formatted("MHPatientKey LIKE[cd] \"%@\" ", {anything})
                                                  : formatted("MHPatientKey == \"%@\" ", {*patientTitle});
    const std::string drugClause = allDrugs ? formatted("AND MHDrugKey LIKE[cd] \"%@\" ", {anything})
                                            : formatted("AND MHDrugKey == \"%@\" ", {*drugTitle});
    return Predicate::withFormat(formatted("%@ %@ %@ %@", {patientClause, drugClause, fillTypeClause(scriptType),
                                                           "AND MHDispenseDateKey >= %@ AND MHDispenseDateKey <= %@"}),
                                 {begin, end});
}

std::optional<Predicate> copyPredicateString(const std::optional<std::string>& patient,
                                             const std::optional<std::string>& drug) {
    const std::string format = formatted("%@ %@", {patient ? "MHPatientKey == %@" : "MHPatientKey LIKE[cd] %@",
                                                   drug ? "AND MHDrugKey == %@" : "AND MHDrugKey LIKE[cd] %@ "});
    return Predicate::withFormat(format, {patient.value_or(anything), drug.value_or(anything)});
}

}  // namespace kpx
