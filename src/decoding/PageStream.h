#pragma once

#include "decoding/DecodingRequest.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

// The decoder's answer, on its standard output. Numbers are big-endian, of four bytes.
//
//     "KPXP"  1 for a document, 0 for a picture   number of pages   width and height of each page
//     and for each page asked for, in order:      its index         width × height pixels of four bytes
//
// A page that cannot be shown is left out. The decoder has read foreign bytes and may have come under foreign
// orders, so its answer is read with no more trust than the file itself.

/// Longer documents are shown as far as this.
inline constexpr int mostPages = 10'000;

/// All pages, as large as they are when shown.
struct DocumentOutline {
    bool isDocument = false;
    std::vector<PixelSize> pages;
};

std::string bytesFromOutline(const DocumentOutline& outline);
/// What stands before a page's pixels.
std::string bytesBeforePage(int index);

/// The number of bytes of one pixel: blue, green, red and one without meaning, in the machine's order of a
/// whole number 0xffRRGGBB.
inline constexpr int bytesOfPixel = 4;

/// Reads an answer as it comes.
class PageStreamReader {
public:
    explicit PageStreamReader(const DecodingRequest& request);

    std::function<void(const DocumentOutline& outline)> outlineCame;
    std::function<void(int index, PixelSize size, std::string_view pixels)> pageCame;

    /// False, and from then on always, when no decoder that keeps to the request could have written that.
    [[nodiscard]] bool append(std::string_view bytes);

    /// Whether the answer could end here: after the outline, and between two pages.
    bool isComplete() const { return m_isSound && m_hasOutline && m_bytes.empty(); }

private:
    /// Takes what is whole off the beginning; false when nothing is.
    bool takeOutline();
    bool takePage();

    DecodingRequest m_request;
    PixelSize m_largest;
    DocumentOutline m_outline;
    std::string m_bytes;
    int m_nextPage = 0;
    bool m_hasOutline = false;
    bool m_isSound = true;
};

}  // namespace kpx
