#pragma once

#include <QToolButton>

namespace kpx {

/// A small button that lights up under the mouse and shows a pointing hand while it is enabled.
class DWKButtonHover : public QToolButton {
    Q_OBJECT

public:
    explicit DWKButtonHover(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void cursorUpdate();
};

}  // namespace kpx
