#pragma once

#include <QFont>
#include <QPalette>
#include <QString>

class QPainter;

namespace kpx {

/// Draws, in the middle of an empty list, what it will hold and how to fill it.
void drawEmptyState(QPainter& painter, const QRect& area, const QPalette& palette, const QFont& font,
                    const QString& title, const QString& text);

}  // namespace kpx
