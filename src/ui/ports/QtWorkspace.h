#pragma once

#include "app/Ports.h"

#include <QMimeDatabase>
#include <QObject>

namespace kpx {

class QtWorkspace : public Workspace {
public:
    /// With the opener that desktops provide; the program does not wait for it, as it may run as long as what it
    /// opens.
    void open(const std::string& target, std::function<void()> failed) override;
    FileType typeOfFile(const std::filesystem::path& file) override;
    /// The names of the user's processes, as the kernel keeps them.
    std::vector<std::string> runningApplications() override;
    /// Makes sure that the first of them exists, for the user alone.
    std::vector<std::filesystem::path> applicationSupportDirectories() override;

private:
    QMimeDatabase m_types;
    /// Openers still running when this goes tell nobody any more.
    QObject m_listener;
};

}  // namespace kpx
