#include "ui/preview/PreviewWindow.h"

#include "ui/Conversions.h"
#include "ui/ReportOutput.h"
#include "ui/preview/DocumentTabs.h"
#include "ui/preview/FindBar.h"
#include "ui/preview/PagesView.h"
#include "ui/views/MenuBarKey.h"
#include "ui/views/ScreenRoom.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kpx {

PreviewWindow::PreviewWindow(const QPageLayout& layout, QString language, QWidget* parent)
    : QMainWindow(parent),
      m_layout(layout),
      m_language(std::move(language)),
      m_tabs(new DocumentTabs),
      m_findBar(new FindBar),
      m_position(new QLabel) {
    setObjectName(QStringLiteral("previewWindow"));
    m_tabs->setAccessibleName(tr("Reports"));
    auto* content = new QWidget(this);
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_tabs);
    rows->addWidget(m_findBar);
    setCentralWidget(content);
    m_position->setObjectName(QStringLiteral("pagePosition"));
    m_position->setContentsMargins(8, 0, 8, 0);
    statusBar()->addPermanentWidget(m_position);
    statusBar()->setSizeGripEnabled(false);
    buildCommands();
    openMenuBarByKey(*this);
    connect(m_tabs, &QTabWidget::currentChanged, this, &PreviewWindow::showCurrent);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &PreviewWindow::closeDocument);
    connect(m_findBar, &FindBar::wordsChanged, this,
            [this] { m_findBar->tell(pages().findAsTyped(m_findBar->words())); });
    connect(m_findBar, &FindBar::nextWanted, this, [this] { find(false); });
    connect(m_findBar, &FindBar::previousWanted, this, [this] { find(true); });
    connect(m_findBar, &FindBar::closed, this, [this] {
        m_findBar->hide();
        pages().setFocus();
    });
    resize(QSize(980, 760).boundedTo(roomOnScreen(*this)));
}

void PreviewWindow::add(Document document) {
    const QString title = qstring(document.title);
    auto* added = new PagesView(std::move(document), m_layout);
    connect(added, &PagesView::shownPartChanged, this, &PreviewWindow::showPosition);
    // A title may hold the character that would mark a mnemonic.
    const int index = m_tabs->addTab(added, QString(title).replace(QLatin1Char('&'), QStringLiteral("&&")));
    m_tabs->setTabToolTip(index, title);
    if (index == 0) {
        added->setFocus();
    }
    showCurrent();
}

PagesView& PreviewWindow::pages() const { return *static_cast<PagesView*>(m_tabs->currentWidget()); }

const Document& PreviewWindow::document() const { return pages().document(); }

std::vector<PagesView*> PreviewWindow::allPages() const {
    std::vector<PagesView*> all;
    for (int index = 0; index < m_tabs->count(); ++index) {
        all.push_back(static_cast<PagesView*>(m_tabs->widget(index)));
    }
    return all;
}

bool PreviewWindow::isAllKept() const {
    return std::ranges::all_of(allPages(), [this](const PagesView* pages) { return m_kept.contains(pages); });
}

void PreviewWindow::closeDocument(int index) {
    if (m_tabs->count() == 1) {
        close();
        return;
    }
    QWidget* closed = m_tabs->widget(index);
    m_tabs->removeTab(index);
    m_kept.erase(static_cast<PagesView*>(closed));
    closed->deleteLater();
    showCurrent();
}

void PreviewWindow::find(bool backwards) {
    const QString words = m_findBar->words();
    if (words.isEmpty()) {
        m_findBar->open();
        return;
    }
    m_findBar->tell(backwards ? pages().findPrevious(words) : pages().findNext(words));
}

QAction* PreviewWindow::addCommand(const char* objectName, const char* iconName, const QString& title,
                                   const QString& toolTip, const QList<QKeySequence>& keys,
                                   const std::function<void()>& act) {
    auto* command = new QAction(QIcon::fromTheme(QLatin1String(iconName)), title, this);
    command->setObjectName(QLatin1String(objectName));
    command->setToolTip(toolTip);
    // The tool bar underlines no letters. Those that stand in brackets behind Japanese or Chinese words are left out.
    command->setIconText(command->iconText().remove(QRegularExpression(QStringLiteral("\\([A-Z]\\)"))));
    command->setShortcuts(keys);
    connect(command, &QAction::triggered, this, act);
    return command;
}

void PreviewWindow::buildCommands() {
    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    buildReportMenu(*bar);
    buildEditMenu();
    bar->addSeparator();
    buildViewMenu(*bar);
}

