#pragma once

#include "files/FileDescriptor.h"

#include <filesystem>
#include <optional>

namespace kpx {

/// Locks the open file or folder for this process without waiting. False when another holds it; where the file system
/// knows no locks everybody goes on.
[[nodiscard]] bool tryToLock(const FileDescriptor& descriptor);

/// Holds a folder for this process until the descriptor is closed or the process ends, however it ends. The
/// lock is on the folder itself: no file comes into being, and nothing stale stays behind.
///
/// Null when another process holds the folder. Where there is no such folder, or its file system knows no
/// locks, the descriptor holds nothing and everybody goes on.
[[nodiscard]] std::optional<FileDescriptor> lockFolder(const std::filesystem::path& folder);

}  // namespace kpx
