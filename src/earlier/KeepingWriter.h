#pragma once

#include "earlier/EarlierFolder.h"
#include "earlier/OfferedStates.h"
#include "files/FileReplacement.h"
#include "region/Environment.h"

#include <filesystem>
#include <string_view>

namespace kpx {

/// What the user did that replaces a file.
enum class Replacing { Change, Deletion };

/// replaceFile() for a data file. The content that stood there is kept first, and after a success what need no
/// longer be kept is removed. That nothing could be kept stops no write and is not told. The file's time of last
/// change is the environment's now.
bool replaceKeepingEarlier(const std::filesystem::path& dataFolder, std::string_view fileName,
                           const NewContent& content, Replacing replacing, const Environment& environment);

enum class BroughtBack {
    Whole,
    NotAtAll,  ///< the present could not be kept, or the earlier not be read: nothing has changed
    InPart,    ///< some files could not be replaced; every content of before is kept
};

/// Puts the state's contents in place of those files that differ from them. All files of the present are kept
/// before the first is replaced. A file that did not exist then becomes an empty list.
BroughtBack bringBack(const std::filesystem::path& dataFolder, const EarlierState& state,
                      const Environment& environment);

}  // namespace kpx
