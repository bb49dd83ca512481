#pragma once

#include "region/Collation.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <string>
#include <vector>

namespace kpx {

/// One level of an ordering: the key (a column identifier for table rows), the direction and how texts
/// compare. Dates and numbers compare by value whatever the comparison.
struct SortDescriptor {
    std::string key;
    bool ascending = true;
    Comparison comparison = Comparison::LocalizedCaseInsensitive;
    bool operator==(const SortDescriptor&) const = default;
};

/// Sorts in place by the descriptors in their order of precedence; records that compare equal keep
/// their order. A record without a value comes before those that have one (after them when descending).
void sortByDescriptors(Records& records, const std::vector<SortDescriptor>& descriptors,
                       const Environment& environment);

/// The order in which sortByDescriptors() would put the records: position → index of the record. Stored words count as
/// they are shown in that language, or a column of them would look unsorted: "capsule" is "Kapsel" behind "Gramm".
std::vector<std::size_t> sortedOrder(const Records& records, const std::vector<SortDescriptor>& descriptors,
                                     const Environment& environment, const LocalizedStrings& localized = {});

/// The three-key sort of the reports, in place; answers the same array. A level whose key is
/// empty takes no part.
Records& doSortWithArray(Records& records, const SortDescriptor& first, const SortDescriptor& second,
                         const SortDescriptor& third, const Environment& environment);

}  // namespace kpx
