#include "ui/ports/QtWorkspace.h"

#include "ui/Conversions.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeType>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <fstream>
#include <utility>

namespace kpx {

namespace {

/// Invalid for what nothing can open. A file's name is bytes and need be no text.
QUrl urlOf(const std::string& target) {
    if (target.find("://") != std::string::npos) {
        return QUrl(qstring(target), QUrl::StrictMode);
    }
    std::error_code error;
    return std::filesystem::exists(target, error)
               ? QUrl::fromEncoded("file://" + QByteArray::fromStdString(target).toPercentEncoding("/"))
               : QUrl();
}

/// Where the name is no text, by the content's beginning.
QMimeType typeByContent(const QMimeDatabase& types, const std::filesystem::path& file) {
    constexpr qsizetype enough = 65536;
    QByteArray start(enough, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(start.data(), enough);
    start.truncate(static_cast<qsizetype>(stream.gcount()));
    return types.mimeTypeForFileNameAndData(qstring(file.filename().string()), start);
}

}  // namespace

void QtWorkspace::open(const std::string& target, std::function<void()> failed) {
    const auto fail = [failed = std::move(failed)] {
        if (failed) {
            failed();
        }
    };
    const QUrl url = urlOf(target);
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!url.isValid() || (opener.isEmpty() && !QDesktopServices::openUrl(url))) {
        fail();
        return;
    }
    if (opener.isEmpty()) {
        return;
    }
    // Nobody's child: the end of the program must not end what was opened.
    auto* process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::finished, &m_listener, [fail](int status, QProcess::ExitStatus end) {
        if (status != 0 || end != QProcess::NormalExit) {
            fail();
        }
    });
    QObject::connect(process, &QProcess::errorOccurred, &m_listener, [fail, process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            process->deleteLater();
            fail();
        }
    });
    process->start(opener, {url.toString(QUrl::FullyEncoded)});
}

Workspace::FileType QtWorkspace::typeOfFile(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return FileType::Other;
    }
    const QFileInfo info(qstring(file.string()));
    const QMimeType type = info.isFile() ? m_types.mimeTypeForFile(info) : typeByContent(m_types, file);
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
