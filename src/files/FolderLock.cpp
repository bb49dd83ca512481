#include "files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <utility>

namespace kpx {

bool tryToLock(const FileDescriptor& descriptor) {
    while (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR) {
            return errno != EWOULDBLOCK;
        }
    }
    return true;
}

std::optional<FileDescriptor> lockFolder(const std::filesystem::path& folder) {
    FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return tryToLock(descriptor) ? std::optional(std::move(descriptor)) : std::nullopt;
}

}  // namespace kpx
