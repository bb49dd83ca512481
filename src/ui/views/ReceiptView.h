#pragma once

#include <QImage>
#include <QWidget>

namespace kpx {

/// The receipt at full size in its popover. Holds one display at most.
class ReceiptView : public QWidget {
    Q_OBJECT

public:
    explicit ReceiptView(QWidget* parent = nullptr);

    void showImage(const QString& file);
    void clear();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
};

}  // namespace kpx
