#include "ui/views/ReceiptWatch.h"

#include "ui/Conversions.h"

#include <QFileInfo>

#include <sys/stat.h>

#include <chrono>

namespace kpx {

FileStamp stampOf(const std::string& file) {
    struct stat status {};
    if (file.empty() || ::stat(file.c_str(), &status) != 0) {
        return {};
    }
    return {.device = status.st_dev,
            .number = status.st_ino,
            .size = status.st_size,
            .changedSeconds = status.st_ctim.tv_sec,
            .changedNanoseconds = status.st_ctim.tv_nsec};
}

ReceiptWatch::ReceiptWatch(QObject* parent) : QObject(parent) {
    constexpr std::chrono::milliseconds moment{150};
    m_moment.setSingleShot(true);
    m_moment.setInterval(moment);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_moment, qOverload<>(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_moment, qOverload<>(&QTimer::start));
    connect(&m_moment, &QTimer::timeout, this, [this] {
        watchPaths();
        if (hasChanged()) {
            Q_EMIT changed();
        }
    });
}

void ReceiptWatch::watch(const std::string& file) {
    m_file = file;
    m_seen = stampOf(file);
    m_moment.stop();
    if (const QStringList paths = m_watcher.files() + m_watcher.directories(); !paths.isEmpty()) {
        m_watcher.removePaths(paths);
    }
    watchPaths();
}

bool ReceiptWatch::hasChanged() {
    const FileStamp before = std::exchange(m_seen, stampOf(m_file));
    return before != m_seen;
}

void ReceiptWatch::watchPaths() {
    if (m_file.empty()) {
        return;
    }
    // The folder tells of a file that takes the place of this one, which is then a new one to watch.
    const QFileInfo file(qstring(m_file));
    for (const QString& path : {file.filePath(), file.path()}) {
        if (QFileInfo::exists(path)) {
            m_watcher.addPath(path);
        }
    }
}

}  // namespace kpx
