#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace kpx {

/// The file on this machine that an address means, whether or not there is one. A file's name is bytes, so escapes
/// are taken as the bytes they stand for; where nothing bears that name, escapes that are no UTF-8 are read as
/// Latin-1 instead, as older programs write them.
///
/// | address                               | file               |
/// |---------------------------------------|--------------------|
/// | "/home/ann/slip.png"                  | itself             |
/// | "file:///home/ann/slip%201.png"       | with a blank       |
/// | "file://localhost/home/ann/slip.png"  | /home/ann/slip.png |
/// | "file://elsewhere/slip.png"           | none               |
/// | "https://example.com/slip.png", "a b" | none               |
std::optional<std::filesystem::path> fileOfAddress(std::string_view address);

}  // namespace kpx
