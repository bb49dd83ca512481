#include "history/FilterText.h"

#include "core/Keys.h"
#include "history/HistoryPredicates.h"
#include "region/DateUtilities.h"

namespace kpx {

std::string filterText(const HistoryFilter& filter, const Environment& environment, const LocalizedStrings& localized) {
    constexpr char separator[] = " · ";
    std::string text;
    if (filter.patient) {
        text += *filter.patient + separator;
    }
    if (filter.drug) {
        text += *filter.drug + separator;
    }
    if (filter.scriptType == scriptTypeInitial || filter.scriptType == scriptTypeRefill) {
        text += localized(filter.scriptType == scriptTypeInitial ? fillTypeInitial : fillTypeRefill) + separator;
    }
    return text + formatted(localized("%1$@ – %2$@"), {shortStyleFromDate(filter.begin, environment),
                                                       shortStyleFromDate(filter.end, environment)});
}

}  // namespace kpx
