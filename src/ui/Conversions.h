#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace kpx {

inline QString qstring(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) { return text.toStdString(); }

}  // namespace kpx
