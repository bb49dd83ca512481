#pragma once

#include "app/Ports.h"

#include <QMimeDatabase>

namespace kpx {

class QtWorkspace : public Workspace {
public:
    bool open(const std::string& target) override;
    FileType typeOfFile(const std::filesystem::path& file) override;
    /// The names of the user's processes, as the kernel keeps them.
    std::vector<std::string> runningApplications() override;
    /// Makes sure that the first of them exists, for the user alone.
    std::vector<std::filesystem::path> applicationSupportDirectories() override;

private:
    QMimeDatabase m_types;
};

}  // namespace kpx
