#pragma once

#include <QImage>
#include <QString>

namespace kpx {

/// The picture in the file, upright, decoded no larger than the size asked for; null when it cannot be
/// read.
QImage receiptThumbnail(const QString& file, const QSize& largest);

}  // namespace kpx
