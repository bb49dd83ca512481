#include "fuzz/ThrowAwayFolder.h"
#include "receipts/Bookmark.h"
#include "receipts/DataFolderRule.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::string_view mark = "KPXBookmark1";

/// A data folder with a receipt, and a secret beside it.
struct Household {
    Household() {
        folder.write("Velmora/receipt.png", "ink");
        folder.write("Velmora/2024/other.png", "other ink");
        folder.write("secret.png", "secret");
    }
    kpx::ThrowAwayFolder folder;
};

}  // namespace

// Whatever a record holds as its receipt, nothing is found but a file in the data folder, or in some folder of that
// name. Bytes without the mark of a bookmark are read behind one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Household household;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!bytes.starts_with(mark)) {
        bytes.insert(0, mark);
    }
    const std::filesystem::path dataFolder = household.folder.path() / "Velmora";
    const auto found = kpx::resolveBookmark(kpx::Data(kpx::Data::Bytes(bytes.begin(), bytes.end())), dataFolder);
    if (found && !kpx::liesInDataFolder(found->lexically_normal(), "Velmora")) {
        std::abort();
    }
    return 0;
}
