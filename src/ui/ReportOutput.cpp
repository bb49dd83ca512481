#include "ui/ReportOutput.h"

#include "ui/Conversions.h"
#include "ui/ReportPainter.h"
#include "ui/preview/PagesToPrint.h"

#include <QBuffer>
#include <QPageRanges>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintEngine>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace kpx {

QPageLayout reportPageLayout() {
    QPageSize size = QPrinterInfo::defaultPrinter().defaultPageSize();
    if (!size.isValid()) {
        size = QPageSize(QPageSize::Letter);
    }
    return pageLayoutAcross(size);
}

QPageLayout pageLayoutAcross(const QPageSize& size) {
    // Rolls of labels are wide as they come; turned, they would stand upright.
    const QSizeF points = size.size(QPageSize::Point);
    const auto orientation = points.width() > points.height() ? QPageLayout::Portrait : QPageLayout::Landscape;
    return QPageLayout(size, orientation, QMarginsF(0, 0, 0, 0));
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

namespace {

/// Whether the print server leaves out the pages that were not asked for. The program must then send all of them,
/// or they would be counted out twice.
bool serverPicksPages(const QPrinter& printer) {
    // The options for the print server, name and value in turn, under the number that the toolkit gives them.
    constexpr auto serverOptions = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xfe00);
    return printer.outputFormat() == QPrinter::NativeFormat && printer.outputFileName().isEmpty() &&
           printer.printEngine()->property(serverOptions).toStringList().contains(QStringLiteral("page-ranges"));
}

PrintRequest requestOf(const QPrinter& printer) {
    PrintRequest request;
    if (!serverPicksPages(printer)) {
        for (const QPageRanges::Range& range : printer.pageRanges().toRangeList()) {
            request.ranges.emplace_back(range.from, range.to);
        }
    }
    request.lastFirst = printer.pageOrder() == QPrinter::LastPageFirst;
    request.copies = printer.supportsMultipleCopies() ? 1 : std::max(printer.copyCount(), 1);
    request.collated = printer.collateCopies();
    return request;
}

}  // namespace

bool printReportsOn(QPrinter& printer, const std::vector<const Document*>& documents) {
    std::vector<const Page*> pages;
    for (const Document* document : documents) {
        std::ranges::transform(document->pages, std::back_inserter(pages), [](const Page& page) { return &page; });
    }
    const std::vector<int> printed = pagesToPrint(requestOf(printer), static_cast<int>(pages.size()));
    QPainter painter;
    // Pages that the document has not: nothing comes out, not even a blank sheet.
    if (printed.empty() || !painter.begin(&printer)) {
        return false;
    }
    painter.scale(printer.logicalDpiX() / double(ReportPainter::unitsPerInch),
                  printer.logicalDpiY() / double(ReportPainter::unitsPerInch));
    ReportPainter report(printer.pageLayout().fullRectPoints().size());
    for (std::size_t index = 0; index < printed.size(); ++index) {
        if (index > 0 && !printer.newPage()) {
            return false;
        }
        report.paint(painter, *pages[static_cast<std::size_t>(printed[index])]);
    }
    return painter.end();
}

bool printReportOn(QPrinter& printer, const Document& document) { return printReportsOn(printer, {&document}); }

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
