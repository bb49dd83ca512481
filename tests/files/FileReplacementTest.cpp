#include "files/FileDescriptor.h"
#include "files/FileReplacement.h"
#include "files/FolderLock.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace kpx::test {
namespace {

// That a killed writer leaves the old file or the new one is tried in tests/faults, at every call that it makes.
TEST(FileReplacement, RemovesWhatAKilledWriterLeftBehindButNothingElse) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "file";
    const auto temporary = [&](const std::string& name) { return folder.path() / name; };
    const std::vector<std::string> others = {".file.0123.tmp", ".file.0123456789abcdeg.tmp",
                                             ".other.0123456789abcdef.tmp", "file.0123456789abcdef.tmp"};
    for (const std::string& name : others) {
        writeFile(temporary(name), "somebody else's");
    }
    writeFile(temporary(".file.0123456789abcdef.tmp"), "left over");
    writeFile(temporary(".file.fedcba9876543210.tmp"), "still being written");
    const FileDescriptor writer(::open(temporary(".file.fedcba9876543210.tmp").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(tryToLock(writer));
    ASSERT_TRUE(replaceFile(path, "new"));
    EXPECT_FALSE(std::filesystem::exists(temporary(".file.0123456789abcdef.tmp")));
    EXPECT_TRUE(std::filesystem::exists(temporary(".file.fedcba9876543210.tmp")));
    EXPECT_EQ(namesIn(folder.path()).size(), others.size() + 2);

    removeLeftOvers(folder.path());
    EXPECT_FALSE(std::filesystem::exists(temporary(".other.0123456789abcdef.tmp")));
    EXPECT_TRUE(std::filesystem::exists(temporary(".file.fedcba9876543210.tmp")));
    EXPECT_EQ(namesIn(folder.path()).size(), others.size() + 1);
}

TEST(FileReplacement, NeverReplacesWhatCouldNotBeRead) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "file";
    const NewContent content{.bytes = "new", .madeFrom = WholeFile::State::Unreadable};
    EXPECT_TRUE(replaceFile(path, content)) << "it is not there";
    writeFile(path, "old");
    EXPECT_FALSE(replaceFile(path, content));
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(namesIn(folder.path()).size(), 1U);
}

TEST(FileReplacement, GivesTheFileItsTime) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "file";
    ASSERT_TRUE(replaceFile(path, NewContent{.bytes = "new", .time = std::timespec{1709629200, 500000000}}));
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mtim.tv_sec, 1709629200);
    EXPECT_EQ(status.st_mtim.tv_nsec, 500000000);
}

}  // namespace
}  // namespace kpx::test
