#include "tests/reminders/session/killer/KillAtStep.h"

#include <dlfcn.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// The calls by which a program tells others what it did, each counted before it is made.

namespace {

std::atomic<int> stepsLeft{-1};

int stepsFromEnvironment() {
    const char* steps = std::getenv("KILL_AT_STEP");
    return steps ? std::atoi(steps) : 0;
}

/// The process that would start the killed one again goes with it.
void killSupervisor() {
    char path[64];
    char name[32] = "";
    std::snprintf(path, sizeof path, "/proc/%d/comm", static_cast<int>(::getppid()));
    if (std::FILE* file = std::fopen(path, "r")) {
        if (std::fgets(name, sizeof name, file) && std::strncmp(name, "velmora-remind", 14) == 0) {
            ::kill(::getppid(), SIGKILL);
        }
        std::fclose(file);
    }
}

void killWithSupervisor() {
    killSupervisor();
    ::kill(::getpid(), SIGKILL);
}

void step() {
    int left = stepsLeft.load();
    if (left < 0) {
        left = stepsFromEnvironment();
        stepsLeft = left;
    }
    if (left > 0 && --stepsLeft == 0) {
        killWithSupervisor();
    }
}

/// Names in a message end with a zero, and those of interfaces and objects have something before them.
bool isCallOf(const char* method, const msghdr* message) {
    const std::size_t length = std::strlen(method) + 1;
    for (std::size_t part = 0; length > 1 && part < message->msg_iovlen; ++part) {
        const iovec& bytes = message->msg_iov[part];
        if (::memmem(bytes.iov_base, bytes.iov_len, method, length)) {
            return true;
        }
    }
    return false;
}

template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

void killAtStep(int steps) { stepsLeft = steps; }

ssize_t sendmsg(int socket, const msghdr* message, int flags) {
    static const auto real = next<ssize_t (*)(int, const msghdr*, int)>("sendmsg");
    static const char* const fatal = std::getenv("KILL_BEFORE");
    step();
    if (fatal && isCallOf(fatal, message)) {
        killWithSupervisor();
    }
    return real(socket, message, flags);
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = next<int (*)(const char*, const char*)>("rename");
    step();
    return real(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    static const auto real = next<int (*)(int, const char*, int, const char*)>("renameat");
    step();
    return real(fromFolder, from, toFolder, to);
}

int unlink(const char* path) noexcept {
    static const auto real = next<int (*)(const char*)>("unlink");
    step();
    return real(path);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    static const auto real = next<int (*)(int, const char*, int)>("unlinkat");
    step();
    return real(folder, path, flags);
}

int fsync(int file) {
    static const auto real = next<int (*)(int)>("fsync");
    step();
    return real(file);
}

}  // extern "C"
