#include "files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace kpx {

std::optional<FileDescriptor> lockFolder(const std::filesystem::path& folder) {
    FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    while (descriptor && ::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) {
            return std::nullopt;
        }
        if (errno != EINTR) {
            break;
        }
    }
    return descriptor;
}

}  // namespace kpx
