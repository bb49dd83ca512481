#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx::test {

/// A folder of its own, removed with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, std::string_view bytes);

/// The names in a folder, in their order.
std::vector<std::string> namesIn(const std::filesystem::path& folder);

/// Whether the condition holds in a process of its own, which may limit its own rights.
bool holdsInChild(const std::function<bool()>& condition);

/// Gives up the rights of a superuser, who may write everywhere; true for anybody else.
bool becomeNobody();

}  // namespace kpx::test
