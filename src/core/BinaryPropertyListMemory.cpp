#include "core/BinaryPropertyListMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <memory>

namespace kpx {

void expectToFill(void* buffer, std::size_t size) {
    constexpr std::size_t large = std::size_t{4} << 20;
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    if (size >= large && std::align(page, large / 2, buffer, size)) {
        ::madvise(buffer, size / page * page, MADV_HUGEPAGE);  // only advice: a refusal does not matter
    }
}

}  // namespace kpx
