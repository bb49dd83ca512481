#include "tests/faults/SystemCalls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstring>
#include <initializer_list>

namespace kpx::faults {
namespace {

bool counting = false;
Plan planned;
std::vector<Call> calls;

/// What the counted call is to suffer. Counting stops meanwhile: what the test itself does is not counted.
class Counted {
public:
    Counted(const char* name, std::initializer_list<int> errors, bool canBeShort = false, bool canBeWithin = false) {
        if (!counting) {
            return;
        }
        counting = false;
        m_counted = true;
        const std::size_t index = calls.size();
        Call call{name, {{index, Fault::KillBefore}, {index, Fault::KillAfter}}};
        for (const int error : errors) {
            call.faults.push_back({index, Fault::Error, error});
        }
        if (canBeShort) {
            call.faults.push_back({index, Fault::Short});
        }
        if (canBeWithin) {
            call.faults.push_back({index, Fault::KillWithin});
        }
        calls.push_back(std::move(call));
        m_fault = planned.call == index ? planned.fault : Fault::None;
        if (m_fault == Fault::KillBefore) {
            ::raise(SIGKILL);
        }
    }
    ~Counted() {
        if (m_counted) {
            const int error = errno;
            if (m_fault == Fault::KillAfter || m_fault == Fault::KillWithin) {
                ::raise(SIGKILL);
            }
            counting = true;
            errno = error;
        }
    }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    /// Whether the call fails; the error then stands where the caller looks for it.
    bool fails() const {
        if (m_fault == Fault::Error) {
            errno = planned.error;
        }
        return m_fault == Fault::Error;
    }
    std::size_t length(std::size_t asked) const {
        return (m_fault == Fault::Short || m_fault == Fault::KillWithin) && asked > 1 ? asked / 2 : asked;
    }

private:
    bool m_counted = false;
    Fault m_fault = Fault::None;
};

/// The system's own function of that name.
template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

std::vector<Call> counted(const Plan& plan, const std::function<void()>& work) {
    planned = plan;
    calls.clear();
    counting = true;
    work();
    counting = false;
    return calls;
}

}  // namespace kpx::faults

using kpx::faults::Counted;
using kpx::faults::real;

// NOLINTBEGIN: the names and signatures are the system's.
extern "C" {

#define OPENS(name)                                                                            \
    int name(const char* path, int flags, ...) {                                               \
        va_list arguments;                                                                     \
        va_start(arguments, flags);                                                            \
        const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;            \
        va_end(arguments);                                                                     \
        const Counted call(#name, {EIO, EACCES, EMFILE, ENOMEM, EINTR, ENOSPC});               \
        return call.fails() ? -1 : real<int(const char*, int, ...)>(#name)(path, flags, mode); \
    }
#define OPENS_AT(name)                                                                                      \
    int name(int folder, const char* path, int flags, ...) {                                                \
        va_list arguments;                                                                                  \
        va_start(arguments, flags);                                                                         \
        const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;                         \
        va_end(arguments);                                                                                  \
        const Counted call(#name, {EIO, EACCES, EMFILE, ENOMEM, EINTR, ENOSPC});                            \
        return call.fails() ? -1 : real<int(int, const char*, int, ...)>(#name)(folder, path, flags, mode); \
    }
OPENS(open)
OPENS(open64)
OPENS_AT(openat)
OPENS_AT(openat64)

#define LOOKS(name, status)                                                                     \
    int name(const char* path, struct status* result) {                                         \
        const Counted call(#name, {EIO, EACCES, ENOMEM});                                       \
        return call.fails() ? -1 : real<int(const char*, struct status*)>(#name)(path, result); \
    }
LOOKS(stat, stat)
LOOKS(stat64, stat64)
LOOKS(lstat, stat)
LOOKS(lstat64, stat64)

int fstat(int file, struct stat* result) {
    const Counted call("fstat", {EIO});
    return call.fails() ? -1 : real<int(int, struct stat*)>("fstat")(file, result);
}

ssize_t read(int file, void* bytes, size_t length) {
    const Counted call("read", {EIO, EINTR, ENOMEM}, true);
    return call.fails() ? -1 : real<ssize_t(int, void*, size_t)>("read")(file, bytes, call.length(length));
}

ssize_t write(int file, const void* bytes, size_t length) {
    const Counted call("write", {EIO, ENOSPC, EDQUOT, EFBIG, EINTR}, true, true);
    return call.fails() ? -1 : real<ssize_t(int, const void*, size_t)>("write")(file, bytes, call.length(length));
}

// Nothing goes to a disk: the trial is of the process's death, not of the machine's.
int fsync(int) {
    const Counted call("fsync", {EIO, ENOSPC, EINTR});
    return call.fails() ? -1 : 0;
}

int rename(const char* from, const char* to) {
    const Counted call("rename", {EIO, EACCES, ENOSPC});
    return call.fails() ? -1 : real<int(const char*, const char*)>("rename")(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) {
    const Counted call("renameat", {EIO, EACCES, ENOSPC});
    return call.fails() ? -1
                        : real<int(int, const char*, int, const char*)>("renameat")(fromFolder, from, toFolder, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    const Counted call("linkat", {EIO, EPERM, EMLINK, EXDEV, EACCES, ENOSPC, EEXIST});
    return call.fails()
               ? -1
               : real<int(int, const char*, int, const char*, int)>("linkat")(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) {
    const Counted call("unlink", {EIO, EACCES});
    return call.fails() ? -1 : real<int(const char*)>("unlink")(path);
}

int unlinkat(int folder, const char* path, int flags) {
    const Counted call("unlinkat", {EIO, EACCES});
    return call.fails() ? -1 : real<int(int, const char*, int)>("unlinkat")(folder, path, flags);
}

int mkdir(const char* path, mode_t mode) {
    const Counted call("mkdir", {EACCES, ENOSPC, EIO});
    return call.fails() ? -1 : real<int(const char*, mode_t)>("mkdir")(path, mode);
}

int chmod(const char* path, mode_t mode) {
    const Counted call("chmod", {EPERM, EIO});
    return call.fails() ? -1 : real<int(const char*, mode_t)>("chmod")(path, mode);
}

int fchmod(int file, mode_t mode) {
    const Counted call("fchmod", {EPERM, EIO});
    return call.fails() ? -1 : real<int(int, mode_t)>("fchmod")(file, mode);
}

int futimens(int file, const struct timespec times[2]) {
    const Counted call("futimens", {EPERM, EIO});
    return call.fails() ? -1 : real<int(int, const struct timespec*)>("futimens")(file, times);
}

int utimensat(int folder, const char* path, const struct timespec times[2], int flags) {
    const Counted call("utimensat", {EPERM, EIO});
    return call.fails()
               ? -1
               : real<int(int, const char*, const struct timespec*, int)>("utimensat")(folder, path, times, flags);
}

ssize_t getxattr(const char* path, const char* name, void* value, size_t length) {
    const Counted call("getxattr", {EIO, EACCES, ENOTSUP, ENODATA});
    return call.fails() ? -1
                        : real<ssize_t(const char*, const char*, void*, size_t)>("getxattr")(path, name, value, length);
}

int setxattr(const char* path, const char* name, const void* value, size_t length, int flags) {
    const Counted call("setxattr", {EIO, EPERM, ENOSPC, EDQUOT, ENOTSUP});
    return call.fails() ? -1
                        : real<int(const char*, const char*, const void*, size_t, int)>("setxattr")(path, name, value,
                                                                                                    length, flags);
}

int flock(int file, int operation) {
    const Counted call("flock", {EINTR, ENOLCK, EWOULDBLOCK});
    return call.fails() ? -1 : real<int(int, int)>("flock")(file, operation);
}

DIR* opendir(const char* path) {
    const Counted call("opendir", {EACCES, EMFILE, ENOMEM});
    return call.fails() ? nullptr : real<DIR*(const char*)>("opendir")(path);
}

DIR* fdopendir(int file) {
    const Counted call("fdopendir", {ENOMEM});
    return call.fails() ? nullptr : real<DIR*(int)>("fdopendir")(file);
}

struct dirent* readdir(DIR* folder) {
    const Counted call("readdir", {EIO});
    return call.fails() ? nullptr : real<struct dirent*(DIR*)>("readdir")(folder);
}

struct dirent64* readdir64(DIR* folder) {
    const Counted call("readdir64", {EIO});
    return call.fails() ? nullptr : real<struct dirent64*(DIR*)>("readdir64")(folder);
}

int close(int file) {
    const Counted call("close", {EIO, EINTR});
    const int result = real<int(int)>("close")(file);
    return call.fails() ? -1 : result;
}

/// Always the same, so that two runs leave the same names.
ssize_t getrandom(void* bytes, size_t length, unsigned) {
    const Counted call("getrandom", {EAGAIN});
    std::memset(bytes, 0x5a, length);
    return call.fails() ? -1 : static_cast<ssize_t>(length);
}

}  // extern "C"
// NOLINTEND
