#pragma once

#include "values/Date.h"

#include <QDateTime>

namespace kpx::test {

/// To the millisecond, in local time as the C library has it.
inline QDateTime qdateTime(Date date) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.secondsSince1970() * 1000.0));
}
inline Date dateFromQDateTime(const QDateTime& dateTime) {
    return Date::fromSecondsSince1970(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000.0);
}

}  // namespace kpx::test
