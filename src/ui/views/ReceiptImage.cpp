#include "ui/views/ReceiptImage.h"

#include <QImageReader>
#include <QPainter>
#include <QPdfDocument>

namespace kpx {

namespace {

/// In megabytes. Some kinds of picture can only be decoded whole; a photo of 100 megapixels then takes 400.
constexpr int largestPictureInMemory = 1024;

bool exceeds(const QSize& size, const QSize& largest) {
    return size.width() > largest.width() || size.height() > largest.height();
}

/// Paper is white, whatever the window's colours: pages and drawings often have no ground of their own.
QImage onPaper(const QImage& image) {
    if (image.isNull() || !image.hasAlphaChannel()) {
        return image;
    }
    QImage sheet(image.size(), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter(&sheet).drawImage(QPoint(), image);
    return sheet;
}

QImage firstPage(const QString& file, const QSize& largest) {
    QPdfDocument document;
    if (document.load(file) != QPdfDocument::Error::None || document.pageCount() < 1) {
        return {};
    }
    const QSize size = document.pagePointSize(0).scaled(largest, Qt::KeepAspectRatio).toSize();
    if (size.isEmpty()) {
        return {};
    }
    return onPaper(document.render(0, size));
}

}  // namespace

QImage readReceiptImage(const QString& file, const QSize& largest) {
    [[maybe_unused]] static const bool limitSet = (QImageReader::setAllocationLimit(largestPictureInMemory), true);
    QImageReader reader(file);
    reader.setAutoTransform(true);
    if (!reader.canRead() || reader.format() == "pdf") {
        return firstPage(file, largest);
    }
    const QSize size = reader.size();
    const bool onItsSide = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize room = onItsSide ? largest.transposed() : largest;
    const bool isDrawing = reader.format().startsWith("svg");
    if (!size.isEmpty() && (exceeds(size, room) || isDrawing)) {
        reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    const QImage image = reader.read();
    // Readers that cannot tell the size beforehand give the whole picture.
    return onPaper(exceeds(image.size(), largest) ? image.scaled(largest, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                                  : image);
}

}  // namespace kpx
