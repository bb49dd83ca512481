#include "plist/BinaryPropertyListTable.h"

#include <cstring>
#include <random>

namespace kpx {
namespace {

constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;

std::uint64_t seedOfThisRun() {
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
}

std::uint64_t mixed(std::uint64_t hash, std::uint64_t bits) {
    hash = (hash ^ bits) * factor;
    return hash ^ hash >> 32;
}

template <typename Number>
std::uint64_t load(const char* bytes) {
    Number number = 0;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

const std::uint64_t seed = seedOfThisRun();

}  // namespace

std::uint64_t hashOfNumber(std::uint64_t number) { return mixed(mixed(seed, number), factor); }

std::uint64_t hashOfBytes(std::string_view bytes) {
    std::uint64_t hash = mixed(seed, bytes.size());
    const char* position = bytes.data();
    std::size_t left = bytes.size();
    for (; left > 8; left -= 8, position += 8) {
        hash = mixed(hash, load<std::uint64_t>(position));
    }
    // The last bytes, together with some before them where there are.
    if (bytes.size() >= 8) {
        hash = mixed(hash, load<std::uint64_t>(position + left - 8));
    } else if (left >= 4) {
        hash = mixed(hash, load<std::uint32_t>(position) << 32 | load<std::uint32_t>(position + left - 4));
    } else {
        std::uint64_t few = 0;
        for (std::size_t index = 0; index < left; ++index) {
            few = few << 8 | static_cast<std::uint8_t>(position[index]);
        }
        hash = mixed(hash, few);
    }
    return mixed(hash, factor);
}

}  // namespace kpx
