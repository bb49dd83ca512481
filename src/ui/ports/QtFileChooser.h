#pragma once

#include "app/Ports.h"

#include <QPointer>
#include <QWidget>

namespace kpx {

/// The desktop's dialog for files, as a sheet of the main window.
class QtFileChooser : public FileChooser {
public:
    void setMainWindow(QWidget* window) { m_window = window; }

    void chooseFile(const std::filesystem::path& folder,
                    std::function<void(const std::filesystem::path& file)> chosen) override;

private:
    QPointer<QWidget> m_window;
};

}  // namespace kpx
