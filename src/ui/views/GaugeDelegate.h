#pragma once

#include <QStyledItemDelegate>

namespace kpx {

/// How much is left of a whole, from 0 to 1, for a model to answer under its role.
inline constexpr int gaugeRole = Qt::UserRole + 1;

/// Draws cells as usual, and below the text of one that has a gauge a thin bar: as much of it filled as is
/// left, all of it red where nothing is.
class GaugeDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace kpx
