#pragma once

#include "values/Record.h"

#include <filesystem>
#include <optional>
#include <string>

namespace kpx {

/// A durable reference to a receipt file, kept as one opaque value in its record. It remembers the path
/// (below the data folder where the file lies there), the file's inode and size, and a fingerprint of
/// its content, so that the file is found again after a rename or move inside the data folder, after the
/// whole folder was moved or restored, and after both.
///
/// None when there is no regular file.
std::optional<Data> createBookmark(const std::filesystem::path& file, const std::filesystem::path& dataFolder);

/// The file a bookmark refers to:
///
/// | in the folder is …                                        | found                  |
/// |-----------------------------------------------------------|------------------------|
/// | the file, or a copy of it, where it was                   | that                   |
/// | the file under another name or in another subfolder       | that                   |
/// | a copy under another name                                 | that                   |
/// | only another file where it was (edited, scanned again)    | that other file        |
/// | none of these                                             | none                   |
///
/// "The file" is one of that size and fingerprint; among several, the one with the inode. A receipt that was empty
/// resembles every other empty file, and is only found where it was.
///
/// Symbolic links to folders are not searched, but followed where the path leads through one.
///
/// None also for data that createBookmark() cannot have made: such data is nobody's to interpret. Data
/// made up by somebody else leads to no file outside the folder, unless its path has the data folder's
/// name in it, as that of every receipt taken from elsewhere has.
std::optional<std::filesystem::path> resolveBookmark(const Data& bookmark, const std::filesystem::path& dataFolder);

/// The name that the bookmark's file had; empty for data that createBookmark() cannot have made.
std::string nameInBookmark(const Data& bookmark, const std::filesystem::path& dataFolder);

}  // namespace kpx
