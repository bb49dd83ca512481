#include "files/FileReplacement.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <thread>

namespace kpx::test {
namespace {

TEST(FileReplacement, LeavesTheOldFileOrTheNewOneWhenKilled) {
    // The child writes two contents in turn, as fast as it can, until it is killed at a random moment.
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "file";
    const auto entryCount = [&] { return namesIn(folder.path()).size(); };
    const std::string first(30000, 'a');
    const std::string second(50001, 'b');
    ASSERT_TRUE(replaceFile(path, first));
    std::mt19937 random(20240331);
    std::size_t kills = 0;
    std::size_t leftOver = 0;
    for (; kills < 1000; ++kills) {
        const pid_t child = fork();
        if (child == 0) {
            while (replaceFile(path, second) && replaceFile(path, first)) {
            }
            _exit(EXIT_FAILURE);
        }
        ASSERT_GT(child, 0);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a write failed by itself";
        const std::string content = readFile(path);
        ASSERT_TRUE(content == first || content == second) << content.size() << " bytes after kill " << kills;
        leftOver += entryCount() - 1;
        ASSERT_LE(entryCount(), 2U) << "the write after a kill removes what it left behind";
    }
    EXPECT_GT(leftOver, 50U) << "hardly any write was interrupted, so nothing was shown";
    ASSERT_TRUE(replaceFile(path, first));
    EXPECT_EQ(entryCount(), 1U);
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
