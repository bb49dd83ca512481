#include "ui/SettingsFile.h"

#include <QFileInfo>

namespace kpx {

QString settingsFile(const QString& file) {
    constexpr qint64 longest = 1 << 20;
    const QFileInfo found(file);
    const bool holdsUp = found.exists() && !found.isDir() && (!found.isFile() || found.size() > longest);
    return holdsUp ? file + QStringLiteral("/none") : file;
}

}  // namespace kpx
