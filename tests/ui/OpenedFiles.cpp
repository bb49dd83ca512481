#include "tests/ui/OpenedFiles.h"

#include <atomic>
#include <cstdarg>
#include <string_view>

#include <dlfcn.h>
#include <sys/types.h>

namespace {

std::string watchedFolder;
std::atomic<int> openings{0};

void note(const char* path) {
    if (path && !watchedFolder.empty() && std::string_view(path).starts_with(watchedFolder)) {
        ++openings;
    }
}

}  // namespace

// These stand before the system's own for all libraries of the program, note the path and pass on.
extern "C" {

int open64(const char* path, int flags, ...) {
    using Open = int (*)(const char*, int, ...);
    static const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open64"));
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    note(path);
    return next(path, flags, mode);
}

int open(const char* path, int flags, ...) {
    using Open = int (*)(const char*, int, ...);
    static const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open"));
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    note(path);
    return next(path, flags, mode);
}
}

namespace kpx::test {

OpenedFiles::OpenedFiles(std::string folder) {
    openings = 0;
    watchedFolder = std::move(folder);
}

OpenedFiles::~OpenedFiles() { watchedFolder.clear(); }

int OpenedFiles::count() const { return openings; }

}  // namespace kpx::test
