#include "decoding/DecodingRequest.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <system_error>

namespace kpx {

namespace {

/// More than any screen of today is wide, and little enough for a few pictures of that size.
constexpr int largestRoom = 16384;
constexpr int highestCount = 1'000'000;

// The file's name comes last and may hold any byte but the separator, which ends it.
constexpr char separator = '\0';

bool isIn(int number, int lowest, int highest) { return lowest <= number && number <= highest; }

bool isSensible(const DecodingRequest& request) {
    return isIn(request.room.width, 1, largestRoom) && isIn(request.room.height, 1, largestRoom) &&
           isIn(request.firstPage, 0, highestCount) && isIn(request.pageCount, 1, highestCount) &&
           request.file.starts_with('/') && request.file.size() < PATH_MAX;
}

/// Cuts off what stands before the next separator, and the separator; none without one.
std::optional<std::string_view> nextField(std::string_view& rest) {
    const std::size_t end = rest.find(separator);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    return field;
}

std::optional<int> nextNumber(std::string_view& rest) {
    const std::string_view field = nextField(rest).value_or("");
    int number = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    const bool isWhole = error == std::errc() && end == field.data() + field.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

}  // namespace

PixelSize largestPage(const DecodingRequest& request) {
    if (request.purpose == DecodingRequest::Purpose::Thumbnail) {
        return request.room;
    }
    constexpr int longestPageToItsWidth = 4;
    return {request.room.width, std::max(request.room.height, longestPageToItsWidth * request.room.width)};
}

std::string textFromRequest(const DecodingRequest& request) {
    std::string text;
    for (const int number : {static_cast<int>(request.purpose), request.room.width, request.room.height,
                             request.firstPage, request.pageCount}) {
        text += std::to_string(number) + separator;
    }
    return text + request.file + separator;
}

std::optional<DecodingRequest> requestFromText(std::string_view text) {
    std::array<int, 5> numbers{};
    for (int& number : numbers) {
        const auto read = nextNumber(text);
        if (!read) {
            return std::nullopt;
        }
        number = *read;
    }
    const auto file = nextField(text);
    const auto [purpose, width, height, firstPage, pageCount] = numbers;
    if (!file || !text.empty() || !isIn(purpose, 0, 1)) {
        return std::nullopt;
    }
    DecodingRequest request{.file = std::string(*file),
                            .purpose = static_cast<DecodingRequest::Purpose>(purpose),
                            .room = {width, height},
                            .firstPage = firstPage,
                            .pageCount = pageCount};
    return isSensible(request) ? std::optional(std::move(request)) : std::nullopt;
}

}  // namespace kpx
