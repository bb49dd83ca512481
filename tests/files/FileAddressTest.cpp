#include "files/FileAddress.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx::test {
namespace {

TEST(FileAddress, NamesAFileOfThisMachineOrNone) {
    using namespace std::string_view_literals;
    struct Row {
        std::string_view address;
        std::optional<std::filesystem::path> file;
    };
    const std::vector<Row> rows = {
        {"/home/ann/slip.png", "/home/ann/slip.png"},
        {"/home/ann/100%25.png", "/home/ann/100%25.png"},
        {"file:///home/ann/slip%201.png", "/home/ann/slip 1.png"},
        {"file:/home/ann/slip.png", "/home/ann/slip.png"},
        {"file://localhost/home/ann/slip.png", "/home/ann/slip.png"},
        {"file:///home/ann/100%.png", "/home/ann/100%.png"},
        {"file:///home/ann/%4", "/home/ann/%4"},
        {"file:///home/ann/%zz", "/home/ann/%zz"},
        {"file:///home/ann/caf%C3%A9.png", "/home/ann/caf\xC3\xA9.png"},
        {"file://elsewhere/slip.png", std::nullopt},
        {"file:////elsewhere/slip.png", std::nullopt},
        {"file:///home/a%00b", std::nullopt},
        {"/home/a\0b"sv, std::nullopt},
        {"https://example.com/slip.png", std::nullopt},
        {"slip.png", std::nullopt},
        {"a b", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.address);
        EXPECT_EQ(fileOfAddress(row.address), row.file);
    }
}

TEST(FileAddress, ReadsLatin1EscapesWhereNothingBearsTheBytes) {
    const TemporaryFolder folder;
    const std::filesystem::path utf8 = folder.path() / "caf\xC3\xA9.png";
    const std::string address = "file://" + folder.path().string() + "/caf%E9.png";
    const std::filesystem::path bytes = folder.path() / "caf\xE9.png";
    // Of a file that is not there, the bytes.
    EXPECT_EQ(fileOfAddress(address), bytes);
    writeFile(utf8, "x");
    EXPECT_EQ(fileOfAddress(address), utf8);
    EXPECT_EQ(fileOfAddress("file://" + folder.path().string() + "/caf%C3%A9.png"), utf8);
    // A name in Latin-1 is a name too, and comes first.
    writeFile(bytes, "x");
    EXPECT_EQ(fileOfAddress(address), bytes);
}

}  // namespace
}  // namespace kpx::test
