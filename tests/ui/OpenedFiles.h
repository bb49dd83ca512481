#pragma once

#include "files/FileDescriptor.h"

#include <string>

namespace kpx::test {

/// Counts how often any program opens a file in the folder.
class OpenedFiles {
public:
    explicit OpenedFiles(const std::string& folder);

    int count();

private:
    FileDescriptor m_notices;
    int m_count = 0;
};

}  // namespace kpx::test
