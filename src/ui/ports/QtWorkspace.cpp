#include "ui/ports/QtWorkspace.h"

#include "ui/Conversions.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeType>
#include <QStandardPaths>
#include <QUrl>

namespace kpx {

bool QtWorkspace::open(const std::string& target) {
    const QString text = qstring(target);
    const bool isAddress = text.contains(QStringLiteral("://"));
    const QUrl url = isAddress ? QUrl(text, QUrl::StrictMode) : QUrl::fromLocalFile(text);
    if (!url.isValid() || (!isAddress && !QFileInfo::exists(text))) {
        return false;
    }
    return QDesktopServices::openUrl(url);
}

Workspace::FileType QtWorkspace::typeOfFile(const std::filesystem::path& file) {
    const QFileInfo info(qstring(file.string()));
    if (!info.isFile()) {
        return FileType::Other;
    }
    const QMimeType type = m_types.mimeTypeForFile(info);
    if (type.name().startsWith(QStringLiteral("image/"))) {
        return FileType::Image;
    }
    return type.inherits(QStringLiteral("application/pdf")) ? FileType::PDF : FileType::Other;
}

std::vector<std::string> QtWorkspace::runningApplications() {
    std::vector<std::string> names;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString& process : processes.entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        QFile name(processes.filePath(process) + QStringLiteral("/comm"));
        if (name.open(QIODevice::ReadOnly)) {
            names.push_back(name.readAll().trimmed().toStdString());
        }
    }
    return names;
}

std::vector<std::filesystem::path> QtWorkspace::applicationSupportDirectories() {
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty()) {
        return {};
    }
    const std::filesystem::path path = utf8(base);
    std::error_code error;
    if (std::filesystem::create_directories(path, error)) {
        std::filesystem::permissions(path, std::filesystem::perms::owner_all, error);
    }
    return {path};
}

}  // namespace kpx
