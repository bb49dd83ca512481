#pragma once

#include "earlier/HouseholdFiles.h"

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace kpx {

/// A content that a data file has or had. Instants are whole seconds since 1970, UTC.
struct FileContent {
    std::size_t file = 0;  ///< its place in householdFiles()
    std::int64_t since = 0;
    /// Among those of one second, counted from 1; the later, the higher.
    int number = 1;
    /// It stands in the data folder, and is the last of its second.
    bool isPresent = false;
    /// A Delete replaced it.
    bool wasDeletedFrom = false;
    /// When it was replaced, where that is known.
    std::optional<std::int64_t> until = std::nullopt;

    auto order() const { return std::tuple(since, isPresent, number); }
    friend bool operator==(const FileContent& left, const FileContent& right) {
        return left.file == right.file && left.order() == right.order();
    }
};

/// All that is known of each file, oldest first, in the order of householdFiles().
using HouseholdContents = std::array<std::vector<FileContent>, householdFileCount>;

/// The name under which a content is kept: the file's, the content's time, its number and its fate.
///
///     patientFileForKPX.20240305T170000Z              patientFileForKPX.20240305T170000Z-2
///     patientFileForKPX.20240305T170000Z-deleted      patientFileForKPX.20240305T170000Z-2-deleted
std::string nameOfKeptContent(const FileContent& content);

/// The inverse; none for every text that nameOfKeptContent() cannot give.
std::optional<FileContent> keptContentOfName(std::string_view name);

}  // namespace kpx
