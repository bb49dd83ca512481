#include "ui/views/ReceiptImage.h"

#include <QImageReader>

namespace kpx {

QImage receiptThumbnail(const QString& file, const QSize& largest) {
    if (file.isEmpty()) {
        return {};
    }
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > largest.width() || size.height() > largest.height())) {
        reader.setScaledSize(size.scaled(largest, Qt::KeepAspectRatio));
    }
    return reader.read();
}

}  // namespace kpx
