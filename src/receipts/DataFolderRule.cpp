#include "receipts/DataFolderRule.h"

#include <algorithm>

namespace kpx {

bool liesInDataFolder(const std::filesystem::path& file, std::string_view dataFolderName) {
    return std::ranges::find(file, std::filesystem::path(dataFolderName)) != file.end();
}

}  // namespace kpx
