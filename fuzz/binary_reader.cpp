#include "plist/BinaryPropertyList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace {

/// A file around the input, whose first byte is the number of objects, followed by their offsets, one
/// byte each, and their bytes. A mutation of any length thus leaves a trailer that fits.
std::string framed(std::string_view input) {
    const auto wanted = static_cast<std::uint8_t>(input.front());
    input.remove_prefix(1);
    const std::size_t count = std::min<std::size_t>(wanted, input.size() / 2);
    std::string offsets(input.substr(0, count));
    for (char& offset : offsets) {
        offset = static_cast<char>(8 + static_cast<std::uint8_t>(offset) % 248);
    }
    std::string bytes(kpx::binaryPropertyListHeader);
    bytes += input.substr(count);
    const std::size_t table = bytes.size();
    bytes += offsets;
    bytes += std::string(6, '\0') + '\1' + '\1';
    for (const std::size_t number : {count, std::size_t{0}, table}) {
        for (int shift = 56; shift >= 0; shift -= 8) {
            bytes += static_cast<char>(number >> shift);
        }
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const bool isWholeFile = bytes.empty() || bytes.starts_with(kpx::binaryPropertyListHeader);
    const std::string frame = isWholeFile ? std::string() : framed(bytes);
    static_cast<void>(kpx::readBinaryPropertyList(isWholeFile ? bytes : frame));
    return 0;
}
