#include "files/FileAddress.h"

#include <charconv>
#include <string>
#include <system_error>

namespace kpx {

namespace {

std::string withoutEscapes(std::string_view text) {
    std::string bytes;
    for (std::size_t position = 0; position < text.size(); ++position) {
        unsigned byte = 0;
        const char* const digits = text.data() + position + 1;
        const bool hasDigits = text[position] == '%' && position + 2 < text.size();
        if (hasDigits && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            bytes += static_cast<char>(byte);
            position += 2;
        } else {
            bytes += text[position];
        }
    }
    return bytes;
}

std::string utf8FromLatin1(std::string_view bytes) {
    std::string text;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) {
            text += character;
        } else {
            text += static_cast<char>(0xC0U | (byte >> 6U));
            text += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return text;
}

/// The path in a file address, still with its escapes; none for another machine's and for other addresses.
std::optional<std::string_view> pathOf(std::string_view address) {
    for (const std::string_view start : {"file://localhost/", "file:///", "file:/"}) {
        if (address.starts_with(start)) {
            const std::string_view path = address.substr(start.size() - 1);
            return path.starts_with("//") ? std::nullopt : std::optional(path);
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::filesystem::path> fileOfAddress(std::string_view address) {
    if (address.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    if (address.starts_with('/')) {
        return address;
    }
    const auto escaped = pathOf(address);
    if (!escaped) {
        return std::nullopt;
    }
    const std::string bytes = withoutEscapes(*escaped);
    if (bytes.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    std::error_code error;
    if (!std::filesystem::exists(bytes, error)) {
        if (std::filesystem::path latin1 = utf8FromLatin1(bytes); std::filesystem::exists(latin1, error)) {
            return latin1;
        }
    }
    return bytes;
}

}  // namespace kpx
