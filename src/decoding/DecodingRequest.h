#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// In pixels of the screen.
struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

/// What a decoder is asked for.
struct DecodingRequest {
    enum class Purpose {
        Thumbnail,  ///< a picture, or a document's page, that fits into the room
        Display,    ///< a picture that fits into the room, or pages as wide as the room
    };
    std::string file;  ///< its full path, in any bytes
    Purpose purpose = Purpose::Thumbnail;
    PixelSize room;
    int firstPage = 0;  ///< counted from 0; a picture has one page
    int pageCount = 1;
    bool operator==(const DecodingRequest&) const = default;
};

/// No picture that answers the request is larger. A page may be longer than the room, within reason.
PixelSize largestPage(const DecodingRequest& request);

/// The request as the decoder reads it on its standard input, and back; none for anything else.
std::string textFromRequest(const DecodingRequest& request);
std::optional<DecodingRequest> requestFromText(std::string_view text);

/// What came of it; also the decoder's exit status. A decoder that was ended, or that ended otherwise, could not
/// show the file.
enum class DecodingResult {
    Shown = 0,
    CannotBeShown = 1,  ///< neither picture nor document, damaged, or too much for the limits
    NotFound = 2,       ///< there is no such file
};

}  // namespace kpx
