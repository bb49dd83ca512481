#include "ui/ReportOutput.h"

#include "ui/Conversions.h"
#include "ui/ReportPainter.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>

#include <algorithm>

namespace kpx {

QPageLayout reportPageLayout() {
    QPageSize size = QPrinterInfo::defaultPrinter().defaultPageSize();
    if (!size.isValid()) {
        size = QPageSize(QPageSize::Letter);
    }
    return QPageLayout(size, QPageLayout::Landscape, QMarginsF(0, 0, 0, 0));
}

QByteArray reportPdf(const Document& document, const QPageLayout& layout, const QString& language) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(ReportPainter::unitsPerInch);
        writer.setPageLayout(layout);
        writer.setTitle(qstring(document.title));
        writer.setCreator(QStringLiteral("Velmora"));
        QPainter painter;
        if (!painter.begin(&writer)) {
            return {};
        }
        ReportPainter report(layout.fullRectPoints().size());
        bool isFirst = true;
        for (const Page& page : document.pages) {
            if (!isFirst && !writer.newPage()) {
                return {};
            }
            isFirst = false;
            report.paint(painter, page);
        }
        painter.end();
    }
    return withDocumentLanguage(buffer.data(), language);
}

bool printReportOn(QPrinter& printer, const Document& document) {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    painter.scale(printer.logicalDpiX() / double(ReportPainter::unitsPerInch),
                  printer.logicalDpiY() / double(ReportPainter::unitsPerInch));
    ReportPainter report(printer.pageLayout().fullRectPoints().size());
    const int pageCount = static_cast<int>(document.pages.size());
    const int first = std::max(printer.fromPage(), 1);
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), pageCount) : pageCount;
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage()) {
            return false;
        }
        report.paint(painter, document.pages[static_cast<std::size_t>(page - 1)]);
    }
    return painter.end();
}

// The toolkit's PDF writer has no place for the language. It is added as the format itself provides for
// changes: a new version of the catalog at the end, and a table that points to it.
QByteArray withDocumentLanguage(const QByteArray& pdf, const QString& language) {
    static const QRegularExpression tail(
        QStringLiteral("trailer\\s*<<(?<trailer>.*)>>\\s*startxref\\s+(?<xref>\\d+)\\s+%%EOF\\s*$"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression root(QStringLiteral("/Root\\s+(?<number>\\d+)\\s+0\\s+R"));
    const QString end = QString::fromLatin1(pdf.mid(pdf.lastIndexOf("trailer")));
    const auto tailMatch = tail.match(end);
    const QString trailer = tailMatch.captured(QStringLiteral("trailer"));
    const QByteArray number = root.match(trailer).captured(QStringLiteral("number")).toLatin1();
    const QByteArray opening = number + " 0 obj\n<<";
    const qsizetype catalog = pdf.indexOf("\n" + opening);
    const qsizetype catalogEnd = pdf.indexOf("endobj", catalog);
    if (number.isEmpty() || catalog < 0 || catalogEnd < 0) {
        return pdf;
    }
    const qsizetype entries = catalog + 1 + opening.size();
    QByteArray result = pdf;
    const QByteArray place = QByteArray::number(result.size()).rightJustified(10, '0');
    QByteArray name = language.toLatin1();
    name.replace('\\', "").replace('(', "").replace(')', "");
    result += opening + "\n/Lang (" + name + ")\n/ViewerPreferences << /DisplayDocTitle true >>" +
              pdf.mid(entries, catalogEnd - entries) + "endobj\n";
    const QByteArray table = QByteArray::number(result.size());
    result += "xref\n" + number + " 1\n" + place + " 00000 n \ntrailer\n<<" + trailer.toLatin1() + "/Prev " +
              tailMatch.captured(QStringLiteral("xref")).toLatin1() + "\n>>\nstartxref\n" + table + "\n%%EOF\n";
    return result;
}

}  // namespace kpx
