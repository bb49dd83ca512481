#include "files/WholeFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <vector>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;
using State = WholeFile::State;

TEST(WholeFile, TellsMissingFromUnreadable) {
    constexpr std::size_t longest = 10000;
    const std::string full(longest, 'x');
    struct Row {
        const char* name;
        std::function<void(const fs::path& path)> make;
        State state;
        std::string bytes;
    };
    const std::vector<Row> rows = {
        {"nothing", [](const fs::path&) {}, State::Missing, ""},
        {"a link into nowhere", [](const fs::path& path) { fs::create_symlink("nowhere", path); }, State::Missing, ""},
        {"a link to itself", [](const fs::path& path) { fs::create_symlink(path, path); }, State::Unreadable, ""},
        {"no bytes", [](const fs::path& path) { writeFile(path, ""); }, State::Read, ""},
        {"some bytes",
         [](const fs::path& path) {
             writeFile(path, {"a\0b", 3});
         },
         State::Read,
         {"a\0b", 3}},
        {"as long as may be", [&](const fs::path& path) { writeFile(path, full); }, State::Read, full},
        {"a byte longer", [&](const fs::path& path) { writeFile(path, full + "x"); }, State::Unreadable, ""},
        {"far longer",
         [&](const fs::path& path) {
             writeFile(path, "");
             fs::resize_file(path, std::uintmax_t{1} << 40);
         },
         State::Unreadable, ""},
        {"a folder", [](const fs::path& path) { fs::create_directory(path); }, State::Unreadable, ""},
        {"a pipe", [](const fs::path& path) { mkfifo(path.c_str(), S_IRWXU); }, State::Unreadable, ""},
        {"a link to a file",
         [](const fs::path& path) {
             writeFile(path.parent_path() / "target", "there");
             fs::create_symlink("target", path);
         },
         State::Read, "there"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFolder folder;
        row.make(folder.path() / "file");
        const WholeFile file = readWholeFile(folder.path() / "file", longest);
        EXPECT_EQ(file.state, row.state);
        EXPECT_EQ(file.bytes, row.bytes);
    }
}

TEST(WholeFile, LooksForNoFileBelowAFile) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "file", "");
    EXPECT_EQ(readWholeFile(folder.path() / "file" / "below", 10).state, State::Unreadable);
    EXPECT_EQ(readWholeFile(folder.path() / "none" / "below", 10).state, State::Missing);
}

TEST(WholeFile, ReadsWhatTellsNoSize) {
    const WholeFile file = readWholeFile("/proc/self/maps", std::size_t{1} << 20);
    EXPECT_EQ(file.state, State::Read);
    EXPECT_GT(file.bytes.size(), 100U);
    EXPECT_EQ(readWholeFile("/proc/self/maps", 100).state, State::Unreadable);
}

TEST(WholeFile, IsUnreadableWithoutTheRight) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "file", "secret");
    EXPECT_TRUE(holdsInChild([&] {
        fs::permissions(folder.path() / "file", fs::perms::none);
        return chmod(folder.path().c_str(), 0755) == 0 && becomeNobody() &&
               readWholeFile(folder.path() / "file", 10).state == State::Unreadable;
    }));
}

}  // namespace
}  // namespace kpx::test
