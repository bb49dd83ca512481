#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace kpx {

/// What a file is known by when its name has changed. The device is no part of it: the same disk gets
/// another number at the next start of the machine.
struct FileIdentity {
    std::int64_t inode = 0;
    std::int64_t size = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// None when there is no regular file at the end of the path and its symbolic links. Opens nothing, so
/// that a pipe or a slow device holds nobody up.
std::optional<FileIdentity> identityOf(const std::filesystem::path& file);

/// A number made from the file's size and from how it begins and ends: equal for a copy, and most
/// unlikely so for another file. Reads at most 128 kB of it. None when it cannot be read, and for an
/// empty file, which resembles every other one.
std::optional<std::int64_t> fingerprintOf(const std::filesystem::path& file);

}  // namespace kpx
