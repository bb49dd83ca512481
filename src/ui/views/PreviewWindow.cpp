#include "ui/views/PreviewWindow.h"

#include "ui/Conversions.h"
#include "ui/ReportOutput.h"
#include "ui/views/PagesView.h"

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>

#include <cmath>
#include <utility>

namespace kpx {

namespace {

/// The title without what file names cannot hold.
QString fileNameFor(const QString& title) {
    QString name = title.simplified();
    name.replace(QLatin1Char('/'), QLatin1Char('-'));
    return name.isEmpty() ? PreviewWindow::tr("Report") : name;
}

}  // namespace

PreviewWindow::PreviewWindow(Document document, const QPageLayout& layout, QWidget* parent)
    : QMainWindow(parent), m_document(std::move(document)), m_layout(layout) {
    setObjectName(QStringLiteral("previewWindow"));
    setWindowTitle(tr("%1 – Print Preview").arg(qstring(m_document.title)));
    m_pages = new PagesView(m_document, m_layout, this);
    setCentralWidget(m_pages);
    m_position = new QLabel(this);
    m_position->setObjectName(QStringLiteral("pagePosition"));
    m_position->setContentsMargins(8, 0, 8, 0);
    statusBar()->addPermanentWidget(m_position);
    statusBar()->setSizeGripEnabled(false);
    buildCommands();
    connect(m_pages, &PagesView::shownPartChanged, this, &PreviewWindow::showPosition);
    resize(980, 760);
    m_pages->setFocus();
    showPosition();
}

QAction* PreviewWindow::addCommand(const QString& objectName, const QString& title, const QString& toolTip,
                                   const QString& iconName) {
    auto* command = new QAction(QIcon::fromTheme(iconName), title, this);
    command->setObjectName(objectName);
    command->setToolTip(toolTip);
    return command;
}

void PreviewWindow::buildCommands() {
    QAction* print = addCommand(QStringLiteral("printCommand"), tr("&Print…"), tr("Print this report"),
                                QStringLiteral("document-print"));
    print->setShortcut(QKeySequence::Print);
    connect(print, &QAction::triggered, this, &PreviewWindow::print);
    QAction* save = addCommand(QStringLiteral("savePdfCommand"), tr("&Save as PDF…"),
                               tr("Save this report as a PDF file"), QStringLiteral("document-save-as"));
    save->setShortcut(QKeySequence::Save);
    connect(save, &QAction::triggered, this, &PreviewWindow::askAndSavePdf);
    QAction* close = addCommand(QStringLiteral("closeCommand"), tr("&Close"), tr("Close this window"),
                                QStringLiteral("window-close"));
    close->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)});
    connect(close, &QAction::triggered, this, &QWidget::close);
    QAction* zoomIn = addCommand(QStringLiteral("zoomInCommand"), tr("Zoom &In"), tr("Show the pages larger"),
                                 QStringLiteral("zoom-in"));
    zoomIn->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    connect(zoomIn, &QAction::triggered, m_pages, &PagesView::zoomIn);
    QAction* zoomOut = addCommand(QStringLiteral("zoomOutCommand"), tr("Zoom &Out"), tr("Show the pages smaller"),
                                  QStringLiteral("zoom-out"));
    zoomOut->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Minus));
    connect(zoomOut, &QAction::triggered, m_pages, &PagesView::zoomOut);
    m_fitWidth = addCommand(QStringLiteral("fitWidthCommand"), tr("&Fit Width"),
                            tr("Show the pages as wide as the window"), QStringLiteral("zoom-fit-width"));
    m_fitWidth->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    m_fitWidth->setCheckable(true);
    connect(m_fitWidth, &QAction::triggered, m_pages, &PagesView::fitWidth);

    QMenu* report = menuBar()->addMenu(tr("&Report"));
    report->addActions({print, save});
    report->addSeparator();
    report->addAction(close);
    menuBar()->addMenu(tr("&View"))->addActions({zoomIn, zoomOut, m_fitWidth});
    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addActions({print, save});
    bar->addSeparator();
    bar->addActions({zoomOut, zoomIn, m_fitWidth});
}

void PreviewWindow::showPosition() {
    m_position->setText(tr("Page %1 of %2   %3 %")
                            .arg(m_pages->currentPage())
                            .arg(m_pages->pageCount())
                            .arg(std::lround(m_pages->zoom() * 100)));
    m_fitWidth->setChecked(m_pages->isFittingWidth());
}

void PreviewWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    showPosition();
}

bool PreviewWindow::savePdf(const QString& fileName) const {
    const QByteArray pdf = reportPdf(m_document, m_layout, QLocale().bcp47Name());
    QSaveFile file(fileName);
    return !pdf.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size() && file.commit();
}

void PreviewWindow::askAndSavePdf() {
    QFileDialog dialog(this, tr("Save as PDF"), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                       tr("PDF documents (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(fileNameFor(qstring(m_document.title)) + QStringLiteral(".pdf"));
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QString fileName = dialog.selectedFiles().value(0);
    if (savePdf(fileName)) {
        statusBar()->showMessage(tr("Saved as %1").arg(fileName));
    } else {
        statusBar()->clearMessage();
        QMessageBox::warning(this, tr("Not saved"), tr("The report could not be saved as %1.").arg(fileName));
    }
}

void PreviewWindow::print() {
    QPrinter printer;
    printer.setResolution(ReportPainter::unitsPerInch);
    printer.setPageLayout(m_layout);
    printer.setFullPage(true);
    printer.setDocName(qstring(m_document.title));
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_pages->pageCount());
    if (dialog.exec() == QDialog::Accepted && !printReportOn(printer, m_document)) {
        QMessageBox::warning(this, tr("Not printed"), tr("The printer did not take the report."));
    }
}

}  // namespace kpx
