#include "files/FileDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <utility>

namespace kpx::test {
namespace {

bool isOpen(int descriptor) { return ::fcntl(descriptor, F_GETFD) >= 0; }

// 0 is one like any other: a program that was started without an input gets it for its first file.
TEST(FileDescriptor, ClosesWhateverNumberItHas) {
    const int input = ::dup(STDIN_FILENO);
    ::close(STDIN_FILENO);
    const int first = ::open("/dev/null", O_RDONLY);
    EXPECT_EQ(first, 0);
    { const FileDescriptor descriptor(first); }
    EXPECT_FALSE(isOpen(first));
    if (input >= 0) {
        ::dup2(input, STDIN_FILENO);
        ::close(input);
    }
}

TEST(FileDescriptor, IsClosedByItsLastOwner) {
    const int number = ::open("/dev/null", O_RDONLY);
    {
        FileDescriptor first(number);
        {
            const FileDescriptor second(std::move(first));
            EXPECT_EQ(second.get(), number);
            EXPECT_TRUE(isOpen(number));
        }
        EXPECT_FALSE(isOpen(number));
    }
}

}  // namespace
}  // namespace kpx::test
