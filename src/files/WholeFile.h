#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace kpx {

/// What was found where a file was looked for.
struct WholeFile {
    enum class State {
        Missing,     ///< no such name: only then may somebody start afresh
        Unreadable,  ///< something is there: no regular file, a longer one, or one that cannot be read now
        Read,
    };
    State state = State::Unreadable;
    std::string bytes;  ///< the whole content; empty unless read
};

/// Reads a file whole. A symbolic link is followed; a link into nowhere is missing.
///
/// Only a regular file is opened, so that no pipe and no device holds anybody up or does something when
/// looked at. What is longer than `longest` bytes, or grows beyond that while it is read, is unreadable:
/// no file fills the memory. Throws nothing, also where memory ends.
[[nodiscard]] WholeFile readWholeFile(const std::filesystem::path& path, std::size_t longest) noexcept;

}  // namespace kpx
