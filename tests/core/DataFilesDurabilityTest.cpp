#include "core/DataFiles.h"
#include "tests/support/HouseholdGenerator.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>

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

}  // namespace
}  // namespace kpx::test
