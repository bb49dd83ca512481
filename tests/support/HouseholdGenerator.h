#pragma once

#include "values/Record.h"

#include <cstddef>
#include <cstdint>

namespace kpx::test {

/// The five data files of a made household, large or small: plausible names, numbers, dates and notes,
/// some of them with accents and emoji. The same arguments make the same household everywhere.
///
/// Prescriptions are filled at regular intervals, an initial fill and its refills; the history holds
/// `fillCount` fills in the order of their dispense dates. About one fill in three has a note, and one
/// in twelve a receipt of random bytes, which no program takes for its own bookmark.
struct Household {
    Records history;
    Records patients;
    Records pharmacies;
    Records prescribers;
    Records drugs;
};

Household makeHousehold(std::size_t fillCount, std::uint64_t seed = 1);

}  // namespace kpx::test
