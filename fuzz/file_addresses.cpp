#include "files/FileAddress.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

// Whatever another program drops or leaves in the clipboard means one file of this machine, or none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view address(reinterpret_cast<const char*>(data), size);
    const auto file = kpx::fileOfAddress(address);
    if (!file) {
        return 0;
    }
    const std::string& path = file->native();
    const bool isPath = address.starts_with('/');
    if (!file->is_absolute() || path.find('\0') != std::string::npos || (isPath && path != address) ||
        (!isPath && !address.starts_with("file:/"))) {
        std::abort();
    }
    return 0;
}
