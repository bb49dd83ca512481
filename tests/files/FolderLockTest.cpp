#include "files/FolderLock.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kpx::test {
namespace {

TEST(FolderLock, IsHeldByOneProcessAndLeavesNothing) {
    const TemporaryFolder folder;
    {
        const auto lock = lockFolder(folder.path());
        ASSERT_TRUE(lock);
        EXPECT_TRUE(*lock);
        EXPECT_TRUE(holdsInChild([&] { return !lockFolder(folder.path()); }));
        EXPECT_TRUE(namesIn(folder.path()).empty());
    }
    EXPECT_TRUE(holdsInChild([&] { return lockFolder(folder.path()).has_value(); }));
}

TEST(FolderLock, OfAFolderThatIsNotThereHoldsNothing) {
    const TemporaryFolder folder;
    const auto lock = lockFolder(folder.path() / "none");
    ASSERT_TRUE(lock);
    EXPECT_FALSE(*lock);
}

}  // namespace
}  // namespace kpx::test
