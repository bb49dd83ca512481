#pragma once

#include <QToolButton>

namespace kpx {

/// A small button that lights up under the mouse, while the program is the active one, and shows a pointing hand while
/// it is enabled.
class DWKButtonHover : public QToolButton {
    Q_OBJECT

public:
    explicit DWKButtonHover(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void initStyleOption(QStyleOptionToolButton* option) const override;

private:
    /// Asks for the mouse's coming and going over the whole button.
    void updateTrackingAreas();
    void mouseEntered();
    void mouseExited();
    void cursorUpdate();

    bool m_highlighted = false;
};

}  // namespace kpx
