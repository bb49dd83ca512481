#pragma once

#include <QWidget>

namespace kpx {

/// What is shown in the middle of the window for the first seconds; a click sends it away. Part of that window: one of
/// its own would take the keys there where each new window gets them, and stand where the desktop likes.
class SplashWindow : public QWidget {
    Q_OBJECT

public:
    SplashWindow(const QStringList& fields, QWidget& window);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace kpx
