#pragma once

#include <filesystem>
#include <string>

namespace kpx {

/// Puts the history of that day ("2026-01-05.plist"), if there is one, in place of the household's.
void takeOverHistory(const std::filesystem::path& histories, const std::string& day,
                     const std::filesystem::path& dataHome);

/// A disk that takes no more bytes, and one that does again, as far as the process sees it.
void setDiskFull(long long process, bool isFull);

}  // namespace kpx
