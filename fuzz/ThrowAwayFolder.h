#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace kpx {

/// A folder for the readers that want a file, gone again at the end of the process.
class ThrowAwayFolder {
public:
    ThrowAwayFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "fuzzXXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~ThrowAwayFolder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    ThrowAwayFolder(const ThrowAwayFolder&) = delete;
    ThrowAwayFolder& operator=(const ThrowAwayFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    void write(const std::filesystem::path& name, std::string_view bytes) const {
        std::filesystem::create_directories((m_path / name).parent_path());
        // A new file: to empty one that is there takes some file systems a wait for the disk.
        std::filesystem::remove(m_path / name);
        std::ofstream(m_path / name, std::ios::binary) << bytes;
    }

private:
    std::filesystem::path m_path;
};

}  // namespace kpx
