#pragma once

#include <QLabel>

namespace kpx {

/// One line of text that takes no more room than there is: what has none is cut with "…" and told by the pointer.
/// A text of several lines, as a file's name may be, is written in one.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool isCut() const;
};

}  // namespace kpx
