#pragma once

#include "region/LocalizedStrings.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace kpx {

/// What the user is told when a receipt lies outside the data folder.
struct RelocationText {
    std::string message;
    std::string informative;
    std::string openButton;
    std::string openToolTip;
    std::string cancelButton;
    std::string cancelToolTip;
};

RelocationText relocationText(const std::filesystem::path& file, std::string_view dataFolderName,
                              const LocalizedStrings& localized);

}  // namespace kpx
