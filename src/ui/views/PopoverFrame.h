#pragma once

#include <QFrame>

namespace kpx {

/// A popover: hangs to the right of its anchor (to the left where the screen ends), also above a sheet,
/// and closes when the user acts elsewhere.
class PopoverFrame : public QFrame {
    Q_OBJECT

public:
    explicit PopoverFrame(QWidget* parent);

    void showBeside(QWidget* anchor);

Q_SIGNALS:
    void closed();

protected:
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* m_anchor = nullptr;
};

}  // namespace kpx
