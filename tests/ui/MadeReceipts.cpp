#include "tests/ui/MadeReceipts.h"

#include "core/DataFiles.h"
#include "core/Keys.h"
#include "receipts/Bookmark.h"
#include "tests/ui/MadeHousehold.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTest>

namespace kpx::test {

namespace {

QString place(const QString& name) {
    const QString folder = QString::fromStdString((dataFolder() / "Receipts").string());
    QDir().mkpath(folder);
    return folder + QLatin1Char('/') + name;
}

/// The segment of a JPEG file that tells how its pixels lie; 6 for a quarter turn to the right.
QByteArray orientationSegment(char orientation) {
    QByteArray segment = QByteArray::fromHex(
        "ffe10022"                  // application segment 1, 34 bytes with the length itself
        "457869660000"              // its kind: Exif
        "4d4d002a00000008"          // big-endian, the directory follows at once
        "0001"                      // one entry:
        "011200030000000100000000"  // orientation, one short number
        "00000000");                // no further directory
    segment[29] = orientation;
    return segment;
}

}  // namespace

QString writeBytes(const QString& name, const QByteArray& bytes) {
    QFile file(place(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

QString writePicture(const QString& name, const QSize& size, unsigned color) {
    QImage picture(size, QImage::Format_Indexed8);
    picture.setColorTable({color});
    picture.fill(0);
    return picture.save(place(name)) ? place(name) : QString();
}

QString writePhotoOnItsSide(const QString& name, const QSize& stored) {
    QImage pixels(stored, QImage::Format_RGB32);
    pixels.fill(Qt::blue);
    // After the quarter turn to the right, the left half comes to lie at the top.
    QPainter(&pixels).fillRect(0, 0, stored.width() / 2, stored.height(), Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    pixels.save(&buffer, "JPG", 95);
    constexpr int afterStartOfImage = 2;
    return writeBytes(name, bytes.insert(afterStartOfImage, orientationSegment(6)));
}

QString writeDocument(const QString& name, int pages) {
    QPdfWriter writer(place(name));
    writer.setPageSize(QPageSize(QPageSize::A5));
    QPainter painter(&writer);
    for (int page = 1; page <= pages; ++page) {
        painter.fillRect(QRect(0, 0, writer.width(), writer.height() / 8), Qt::darkGreen);
        painter.drawText(0, writer.height() / 2, QStringLiteral("Page %1").arg(page));
        if (page < pages) {
            writer.newPage();
        }
    }
    return place(name);
}

QString writeTillReceipt(const QString& name) {
    constexpr struct {
        const char* left;
        const char* right;
    } lines[] = {{"CORNER PHARMACY", ""},
                 {"1 Main Street, Springfield", ""},
                 {"", ""},
                 {"Rx 4417203", "Refill"},
                 {"Lisinopril 10 mg", "90 tablets"},
                 {"Price", "48.60"},
                 {"Insurance", "-35.50"},
                 {"TO PAY", "$ 13.10"},
                 {"", ""},
                 {"Paid by card", "13.10"},
                 {"Thank you. Get well soon!", ""}};
    QPdfWriter writer(place(name));
    writer.setResolution(720);
    writer.setPageSize(QPageSize(QSizeF(80, 90), QPageSize::Millimeter));
    writer.setPageMargins(QMarginsF(6, 6, 6, 6), QPageLayout::Millimeter);
    QPainter painter(&writer);
    painter.setFont(QFont(QStringLiteral("DejaVu Sans Mono"), 8));
    const int lineHeight = writer.height() / static_cast<int>(std::size(lines));
    QRect row(0, 0, writer.width(), lineHeight);
    for (const auto& line : lines) {
        painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, QLatin1String(line.left));
        painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter, QLatin1String(line.right));
        row.translate(0, lineHeight);
    }
    return place(name);
}

namespace {

/// A document whose list of pages holds itself; a reader that follows it never comes to an end.
QByteArray documentOfItself() {
    QByteArray bytes = "%PDF-1.4\n";
    QList<qsizetype> places;
    for (const char* object : {"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 2/Kids[2 0 R 3 0 R]>>",
                               "<</Type/Pages/Parent 2 0 R/Count 2/Kids[2 0 R 2 0 R]>>"}) {
        places << bytes.size();
        bytes += QByteArray::number(places.size()) + " 0 obj\n" + object + "\nendobj\n";
    }
    const qsizetype table = bytes.size();
    bytes += "xref\n0 4\n0000000000 65535 f \n";
    for (const qsizetype place : places) {
        bytes += QByteArray::number(place).rightJustified(10, '0') + " 00000 n \n";
    }
    return bytes + "trailer\n<</Size 4/Root 1 0 R>>\nstartxref\n" + QByteArray::number(table) + "\n%%EOF\n";
}

/// A drawing of four hundred megabytes, which take more when read, packed by the tool that packs such drawings.
QString writePackedDrawing(const QString& name) {
    const QString file = writeBytes(name, {});
    QProcess packer;
    packer.setStandardOutputFile(file);
    packer.start(QStringLiteral("gzip"), {QStringLiteral("-1")});
    packer.write("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>");
    const QByteArray piece = QByteArray("<rect width='2' height='1'/>").repeated(40000);
    for (int megabyte = 0; megabyte < 400; ++megabyte) {
        packer.write(piece);
        packer.waitForBytesWritten();
    }
    packer.write("</svg>");
    packer.closeWriteChannel();
    return packer.waitForFinished() && packer.exitCode() == 0 ? file : QString();
}

/// A picture that says it has two thousand million pixels, and has none.
QByteArray pictureWithoutPixels() {
    return QByteArray::fromHex(
        "89504e470d0a1a0a0000000d49484452"
        "0000afc80000afc8080200000067dcbf79"
        "0000000049454e44ae426082");
}

}  // namespace

QStringList writeHostileReceipts() {
    return {
        writeBytes(QStringLiteral("itself.pdf"), documentOfItself()), writePackedDrawing(QStringLiteral("packed.svgz")),
        writeBytes(QStringLiteral("pixels.png"), pictureWithoutPixels()), writeBytes(QStringLiteral("empty.pdf"), {})};
}

void writeReceiptForEveryFill() {
    std::vector<Data> bookmarks;
    for (const char* name : {"one.png", "two.png", "three.png"}) {
        const QString file = writePicture(QLatin1String(name), {30, 50}, 0xff205080);
        bookmarks.push_back(createBookmark(file.toStdString(), dataFolder()).value());
    }
    Records history = copyArrayFromDataFile(dataFolder(), prescriptionHistoryFile).value();
    for (std::size_t index = 0; index < history.size(); ++index) {
        history[index].set(MHReceiptKey, bookmarks[index % bookmarks.size()]);
    }
    QVERIFY(writeArray(history, dataFolder(), prescriptionHistoryFile));
}

}  // namespace kpx::test
