#include "decoding/PageStream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

const DecodingRequest threePages{
    .file = "/a.pdf", .purpose = DecodingRequest::Purpose::Display, .room = {10, 20}, .firstPage = 1, .pageCount = 3};
const DocumentOutline fivePages{.isDocument = true, .pages = {{10, 40}, {2, 3}, {1, 1}, {10, 1}, {1, 40}}};

std::string page(int index, std::size_t pixels) { return bytesBeforePage(index) + std::string(pixels * 4, 'x'); }

struct Heard {
    int outlines = 0;
    std::vector<int> pages;
    std::size_t bytes = 0;
    bool isSound = true;
    bool isComplete = false;
};

/// What the reader makes of the answer when it comes in pieces of that length.
Heard hear(const DecodingRequest& request, const std::string& answer, std::size_t piece) {
    Heard heard;
    PageStreamReader reader(request);
    reader.outlineCame = [&heard](const DocumentOutline&) { ++heard.outlines; };
    reader.pageCame = [&heard](int index, PixelSize size, std::string_view pixels) {
        EXPECT_EQ(pixels.size(), static_cast<std::size_t>(size.width * size.height * bytesOfPixel));
        heard.pages.push_back(index);
        heard.bytes += pixels.size();
    };
    for (std::size_t position = 0; position < answer.size(); position += piece) {
        heard.isSound = reader.append(std::string_view(answer).substr(position, piece));
    }
    heard.isComplete = reader.isComplete();
    return heard;
}

TEST(PageStream, IsReadInPiecesOfAnyLength) {
    const std::string answer = bytesFromOutline(fivePages) + page(1, 6) + page(2, 1) + page(3, 10);
    for (std::size_t piece = 1; piece <= answer.size(); ++piece) {
        SCOPED_TRACE(piece);
        const Heard heard = hear(threePages, answer, piece);
        EXPECT_TRUE(heard.isSound && heard.isComplete);
        EXPECT_EQ(heard.outlines, 1);
        EXPECT_EQ(heard.pages, (std::vector{1, 2, 3}));
        EXPECT_EQ(heard.bytes, 68u);
    }
}

TEST(PageStream, CutAnywhereIsNeverTakenForWhole) {
    const std::string outline = bytesFromOutline(fivePages);
    const std::string answer = outline + page(1, 6) + page(2, 1) + page(3, 10);
    for (std::size_t length = 0; length < answer.size(); ++length) {
        SCOPED_TRACE(length);
        const Heard heard = hear(threePages, answer.substr(0, length), answer.size());
        EXPECT_TRUE(heard.isSound);
        const std::size_t first = outline.size();
        const bool isBetweenPages = length == first || length == first + 28 || length == first + 36;
        EXPECT_EQ(heard.isComplete, isBetweenPages);
    }
}

TEST(PageStream, TakesNoMoreThanWasAskedFor) {
    const DocumentOutline picture{.isDocument = false, .pages = {{2, 2}}};
    const std::string outline = bytesFromOutline(fivePages);
    DocumentOutline tooMany{.isDocument = true, .pages = std::vector<PixelSize>(mostPages + 1, PixelSize{1, 1})};
    const struct {
        const char* about;
        std::string answer;
        bool isSound;
        std::size_t pages;
    } rows[] = {
        {"a page left out", outline + page(1, 6) + page(3, 10), true, 2},
        {"no page", outline, true, 0},
        {"one page of a picture", bytesFromOutline(picture), true, 0},
        {"a page before the first asked for", outline + page(0, 400), false, 0},
        {"a page behind the last asked for", outline + page(4, 40), false, 0},
        {"a page twice", outline + page(1, 6) + page(1, 6), false, 1},
        {"pages in another order", outline + page(2, 1) + page(1, 6), false, 1},
        {"a page that is none", outline + page(-1, 1), false, 0},
        {"another mark", "KPXQ" + outline.substr(4), false, 0},
        {"a kind that is none", outline.substr(0, 7) + '\2' + outline.substr(8), false, 0},
        {"no pages", bytesFromOutline({.isDocument = true, .pages = {}}), false, 0},
        {"a picture of two pages", bytesFromOutline({.isDocument = false, .pages = {{1, 1}, {1, 1}}}), false, 0},
        {"more pages than are shown", bytesFromOutline(tooMany), false, 0},
        {"a page too wide", bytesFromOutline({.isDocument = true, .pages = {{11, 1}}}), false, 0},
        {"a page too long", bytesFromOutline({.isDocument = true, .pages = {{1, 41}}}), false, 0},
        {"a page of no width", bytesFromOutline({.isDocument = true, .pages = {{0, 1}}}), false, 0},
        {"a page of a width below none", bytesFromOutline({.isDocument = true, .pages = {{-1, 1}}}), false, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.about);
        const Heard heard = hear(threePages, row.answer, row.answer.size());
        EXPECT_EQ(heard.isSound, row.isSound);
        EXPECT_EQ(heard.pages.size(), row.pages);
        EXPECT_EQ(heard.isComplete, row.isSound);
    }
}

TEST(DecodingRequest, IsReadBack) {
    const std::vector<DecodingRequest> rows = {
        {.file = "/r.png", .room = {1, 1}},
        threePages,
        {.file = "/not utf-8 \xe4\n.png", .room = {16384, 16384}, .firstPage = 1'000'000, .pageCount = 1'000'000},
    };
    for (const DecodingRequest& row : rows) {
        EXPECT_EQ(requestFromText(textFromRequest(row)), row);
    }
}

TEST(DecodingRequest, OfAnotherFormIsNone) {
    const auto text = [](std::string_view blanks) {
        std::string zeros(blanks);
        for (char& character : zeros) {
            character = character == ' ' ? '\0' : character;
        }
        return zeros;
    };
    ASSERT_TRUE(requestFromText(text("0 9 9 0 1 /r.png ")));
    for (const char* row :
         {"", "0 9 9 0 1 /r.png", "0 9 9 0 1 ", "0 9 9 0 1 r.png ", "2 9 9 0 1 /r.png ", "0 0 9 0 1 /r.png ",
          "0 9 16385 0 1 /r.png ", "0 9 9 -1 1 /r.png ", "0 9 9 0 0 /r.png ", "0 9 9 0 1 /r.png /s.png ",
          "0 9 9 0 1x /r.png ", "0 9 9 0  /r.png ", "0 99999999999 9 0 1 /r.png "}) {
        SCOPED_TRACE(row);
        EXPECT_FALSE(requestFromText(text(row)));
    }
    EXPECT_FALSE(requestFromText(text("0 9 9 0 1 /") + std::string(5000, 'x') + '\0'));
}

}  // namespace
}  // namespace kpx
