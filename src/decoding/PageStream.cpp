#include "decoding/PageStream.h"

namespace kpx {

namespace {

constexpr std::string_view mark = "KPXP";
constexpr std::size_t numberLength = 4;
constexpr std::size_t headLength = mark.size() + 2 * numberLength;

void appendNumber(std::string& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift);
    }
}

/// REQUIRES: the bytes are there.
std::uint32_t numberAt(std::string_view bytes, std::size_t position) {
    std::uint32_t number = 0;
    for (std::size_t index = position; index < position + numberLength; ++index) {
        number = number << 8 | static_cast<unsigned char>(bytes[index]);
    }
    return number;
}

bool isWithin(std::uint32_t number, int most) { return number >= 1 && number <= static_cast<std::uint32_t>(most); }

std::size_t lengthOfPixels(PixelSize size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * bytesOfPixel;
}

}  // namespace

std::string bytesFromOutline(const DocumentOutline& outline) {
    std::string bytes(mark);
    appendNumber(bytes, outline.isDocument ? 1 : 0);
    appendNumber(bytes, static_cast<std::uint32_t>(outline.pages.size()));
    for (const PixelSize& page : outline.pages) {
        appendNumber(bytes, static_cast<std::uint32_t>(page.width));
        appendNumber(bytes, static_cast<std::uint32_t>(page.height));
    }
    return bytes;
}

std::string bytesBeforePage(int index) {
    std::string bytes;
    appendNumber(bytes, static_cast<std::uint32_t>(index));
    return bytes;
}

PageStreamReader::PageStreamReader(const DecodingRequest& request)
    : m_request(request), m_largest(largestPage(request)), m_nextPage(request.firstPage) {}

bool PageStreamReader::append(std::string_view bytes) {
    if (m_isSound) {
        m_bytes += bytes;
        while (m_isSound && (m_hasOutline ? takePage() : takeOutline())) {
        }
    }
    return m_isSound;
}

bool PageStreamReader::takeOutline() {
    if (m_bytes.size() < headLength) {
        return false;
    }
    const std::uint32_t isDocument = numberAt(m_bytes, mark.size());
    const std::uint32_t count = numberAt(m_bytes, mark.size() + numberLength);
    m_isSound = m_bytes.starts_with(mark) && isDocument <= 1 && isWithin(count, isDocument != 0 ? mostPages : 1);
    const std::size_t length = headLength + std::size_t{count} * 2 * numberLength;
    if (!m_isSound || m_bytes.size() < length) {
        return false;
    }
    m_outline.isDocument = isDocument != 0;
    for (std::size_t position = headLength; position < length; position += 2 * numberLength) {
        const std::uint32_t width = numberAt(m_bytes, position);
        const std::uint32_t height = numberAt(m_bytes, position + numberLength);
        m_isSound = m_isSound && isWithin(width, m_largest.width) && isWithin(height, m_largest.height);
        m_outline.pages.push_back({static_cast<int>(width), static_cast<int>(height)});
    }
    if (!m_isSound) {
        return false;
    }
    m_bytes.erase(0, length);
    m_hasOutline = true;
    if (outlineCame) {
        outlineCame(m_outline);
    }
    return true;
}

bool PageStreamReader::takePage() {
    if (m_bytes.size() < numberLength) {
        return false;
    }
    const std::uint32_t index = numberAt(m_bytes, 0);
    const auto lastAsked = static_cast<std::uint32_t>(m_request.firstPage + m_request.pageCount - 1);
    m_isSound = index >= static_cast<std::uint32_t>(m_nextPage) && index <= lastAsked && index < m_outline.pages.size();
    if (!m_isSound) {
        return false;
    }
    const PixelSize size = m_outline.pages[index];
    const std::size_t length = numberLength + lengthOfPixels(size);
    if (m_bytes.size() < length) {
        return false;
    }
    if (pageCame) {
        pageCame(static_cast<int>(index), size, std::string_view(m_bytes).substr(numberLength, length - numberLength));
    }
    m_nextPage = static_cast<int>(index) + 1;
    m_bytes.erase(0, length);
    return true;
}

}  // namespace kpx
