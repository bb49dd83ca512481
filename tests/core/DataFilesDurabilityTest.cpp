#include "core/DataFiles.h"
#include "core/DataFilesReplacement.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/support/HouseholdGenerator.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <thread>

// The test program is linked so that every fsync of ours comes here first.
namespace {
bool synchronisingFails = false;
int synchronised = 0;
}  // namespace

extern "C" int __real_fsync(int descriptor);
extern "C" int __wrap_fsync(int descriptor) {
    ++synchronised;
    if (synchronisingFails) {
        errno = EIO;
        return -1;
    }
    return __real_fsync(descriptor);
}

namespace kpx::test {
namespace {

class DataFilesDurability : public testing::Test {
protected:
    DataFilesDurability() { EXPECT_TRUE(writeArray(m_old, m_folder.path(), drugFile)); }

    std::optional<Records> read() const { return copyArrayFromDataFile(m_folder.path(), drugFile); }
    std::size_t entryCount() const { return namesIn(m_folder.path()).size(); }

    TemporaryFolder m_folder;
    const Records m_old = makeHousehold(1, 1).drugs;
    const Records m_new = makeHousehold(300, 2).history;
};

TEST_F(DataFilesDurability, SynchronisesTheFileAndItsFolder) {
    synchronised = 0;
    EXPECT_TRUE(writeArray(m_new, m_folder.path(), drugFile));
    EXPECT_EQ(synchronised, 2);
}

TEST_F(DataFilesDurability, KeepsTheOldFileWhenSynchronisingFails) {
    synchronisingFails = true;
    EXPECT_FALSE(writeArray(m_new, m_folder.path(), drugFile));
    synchronisingFails = false;
    EXPECT_EQ(read(), m_old);
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(DataFilesDurability, KeepsTheOldFileWhenTheDiskIsFull) {
    for (const rlim_t room : {0, 1, 4096, 20000}) {
        SCOPED_TRACE(room);
        EXPECT_TRUE(holdsInChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{room, room};
            return setrlimit(RLIMIT_FSIZE, &limit) == 0 && !writeArray(m_new, m_folder.path(), drugFile);
        }));
        EXPECT_EQ(read(), m_old);
        EXPECT_EQ(entryCount(), 1U);
    }
    EXPECT_TRUE(writeArray(m_new, m_folder.path(), drugFile));
    EXPECT_EQ(read(), m_new);
}

TEST_F(DataFilesDurability, LeavesTheOldFileOrTheNewOneWhenKilled) {
    // The child writes two contents in turn, as fast as it can, until it is killed at a random moment.
    const std::filesystem::path path = m_folder.path() / drugFile;
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

}  // namespace
}  // namespace kpx::test
