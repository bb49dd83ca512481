#pragma once

#include "earlier/FileContent.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// What is known of the beginnings of the data files, so that a file of which an early content is not known is not
/// taken for one that did not exist yet.
///
/// | the file                            | before the first content that is known                       |
/// |-------------------------------------|--------------------------------------------------------------|
/// | has no content that is known        | there was none                                               |
/// | was made by the program             | until then there was none, after it one that is kept no more |
/// | was there when it was first seen    | not known                                                    |
///
/// A file that was removed and made anew keeps its first beginning.
class Beginnings {
public:
    /// Null for every text that text() cannot give.
    static std::optional<Beginnings> fromText(std::string_view text);
    /// A line for each file that is noted: its name, and where the program made it the instant, written as in the name
    /// of a kept content.
    std::string text() const;

    /// The files that have a content now, or had one, were there when they were first seen; unless it is noted already
    /// that the program made them.
    void noteFound(const HouseholdContents& contents);
    void noteMade(std::size_t file, std::int64_t instant);

    /// Whether there was no such file at an instant before the first content that is known.
    bool wasMissing(std::size_t file, const std::vector<FileContent>& known, std::int64_t instant) const;

    bool operator==(const Beginnings&) const = default;

private:
    /// Until when there was no such file; the beginning of all time where that is not known. Null: never seen.
    std::array<std::optional<std::int64_t>, householdFileCount> m_missingUntil;
};

}  // namespace kpx
