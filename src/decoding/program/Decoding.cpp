#include "decoding/program/Decoding.h"

#include "decoding/PageStream.h"
#include "files/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPdfDocument>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace kpx {

namespace {

using Write = std::function<void(std::string_view bytes)>;

/// In megabytes. Some kinds of picture can only be read whole; the process's own limit is the sharper one.
constexpr int largestPictureInMemory = 512;

QSize qsize(PixelSize size) { return {size.width, size.height}; }
PixelSize pixelSize(QSize size) { return {size.width(), size.height()}; }

bool exceeds(const QSize& size, const QSize& largest) {
    return size.width() > largest.width() || size.height() > largest.height();
}

QSize fitted(const QSizeF& size, PixelSize room) {
    return size.scaled(qsize(room), Qt::KeepAspectRatio).toSize().expandedTo(QSize(1, 1)).boundedTo(qsize(room));
}

/// Paper is white, whatever the window's colours: pages and drawings often have no ground of their own.
QImage onPaper(const QImage& image) {
    if (image.isNull() || !image.hasAlphaChannel()) {
        return image.convertToFormat(QImage::Format_RGB32);
    }
    QImage sheet(image.size(), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter(&sheet).drawImage(QPoint(), image);
    return sheet;
}

void writePage(const Write& write, int index, const QImage& image) {
    write(bytesBeforePage(index));
    // Rows of four-byte pixels have no gaps between them.
    write({reinterpret_cast<const char*>(image.constBits()), static_cast<std::size_t>(image.sizeInBytes())});
}

/// Whether reading it smaller needs less memory than reading it whole. A picture of at most a byte a pixel would
/// first be made one of four.
bool gainsByScaling(const QImageReader& reader) {
    constexpr int byte = 8;
    return QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel() > byte;
}

/// The picture made to fit, when it was read whole. A huge one is thinned out first, which keeps its kind of pixels.
QImage madeToFit(const QImage& image, PixelSize room) {
    if (!exceeds(image.size(), qsize(room))) {
        return image;
    }
    const QSize size = fitted(image.size(), room);
    const QSize thinned = (4 * size).boundedTo(image.size());
    return image.scaled(thinned, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

DecodingResult decodePicture(QImageReader& reader, const DecodingRequest& request, const Write& write) {
    const QSize size = reader.size();
    const bool onItsSide = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize room = onItsSide ? qsize(request.room).transposed() : qsize(request.room);
    const bool isDrawing = reader.format().startsWith("svg");
    if (!size.isEmpty() && (isDrawing || (exceeds(size, room) && gainsByScaling(reader)))) {
        reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    const QImage image = onPaper(madeToFit(reader.read(), request.room));
    if (image.isNull()) {
        return DecodingResult::CannotBeShown;
    }
    write(bytesFromOutline({.isDocument = false, .pages = {pixelSize(image.size())}}));
    if (request.firstPage == 0) {
        writePage(write, 0, image);
    }
    return DecodingResult::Shown;
}

DecodingResult decodeDocument(QFile& file, const DecodingRequest& request, const Write& write) {
    QPdfDocument document;
    document.load(&file);
    const int count = std::min(document.pageCount(), mostPages);
    if (document.status() != QPdfDocument::Status::Ready || count < 1) {
        return DecodingResult::CannotBeShown;
    }
    DocumentOutline outline{.isDocument = true, .pages = {}};
    for (int page = 0; page < count; ++page) {
        outline.pages.push_back(pixelSize(fitted(document.pagePointSize(page), largestPage(request))));
    }
    write(bytesFromOutline(outline));
    const int end = std::min(count, request.firstPage + request.pageCount);
    for (int page = request.firstPage; page < end; ++page) {
        const QSize size = qsize(outline.pages[static_cast<std::size_t>(page)]);
        const QImage image = onPaper(document.render(page, size));
        if (image.size() == size) {
            writePage(write, page, image);
        }
    }
    return DecodingResult::Shown;
}

}  // namespace

DecodingResult decode(const DecodingRequest& request, const Write& write) {
    // Not to wait for the other end of a pipe.
    const FileDescriptor opened(::open(request.file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!opened) {
        return errno == ENOENT || errno == ENOTDIR ? DecodingResult::NotFound : DecodingResult::CannotBeShown;
    }
    struct stat status {};
    QFile file;
    if (::fstat(opened.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        !file.open(opened.get(), QIODevice::ReadOnly)) {
        return DecodingResult::CannotBeShown;
    }
    QImageReader::setAllocationLimit(largestPictureInMemory);
    QImageReader reader(&file);
    if (!reader.canRead()) {
        // Some kinds have no mark in their content; the name helps with those.
        reader.setFormat(QFileInfo(QFile::decodeName(request.file.c_str())).suffix().toLower().toLatin1());
    }
    reader.setAutoTransform(true);
    if (reader.canRead() && reader.format() != "pdf") {
        return decodePicture(reader, request, write);
    }
    return file.seek(0) ? decodeDocument(file, request, write) : DecodingResult::CannotBeShown;
}

}  // namespace kpx
