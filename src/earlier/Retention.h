#pragma once

#include "earlier/FileContent.h"
#include "region/Environment.h"

#include <cstdint>
#include <set>
#include <vector>

namespace kpx {

/// The instants whose contents are kept: of those at which something was written
///
/// | which                                | of                                        |
/// |--------------------------------------|-------------------------------------------|
/// | the latest 50                        | the last 24 hours                         |
/// | the last one before each day's end   | the 30 local days before today            |
/// | the last one before each month's end | the 24 local months before the present    |
///
/// A content may be much older than the day at whose end it was in force. Where something was written later than now,
/// by a clock that was ahead or is behind, what the rule kept at the latest of them stays kept too: a wrong clock costs
/// no earlier state.
std::set<std::int64_t> keptInstants(const HouseholdContents& contents, const Environment& environment);

/// The contents of a file that a Delete replaced in the last 30 days, the latest 50 of them, oldest first.
std::vector<FileContent> keptDeletions(const std::vector<FileContent>& contents, const Environment& environment);

/// When the content was replaced; as long as that is not known, when the next known one was written.
std::int64_t endOf(const FileContent& content, const std::vector<FileContent>& contents);

/// What a file held at the end of that second.
struct ContentAt {
    /// False when the content then in force is not kept.
    bool isKnown = true;
    const FileContent* content = nullptr;  ///< null when there was no such file, as far as is known
};
ContentAt contentAt(const std::vector<FileContent>& contents, std::int64_t instant);

/// What need be kept no longer, oldest first; never a content in the data folder.
std::vector<FileContent> superfluousContents(const HouseholdContents& contents, const Environment& environment);

}  // namespace kpx
