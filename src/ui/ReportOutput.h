#pragma once

#include "drawing/Document.h"

#include <QByteArray>
#include <QPageLayout>
#include <QString>

#include <vector>

class QPrinter;

namespace kpx {

/// The default printer's paper, else Letter; landscape, without margins, as places are absolute.
QPageLayout reportPageLayout();
/// The paper lying across, whichever way its size is given.
QPageLayout pageLayoutAcross(const QPageSize& size);

/// The document as a PDF: real text, its title, and the language of the text (as "en-US") for those who
/// have it read to them. Empty when it could not be made.
QByteArray reportPdf(const Document& document, const QPageLayout& layout, const QString& language);

/// Prints the documents as one job, in the way the printer is set to: its paper, pages, order and copies, as far as
/// the print server does not see to them itself. False when the printer refused.
[[nodiscard]] bool printReportsOn(QPrinter& printer, const std::vector<const Document*>& documents);
[[nodiscard]] bool printReportOn(QPrinter& printer, const Document& document);

/// The PDF with its language declared and its title to be shown in place of its file name; as it is when
/// its catalog is not where a PDF says it is.
QByteArray withDocumentLanguage(const QByteArray& pdf, const QString& language);

}  // namespace kpx
