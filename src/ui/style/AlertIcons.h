#pragma once

#include <QIcon>
#include <QPalette>
#include <QStyle>

namespace kpx {

/// The sign of an alert: a triangle for a warning, a disc for a critical one and for an informational
/// one. Null for any other picture.
QIcon alertIcon(QStyle::StandardPixmap pixmap, const QPalette& palette);

}  // namespace kpx
