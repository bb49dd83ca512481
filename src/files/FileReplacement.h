#pragma once

#include "files/WholeFile.h"

#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>

namespace kpx {

/// What is to stand in a file.
struct NewContent {
    std::string_view bytes;
    /// The file's time of last change; none is the machine's clock at the moment of writing. A file system
    /// that does not take it changes nothing else.
    std::optional<std::timespec> time = std::nullopt;
    /// What was found when the content was read that this one was made from. What stood there and could not
    /// be read is not in these bytes, so it is never replaced by them.
    WholeFile::State madeFrom = WholeFile::State::Read;
};

/// Puts the bytes in place of the file's, or makes the file, so that at every moment, a loss of power
/// included, the old content or the new one is there, whole. Mode 0600.
///
/// The bytes first go to ".NAME.HEX.tmp" beside the file. A writer that was killed leaves that file
/// behind; the next write of the same file removes it. Writers hold a lock on theirs, so that no file
/// still being written is taken for a left-over one.
///
/// A symbolic link is followed to its end. False, with the old file as it was, when anything fails or
/// when the path names something other than a regular file. Throws nothing.
[[nodiscard]] bool replaceFile(const std::filesystem::path& path, const NewContent& content) noexcept;
[[nodiscard]] inline bool replaceFile(const std::filesystem::path& path, std::string_view bytes) noexcept {
    return replaceFile(path, NewContent{.bytes = bytes});
}

/// Removes what writers of any file in the folder that were killed left behind.
void removeLeftOvers(const std::filesystem::path& folder);

/// From then on the names in the folder outlast a loss of power. False when that cannot be had.
bool synchronizeFolder(const std::filesystem::path& folder);

}  // namespace kpx
