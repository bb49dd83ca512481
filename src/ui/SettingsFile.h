#pragma once

#include <QString>

namespace kpx {

/// Where the toolkit may look for settings that lie in that file, and keep them. The file itself, unless what stands
/// there would hold up the start: a pipe, a device, or more than any settings are long. Then a place where nothing is
/// and nothing can be; such settings are forgotten with the program's end.
QString settingsFile(const QString& file);

}  // namespace kpx
