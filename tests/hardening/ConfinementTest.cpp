#include "decoding/program/Confinement.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace kpx {
namespace {

struct Attempt {
    std::string name;
    /// Negative when it was refused.
    long (*make)();
};

/// What the attempt came to in a process of its own that has given its calls up: 0 when it was refused as not
/// permitted, 1 when it was not, 2 when the process died of it.
int outcomeWhenConfined(const Attempt& attempt) {
    const pid_t child = ::fork();
    if (child == 0) {
        confine();
        errno = 0;
        const long result = attempt.make();
        ::_exit(result < 0 && errno == EACCES ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}

long parent() { return ::getppid(); }

const std::vector<Attempt> refused = {
    {"write a file", [] { return long{::open("confinement-trial", O_WRONLY | O_CREAT, 0600)}; }},
    {"open one for both", [] { return long{::open("/dev/null", O_RDWR)}; }},
    {"remove a file", [] { return long{::unlink("confinement-trial")}; }},
    {"reach the network", [] { return long{::socket(AF_INET, SOCK_STREAM, 0)}; }},
    {"reach the desktop", [] { return long{::socket(AF_UNIX, SOCK_STREAM, 0)}; }},
    {"start a program", [] { return long{::execl("/bin/true", "true", nullptr)}; }},
    {"start a process", [] { return ::syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0); }},
    {"signal another", [] { return long{::kill(static_cast<pid_t>(parent()), 0)}; }},
    {"signal another's thread", [] { return ::syscall(SYS_tgkill, parent(), parent(), 0); }},
    {"limit another",
     [] {
         rlimit none{};
         return ::syscall(SYS_prlimit64, parent(), RLIMIT_FSIZE, nullptr, &none);
     }},
    {"type into the terminal",
     [] {
         char key = ' ';
         return long{::ioctl(STDIN_FILENO, TIOCSTI, &key)};
     }},
};

TEST(Confinement, RefusesWhatReadingAPictureDoesNotNeed) {
    for (const Attempt& attempt : refused) {
        SCOPED_TRACE(attempt.name);
        EXPECT_EQ(outcomeWhenConfined(attempt), 0);
    }
}

TEST(Confinement, LeavesReadingAndThreads) {
    const std::vector<Attempt> left = {
        {"read a file", [] { return long{::open("/proc/self/statm", O_RDONLY)} < 0 ? -1L : 0L; }},
        {"work in a thread",
         [] {
             long result = -1;
             std::thread([&result] { result = 0; }).join();
             return result;
         }},
    };
    for (const Attempt& attempt : left) {
        SCOPED_TRACE(attempt.name);
        EXPECT_EQ(outcomeWhenConfined(attempt), 1);
    }
}

}  // namespace
}  // namespace kpx
