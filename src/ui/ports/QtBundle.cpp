#include "ui/ports/QtBundle.h"

#include "ui/Conversions.h"

#include <QCoreApplication>
#include <QDir>

namespace kpx {

std::filesystem::path QtBundle::resources() {
    const QDir programs(QCoreApplication::applicationDirPath());
    return utf8(QDir::cleanPath(programs.filePath(QStringLiteral("../share/velmora"))));
}

std::string QtBundle::shortVersionString() { return KPX_VERSION; }

}  // namespace kpx
