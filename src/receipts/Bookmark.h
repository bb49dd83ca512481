#pragma once

#include "core/Record.h"

#include <filesystem>
#include <optional>

namespace kpx {

/// A durable reference to a receipt file, kept as one opaque value in its record. It remembers the path
/// (below the data folder where the file lies there), the file's identity on the disk and its size, so
/// that the file is found again after a rename or move inside the data folder, and after the whole
/// folder was moved or restored.
///
/// None when the file cannot be looked at.
std::optional<Data> createBookmark(const std::filesystem::path& file, const std::filesystem::path& dataFolder);

/// The file a bookmark refers to. None when it is gone, or when the data is not a bookmark of this
/// program: such data is nobody's to interpret.
std::optional<std::filesystem::path> resolveBookmark(const Data& bookmark, const std::filesystem::path& dataFolder);

}  // namespace kpx
