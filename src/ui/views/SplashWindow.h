#pragma once

#include <QWidget>

namespace kpx {

/// The window shown for the first seconds; a click sends it away.
class SplashWindow : public QWidget {
    Q_OBJECT

public:
    explicit SplashWindow(const QStringList& fields);

    /// Shows it in the middle of the window, or of the screen without one.
    void showOver(QWidget* window);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace kpx
