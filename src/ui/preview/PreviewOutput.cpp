#include "ui/preview/PreviewWindow.h"

#include "ui/Conversions.h"
#include "ui/ReportOutput.h"
#include "ui/preview/PagesView.h"
#include "ui/preview/PrintDialog.h"

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrinter>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStatusBar>

#include <algorithm>

// What leaves the window: to a printer, into files.

namespace kpx {

namespace {

/// The title without what file names cannot hold.
QString fileNameFor(const QString& title) {
    QString name = title.simplified();
    name.replace(QLatin1Char('/'), QLatin1Char('-'));
    return name.isEmpty() ? PreviewWindow::tr("Report") : name;
}

/// As QMessageBox::warning, but the name of a file is no markup.
void warn(QWidget& window, const QString& title, const QString& text) {
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, &window);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

/// The file is as good as before where this fails.
void declareLanguage(const QString& fileName, const QString& language) {
    QFile printed(fileName);
    if (!printed.open(QIODevice::ReadOnly)) {
        return;
    }
    const QByteArray pdf = withDocumentLanguage(printed.readAll(), language);
    printed.close();
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size()) {
        file.commit();
    }
}

QString documentsFolder() { return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation); }

}  // namespace

bool PreviewWindow::save(PagesView& pages, const QString& fileName) {
    const QByteArray pdf = reportPdf(pages.document(), m_layout, m_language);
    QSaveFile file(fileName);
    const bool saved =
        !pdf.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size() && file.commit();
    if (saved) {
        m_kept.insert(&pages);
    }
    return saved;
}

bool PreviewWindow::savePdf(const QString& fileName) { return save(pages(), fileName); }

void PreviewWindow::askAndSavePdf() {
    QFileDialog dialog(this, tr("Save as PDF"), documentsFolder(), tr("PDF documents (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(fileNameFor(qstring(document().title)) + QStringLiteral(".pdf"));
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QString fileName = dialog.selectedFiles().value(0);
    if (savePdf(fileName)) {
        statusBar()->showMessage(tr("Saved as %1").arg(fileName));
    } else {
        statusBar()->clearMessage();
        warn(*this, tr("Not saved"), tr("The report could not be saved as %1.").arg(fileName));
    }
}

QStringList PreviewWindow::proposedNames() const {
    QStringList names;
    for (const PagesView* pages : allPages()) {
        const QString title = fileNameFor(qstring(pages->document().title));
        QString name = title + QStringLiteral(".pdf");
        for (int number = 2; names.contains(name, Qt::CaseInsensitive); ++number) {
            name = QStringLiteral("%1 %2.pdf").arg(title).arg(number);
        }
        names.append(name);
    }
    return names;
}

void PreviewWindow::askAndSaveAll() {
    QFileDialog dialog(this, tr("Save All as PDFs in a Folder"), documentsFolder());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setLabelText(QFileDialog::Accept, tr("Save All"));
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QDir folder(dialog.selectedFiles().value(0));
    const QStringList names = proposedNames();
    QStringList there;
    std::ranges::copy_if(names, std::back_inserter(there),
                         [&](const QString& name) { return QFileInfo::exists(folder.filePath(name)); });
    if (!there.isEmpty()) {
        QMessageBox question(
            QMessageBox::Question, tr("Replace files?"),
            tr("The folder already has files of these names:") + QLatin1Char('\n') + there.join(QLatin1Char('\n')),
            QMessageBox::NoButton, this);
        question.setTextFormat(Qt::PlainText);
        const QAbstractButton* replace = question.addButton(tr("&Replace"), QMessageBox::DestructiveRole);
        question.setDefaultButton(question.addButton(QMessageBox::Cancel));
        question.exec();
        if (question.clickedButton() != replace) {
            return;
        }
    }
    QStringList failed;
    const std::vector<PagesView*> all = allPages();
    for (std::size_t index = 0; index < all.size(); ++index) {
        const QString& name = names[static_cast<qsizetype>(index)];
        if (!save(*all[index], folder.filePath(name))) {
            failed.append(name);
        }
    }
    if (failed.isEmpty()) {
        statusBar()->showMessage(tr("%1 files saved in %2").arg(names.size()).arg(folder.path()));
    } else {
        warn(*this, tr("Not saved"),
             tr("These could not be saved:") + QLatin1Char('\n') + failed.join(QLatin1Char('\n')));
    }
}

bool PreviewWindow::askForPrinter(QPrinter& printer, const std::vector<PagesView*>& documents) {
    printer.setResolution(ReportPainter::unitsPerInch);
    printer.setPageLayout(m_layout);
    printer.setFullPage(true);
    printer.setDocName(qstring(documents.front()->document().title));
    PrintDialog dialog(&printer, this);
    if (documents.size() == 1) {
        dialog.setMinMax(1, documents.front()->pageCount());
    } else {
        // Pages are counted within a document.
        dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    }
    return dialog.exec() == QDialog::Accepted;
}

bool PreviewWindow::send(QPrinter& printer, const std::vector<PagesView*>& documents) {
    std::vector<const Document*> printed;
    std::ranges::transform(documents, std::back_inserter(printed), [](PagesView* pages) { return &pages->document(); });
    if (!printReportsOn(printer, printed)) {
        return false;
    }
    if (printer.outputFormat() == QPrinter::PdfFormat && QFileInfo(printer.outputFileName()).isFile()) {
        declareLanguage(printer.outputFileName(), m_language);
    }
    m_kept.insert(documents.begin(), documents.end());
    return true;
}

void PreviewWindow::print() {
    QPrinter printer;
    PagesView& printed = pages();
    if (!askForPrinter(printer, {&printed})) {
        return;
    }
    if (send(printer, {&printed})) {
        statusBar()->showMessage(tr("Sent to the printer"));
    } else {
        statusBar()->showMessage(tr("The printer did not take the report."));
    }
}

void PreviewWindow::printAll() {
    QPrinter printer;
    const std::vector<PagesView*> all = allPages();
    if (!askForPrinter(printer, all)) {
        return;
    }
    // A job for each; into a file they go as one, or each would replace the one before.
    std::vector<std::vector<PagesView*>> jobs;
    if (!printer.outputFileName().isEmpty()) {
        jobs = {all};
    } else {
        std::ranges::transform(all, std::back_inserter(jobs),
                               [](PagesView* pages) { return std::vector<PagesView*>{pages}; });
    }
    QStringList refused;
    for (const std::vector<PagesView*>& job : jobs) {
        printer.setDocName(qstring(job.front()->document().title));
        if (!send(printer, job)) {
            refused.append(printer.docName());
        }
    }
    statusBar()->showMessage(refused.isEmpty()
                                 ? tr("Sent to the printer")
                                 : tr("The printer did not take: %1").arg(refused.join(QStringLiteral(", "))));
}

}  // namespace kpx
