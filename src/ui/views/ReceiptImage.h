#pragma once

#include <QImage>
#include <QString>

namespace kpx {

/// The picture in the file, upright, or the first page of a PDF document on white. Never larger than
/// `largest`, in pixels: a large photo is made smaller while it is read, so that it needs little memory.
/// A drawing fills that size, for it stays sharp. Null when the file cannot be read.
///
/// May be called on any thread.
QImage readReceiptImage(const QString& file, const QSize& largest);

}  // namespace kpx
