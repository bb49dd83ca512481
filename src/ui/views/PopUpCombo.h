#pragma once

#include <QComboBox>

namespace kpx {

/// A pop-up menu that shows its selected item. Choosing is always an act of its own: keys open the menu
/// instead of stepping through the items behind its back, and the mouse wheel scrolls what lies below.
/// Picking the item already selected counts as choosing it.
class PopUpCombo : public QComboBox {
    Q_OBJECT

public:
    explicit PopUpCombo(QWidget* parent = nullptr);

    void showPopup() override;

    /// As a click on the item in the list does, chosen already or not.
    void chooseItem(int index);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void forgetMouse();
    bool isTextElided() const;
};

}  // namespace kpx
