#pragma once

#include <string>

namespace kpx::test {

/// Counts how often this program opens a file in the folder. One at a time.
class OpenedFiles {
public:
    explicit OpenedFiles(std::string folder);
    ~OpenedFiles();
    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;

    int count() const;
};

}  // namespace kpx::test
