#pragma once

#include "earlier/HouseholdFiles.h"
#include "region/LocalizedStrings.h"

#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace kpx {

/// What bringing back an earlier list would do to the present one.
struct FileDifference {
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t changed = 0;
    bool operator==(const FileDifference&) const = default;
};

/// What a file holds now, made ready to be compared with many earlier contents.
class PresentRecords {
public:
    PresentRecords(const HouseholdFile& file, Records records);

    std::size_t count() const { return m_count; }

    /// Pairs the records of both by what identifies them, and of several alike the equal ones first. What then has
    /// no partner is added or removed, what differs from its partner is changed. The order makes no difference.
    FileDifference differenceTo(const Records& earlier) const;

private:
    /// Records that are equal, by one of them.
    struct Equals {
        Record record;
        std::size_t count = 0;
    };
    /// Where those equal to the record stand; the number of all kinds when there are none.
    std::size_t placeOf(const Record& record, std::size_t hash) const;

    const HouseholdFile* m_file;
    std::size_t m_count;
    std::vector<Equals> m_equals;
    std::unordered_multimap<std::size_t, std::size_t> m_placesByHash;
};

/// "+3 fills, −1 patient, 2 changed": by kind, what is added before what is removed, and all that is changed in
/// one sum. Empty when there is no difference.
std::string differenceText(const std::array<FileDifference, householdFileCount>& differences,
                           const LocalizedStrings& localized);

}  // namespace kpx
