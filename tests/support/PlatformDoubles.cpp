#include "tests/support/PlatformDoubles.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

namespace kpx::test {

void WindowDouble::makeFirstResponder(const Control& control) {
    m_sink(Json{{"event", "focus"}, {"control", control.name()}});
}

void WindowDouble::beep() { m_sink(Json{{"event", "beep"}}); }

void WindowDouble::showSplash(const std::vector<std::string>& fields) {
    m_sink(Json{{"event", "splash"}, {"open", true}, {"fields", fields}});
}

void WindowDouble::closeSplash() { m_sink(Json{{"event", "splash"}, {"open", false}}); }

void WindowDouble::terminate() {
    if (!m_terminated) {
        m_terminated = true;
        m_sink(Json{{"event", "terminate"}});
    }
}

void WindowDouble::log(const std::string& text) { m_sink(Json{{"event", "log"}, {"text", text}}); }

void WorkspaceDouble::open(const std::string& target, std::function<void()> failed) {
    m_sink(Json{{"event", "open"}, {"target", target}});
    if (!m_openingWorks && failed) {
        failed();
    }
}

WorkspaceDouble::FileType WorkspaceDouble::typeOfFile(const std::filesystem::path& file) {
    using namespace std::string_view_literals;
    std::error_code ignored;
    if (const auto status = std::filesystem::status(file, ignored);
        std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return FileType::Other;
    }
    std::string extension = file.extension().string();
    std::ranges::transform(extension, extension.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    constexpr std::array imageExtensions{".png"sv,  ".jpg"sv,  ".jpeg"sv, ".jpe"sv,  ".gif"sv,  ".bmp"sv,  ".tif"sv,
                                         ".tiff"sv, ".webp"sv, ".svg"sv,  ".svgz"sv, ".heic"sv, ".heif"sv, ".avif"sv,
                                         ".ico"sv,  ".ppm"sv,  ".pgm"sv,  ".pbm"sv,  ".pnm"sv,  ".xbm"sv,  ".xpm"sv,
                                         ".dib"sv,  ".jp2"sv,  ".jpf"sv,  ".jpx"sv,  ".jxl"sv,  ".psd"sv,  ".tga"sv,
                                         ".icns"sv, ".dng"sv,  ".xcf"sv,  ".eps"sv,  ".jfif"sv};
    if (std::ranges::find(imageExtensions, extension) != imageExtensions.end()) {
        return FileType::Image;
    }
    if (extension == ".pdf") {
        return FileType::PDF;
    }
    if (!extension.empty()) {
        return FileType::Other;
    }
    std::string start(16, '\0');
    std::ifstream(file, std::ios::binary).read(start.data(), static_cast<std::streamsize>(start.size()));
    constexpr std::array imageStarts{"\x89PNG\r\n\x1a\n"sv, "\xff\xd8\xff"sv, "GIF8"sv, "II*\0"sv, "MM\0*"sv};
    if (std::ranges::any_of(imageStarts, [&](std::string_view magic) { return start.starts_with(magic); })) {
        return FileType::Image;
    }
    return start.starts_with("%PDF-") ? FileType::PDF : FileType::Other;
}

std::vector<std::filesystem::path> WorkspaceDouble::applicationSupportDirectories() {
    if (m_applicationSupport.empty()) {
        return {};
    }
    std::error_code ignored;
    std::filesystem::create_directories(m_applicationSupport, ignored);
    return {m_applicationSupport};
}

void FileChooserDouble::chooseFile(const std::filesystem::path&,
                                   std::function<void(const std::filesystem::path& file)> chosen) {
    if (const auto answer = std::exchange(m_answer, std::nullopt)) {
        chosen(*answer);
    }
}

void SystemDouble::setDark(bool dark) {
    if (m_dark == dark) {
        return;
    }
    m_dark = dark;
    if (appearanceDidChange) {
        appearanceDidChange();
    }
}

std::optional<WebFetch::Response> WebDouble::fetch(const std::string& address) {
    m_sink(Json{{"event", "fetch"}, {"target", address}});
    return m_response;
}

void PreviewDouble::open(Document document) {
    m_sink(Json{{"event", "document"},
                {"index", m_documents.size()},
                {"type", document.type},
                {"pages", document.pages.size()}});
    m_documents.push_back(std::move(document));
}

FontMetrics PreviewDouble::metrics(const std::string&, double size) {
    constexpr double unitsPerEm = 2048;
    return {1901 / unitsPerEm * size, 483 / unitsPerEm * size};
}

}  // namespace kpx::test
