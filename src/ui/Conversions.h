#pragma once

#include "core/Date.h"

#include <QDateTime>
#include <QString>

#include <string>

namespace kpx {

inline QString qstring(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) { return text.toStdString(); }

/// To the millisecond, in the system's local time.
inline QDateTime qdateTime(Date date) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.secondsSince1970() * 1000.0));
}
inline Date dateFromQDateTime(const QDateTime& dateTime) {
    return Date::fromSecondsSince1970(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000.0);
}

}  // namespace kpx
