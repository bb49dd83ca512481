#include "decoding/PageStream.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// The input is a decoder's answer, in pieces as long as its first byte says, and a request for one. Nothing comes of it
// but pages that were asked for, each as large as its pixels.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    if (const auto request = kpx::requestFromText(bytes); request && kpx::textFromRequest(*request) != bytes) {
        // A number may be written in several ways, and is read back as the same one.
        if (kpx::requestFromText(kpx::textFromRequest(*request)) != request) {
            std::abort();
        }
    }
    const kpx::DecodingRequest request{.file = "/receipt.pdf",
                                       .purpose = kpx::DecodingRequest::Purpose::Display,
                                       .room = {6, 9},
                                       .firstPage = 1,
                                       .pageCount = 3};
    kpx::PageStreamReader reader(request);
    reader.pageCame = [](int index, kpx::PixelSize page, std::string_view pixels) {
        const auto count = static_cast<std::size_t>(page.width) * static_cast<std::size_t>(page.height);
        if (index < 1 || index > 3 || page.width > 6 || page.height > 24 || pixels.size() != count * 4) {
            std::abort();
        }
    };
    const std::size_t piece = data[0] + std::size_t{1};
    for (std::size_t position = 0; position < bytes.size(); position += piece) {
        static_cast<void>(reader.append(bytes.substr(position, piece)));
    }
    return 0;
}
