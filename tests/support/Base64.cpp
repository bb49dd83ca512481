#include "tests/support/Base64.h"

#include <cstdint>

namespace kpx::test {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string base64FromBytes(const Data::Bytes& bytes) {
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - index);
        std::uint32_t group = 0;
        for (std::size_t offset = 0; offset < 3; ++offset) {
            group = group << 8U | (offset < count ? bytes[index + offset] : 0U);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            text += digit <= count ? alphabet[group >> (18 - 6 * digit) & 63U] : '=';
        }
    }
    return text;
}

std::optional<Data::Bytes> bytesFromBase64(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    text.remove_suffix(padding);
    Data::Bytes bytes;
    std::uint32_t group = 0;
    unsigned bits = 0;
    for (const char character : text) {
        const std::size_t digit = alphabet.find(character);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        group = group << 6U | static_cast<std::uint32_t>(digit);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<std::uint8_t>(group >> bits));
        }
    }
    return bytes;
}

}  // namespace kpx::test
