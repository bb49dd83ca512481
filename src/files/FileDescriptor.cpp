#include "files/FileDescriptor.h"

#include <unistd.h>

namespace kpx {

FileDescriptor::~FileDescriptor() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

}  // namespace kpx
