#include "files/WholeFile.h"

#include "files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>

namespace kpx {
namespace {

/// Null when reading fails or does not end within the bound.
std::optional<std::string> contentOf(const FileDescriptor& file, std::size_t expected, std::size_t longest) {
    // One byte of room beyond what is expected, so that one reading more finds the end.
    std::string bytes(expected + 1, '\0');
    std::size_t length = 0;
    while (true) {
        const ssize_t count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
        if (length > longest) {
            return std::nullopt;
        }
        if (length == bytes.size()) {  // it has grown, or its size is not known beforehand
            constexpr std::size_t more = 4096;
            bytes.resize(std::min(std::max(length * 2, more), longest + 1));
        }
    }
    bytes.resize(length);
    return bytes;
}

WholeFile readRegularFile(const std::filesystem::path& path, std::size_t longest) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return {errno == ENOENT ? WholeFile::State::Missing : WholeFile::State::Unreadable, {}};
    }
    // Between the two looks the name may have come to mean a pipe: do not wait for its other end.
    const FileDescriptor file(
        S_ISREG(status.st_mode) ? ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY) : -1);
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<std::uintmax_t>(status.st_size) > longest) {
        return {};
    }
    auto bytes = contentOf(file, static_cast<std::size_t>(status.st_size), longest);
    return bytes ? WholeFile{WholeFile::State::Read, *std::move(bytes)} : WholeFile{};
}

}  // namespace

WholeFile readWholeFile(const std::filesystem::path& path, std::size_t longest) noexcept {
    try {
        return readRegularFile(path, longest);
    } catch (const std::bad_alloc&) {
        return {};
    } catch (const std::length_error&) {
        return {};
    }
}

}  // namespace kpx
