#include "plist/PropertyList.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Whatever a reader accepts can be written, is read back, and is then written to the same bytes. The
// bytes are compared because they tell more than the values: a NaN differs from itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto first = kpx::readPropertyList({reinterpret_cast<const char*>(data), size});
    if (!first) {
        return 0;
    }
    const auto written = kpx::writePropertyList(*first);
    if (!written) {
        std::abort();
    }
    const auto second = kpx::readPropertyList(*written);
    if (!second) {
        std::abort();
    }
    const auto rewritten = kpx::writePropertyList(*second);
    if (!rewritten || *rewritten != *written) {
        std::abort();
    }
    return 0;
}