void PreviewWindow::buildReportMenu(QToolBar& bar) {
    QAction* printOne = addCommand("printCommand", "document-print", tr("&Print…"), tr("Print this report"),
                                   {QKeySequence::Print}, [this] { print(); });
    QAction* printEach =
        addCommand("printAllCommand", "document-print", tr("Print &All…"), tr("Print the reports of all tabs"),
                   {Qt::CTRL | Qt::SHIFT | Qt::Key_P}, [this] { printAll(); });
    QAction* saveOne =
        addCommand("savePdfCommand", "document-save-as", tr("&Save as PDF…"), tr("Save this report as a PDF file"),
                   {QKeySequence::Save}, [this] { askAndSavePdf(); });
    QAction* saveEach = addCommand("saveAllCommand", "document-save-as", tr("Sa&ve All…"),
                                   tr("Save the report of each tab as a PDF file of its own"),
                                   {Qt::CTRL | Qt::SHIFT | Qt::Key_S}, [this] { askAndSaveAll(); });
    QAction* closeOne = addCommand("closeTabCommand", "tab-close", tr("Close &Report"), tr("Close this report"),
                                   {Qt::CTRL | Qt::Key_W}, [this] { closeDocument(m_tabs->currentIndex()); });
    QAction* closeEach = addCommand("closeCommand", "window-close", tr("&Close"), tr("Close this window"),
                                    {Qt::Key_Escape}, [this] { close(); });
    m_forAll = {printEach, saveEach};
    QMenu* menu = menuBar()->addMenu(tr("&Report"));
    menu->addActions({printOne, printEach, saveOne, saveEach});
    menu->addSeparator();
    menu->addActions({closeOne, closeEach});
    bar.addActions({printOne, printEach, saveOne, saveEach});
}

void PreviewWindow::buildEditMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    menu->addAction(addCommand("copyCommand", "edit-copy", tr("&Copy"), tr("Copy the selected text"),
                               {QKeySequence::Copy}, [this] { pages().copy(); }));
    menu->addAction(addCommand("selectAllCommand", "edit-select-all", tr("Select &All"), tr("Select all text"),
                               {QKeySequence::SelectAll}, [this] { pages().selectAll(); }));
    menu->addSeparator();
    menu->addAction(addCommand("findCommand", "edit-find", tr("&Find…"), tr("Find words in this report"),
                               {QKeySequence::Find}, [this] { m_findBar->open(); }));
    menu->addAction(addCommand("findNextCommand", "go-down", tr("Find &Next"), tr("Find the words again"),
                               {Qt::Key_F3, Qt::CTRL | Qt::Key_G}, [this] { find(false); }));
    menu->addAction(addCommand("findPreviousCommand", "go-up", tr("Find &Previous"), tr("Find the words before"),
                               {Qt::SHIFT | Qt::Key_F3, Qt::CTRL | Qt::SHIFT | Qt::Key_G}, [this] { find(true); }));
}

void PreviewWindow::buildViewMenu(QToolBar& bar) {
    QAction* zoomIn = addCommand("zoomInCommand", "zoom-in", tr("Zoom &In"), tr("Show the pages larger"),
                                 {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, [this] { pages().zoomIn(); });
    QAction* zoomOut = addCommand("zoomOutCommand", "zoom-out", tr("Zoom &Out"), tr("Show the pages smaller"),
                                  {Qt::CTRL | Qt::Key_Minus}, [this] { pages().zoomOut(); });
    m_fitWidth =
        addCommand("fitWidthCommand", "zoom-fit-width", tr("&Fit Width"), tr("Show the pages as wide as the window"),
                   {Qt::CTRL | Qt::Key_0}, [this] { pages().fitWidth(); });
    m_fitWidth->setCheckable(true);
    menuBar()->addMenu(tr("&View"))->addActions({zoomIn, zoomOut, m_fitWidth});
    bar.addActions({zoomOut, zoomIn, m_fitWidth});
}

void PreviewWindow::showCurrent() {
    if (m_tabs->count() == 0) {
        return;
    }
    setWindowTitle(tr("%1 – Print Preview").arg(qstring(document().title)));
    for (QAction* forAll : m_forAll) {
        forAll->setVisible(m_tabs->count() > 1);
    }
    showPosition();
}

void PreviewWindow::showPosition() {
    if (m_tabs->count() == 0) {
        return;
    }
    m_position->setText(tr("Page %1 of %2   %3 %")
                            .arg(pages().currentPage())
                            .arg(pages().pageCount())
                            .arg(std::lround(pages().zoom() * 100)));
    m_fitWidth->setChecked(pages().isFittingWidth());
}

void PreviewWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    showPosition();
}

}  // namespace kpx
