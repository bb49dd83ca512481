#pragma once

#include <QFrame>
#include <QPointer>

namespace kpx {

/// A popover: hangs to the right of its anchor (to the left where the screen ends), also above a sheet,
/// and closes when the user acts elsewhere: anywhere, or in this program only, so that something can still
/// be dragged into it out of another one.
class PopoverFrame : public QFrame {
    Q_OBJECT

public:
    enum class Closing { ActElsewhere, ActInThisProgram };
    PopoverFrame(QWidget* parent, Closing closing);

    void showBeside(QWidget* anchor);

Q_SIGNALS:
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool anchorContains(const QPoint& globalPosition) const;
    /// Whether the event may pass on.
    bool pressedElsewhere(const QWidget& target, const QMouseEvent& event);
    /// Closes also when the keyboard has gone back to the window it hangs from, as after an alert.
    bool escapePressedBeneath(const QObject& target, const QKeyEvent& event);

    Qt::WindowFlags m_flags;
    QPointer<QWidget> m_anchor;
};

}  // namespace kpx
