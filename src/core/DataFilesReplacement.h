#pragma once

#include <filesystem>
#include <string_view>
#include <utility>

namespace kpx {

/// An open file descriptor, closed at the end of its life; false when opening failed.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor();

    explicit operator bool() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// Puts the bytes in place of the file's, or makes the file, so that at every moment, a loss of power
/// included, the old content or the new one is there, whole. Mode 0600.
///
/// The bytes first go to ".NAME.HEX.tmp" beside the file. A writer that was killed leaves that file
/// behind; the next write of the same file removes it. Writers hold a lock on theirs, so that no file
/// still being written is taken for a left-over one.
///
/// A symbolic link is followed to its end. False, with the old file as it was, when anything fails or
/// when the path names something other than a regular file.
[[nodiscard]] bool replaceFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace kpx
