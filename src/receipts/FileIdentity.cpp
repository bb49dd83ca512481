#include "receipts/FileIdentity.h"

#include "files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace kpx {

namespace {

constexpr std::int64_t longestPart = 65536;

/// None when fewer bytes are there.
std::optional<std::vector<unsigned char>> bytesOf(const FileDescriptor& file, std::int64_t position,
                                                  std::int64_t length) {
    std::vector<unsigned char> bytes(static_cast<std::size_t>(length));
    const ssize_t count = pread(file.get(), bytes.data(), bytes.size(), position);
    return count == length ? std::optional(std::move(bytes)) : std::nullopt;
}

/// FNV-1a.
std::uint64_t hashed(const std::vector<unsigned char>& bytes, std::uint64_t hash) {
    constexpr std::uint64_t prime = 0x100000001b3;
    for (const unsigned char byte : bytes) {
        hash = (hash ^ byte) * prime;
    }
    return hash;
}

}  // namespace

std::optional<FileIdentity> identityOf(const std::filesystem::path& file) {
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileIdentity{static_cast<std::int64_t>(status.st_ino), static_cast<std::int64_t>(status.st_size)};
}

std::optional<std::int64_t> fingerprintOf(const std::filesystem::path& file) {
    const auto identity = identityOf(file);
    if (!identity || identity->size == 0) {
        return std::nullopt;
    }
    const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const std::int64_t part = std::min(identity->size, longestPart);
    const auto beginning = bytesOf(opened, 0, part);
    const auto end = bytesOf(opened, identity->size - part, part);
    if (!beginning || !end) {
        return std::nullopt;
    }
    constexpr std::uint64_t offsetBasis = 0xcbf29ce484222325;
    const std::uint64_t hash = hashed(*end, hashed(*beginning, offsetBasis));
    return static_cast<std::int64_t>(hash ^ static_cast<std::uint64_t>(identity->size));
}

}  // namespace kpx
