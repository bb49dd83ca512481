#include "tests/ui/OpenedFiles.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>

namespace kpx::test {

OpenedFiles::OpenedFiles(const std::string& folder) : m_notices(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    ::inotify_add_watch(m_notices.get(), folder.c_str(), IN_OPEN);
}

int OpenedFiles::count() {
    std::array<char, 65536> bytes{};
    for (;;) {
        const ssize_t length = ::read(m_notices.get(), bytes.data(), bytes.size());
        if (length <= 0) {
            return m_count;
        }
        for (std::size_t position = 0; position < static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, bytes.data() + position, sizeof event);
            m_count += event.len > 0 && !(event.mask & IN_ISDIR) ? 1 : 0;
            position += sizeof event + event.len;
        }
    }
}

}  // namespace kpx::test
