#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <string>

namespace kpx {

/// A file as it stood when it was looked at. The time of the last change of anything about it, which no program can
/// set, tells also of a new content of the same size and date.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::int64_t size = -1;  ///< -1 for no file
    std::int64_t changedSeconds = 0;
    std::int64_t changedNanoseconds = 0;
    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const std::string& file);

/// Tells when a receipt's file gets another content, goes or comes back, whether it is written in place or
/// replaced by another.
class ReceiptWatch : public QObject {
    Q_OBJECT

public:
    explicit ReceiptWatch(QObject* parent);

    /// Full path; empty for none.
    void watch(const std::string& file);
    const std::string& file() const { return m_file; }
    /// Whether the file is another than when it was last looked at; from then on it has been looked at.
    bool hasChanged();

Q_SIGNALS:
    /// After a moment, so that a file being written in pieces is told of once.
    void changed();

private:
    void watchPaths();

    std::string m_file;
    FileStamp m_seen;
    QFileSystemWatcher m_watcher;
    QTimer m_moment;
};

}  // namespace kpx
