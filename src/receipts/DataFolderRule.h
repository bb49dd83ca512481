#pragma once

#include <filesystem>
#include <string_view>

namespace kpx {

/// Whether a receipt file may be attached: some component of its path is exactly the data folder's name,
/// wherever that folder lies. As loose as that; see behaviours.
bool liesInDataFolder(const std::filesystem::path& file, std::string_view dataFolderName);

}  // namespace kpx
