#pragma once

#include "core/Predicate.h"
#include "values/Date.h"

#include <optional>
#include <string>

namespace kpx {

/// The script type of the filters: the tags of the fill-type radio group, and "no such group".
inline constexpr int scriptTypeInitial = 1;
inline constexpr int scriptTypeRefill = 2;
inline constexpr int scriptTypeAll = 3;
inline constexpr int scriptTypeNone = 9999;

/// The filter of tabs 1, 3 and 4 over records whose dispense date is a date: both names, the fill type,
/// and a dispense date from `begin` to `end`, both included, time of day and all.
///
/// "All" is known by its title, `allTitle`. The names stand in the predicate's text between double
/// quotes; a name that holds one matches nothing. No drug chosen means all drugs.
std::optional<Predicate> copyPredicateString(const std::optional<std::string>& patientTitle,
                                             const std::optional<std::string>& drugTitle, Date begin, Date end,
                                             int scriptType, const std::string& allTitle);

/// The filter of tab 2: both names, none meaning all. The names are arguments, so any name can match.
std::optional<Predicate> copyPredicateString(const std::optional<std::string>& patient,
                                             const std::optional<std::string>& drug);

}  // namespace kpx
