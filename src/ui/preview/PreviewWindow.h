#pragma once

#include "drawing/Document.h"

#include <QKeySequence>
#include <QList>
#include <QMainWindow>
#include <QPageLayout>

#include <functional>
#include <set>
#include <vector>

class QAction;
class QLabel;
class QPrinter;
class QToolBar;

namespace kpx {

class DocumentTabs;
class FindBar;
class PagesView;

/// Printed documents, to be looked through, printed or saved as PDFs: those of one action, each on a tab.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `language` is that of the documents' texts, as "en".
    PreviewWindow(const QPageLayout& layout, QString language, QWidget* parent = nullptr);

    void add(Document document);

    /// The one that is seen. REQUIRES: one was added.
    const Document& document() const;
    PagesView& pages() const;
    /// All of them, in the order of the tabs.
    std::vector<PagesView*> allPages() const;

    /// Writes the PDF of the document that is seen. False when the file cannot be written; an old file of that
    /// name then stands as it was.
    [[nodiscard]] bool savePdf(const QString& fileName);
    /// The names under which Save All… puts the documents into a folder: their titles, each another.
    QStringList proposedNames() const;
    /// Whether each document was saved or printed, so that nothing is lost when the window goes.
    bool isAllKept() const;

private:
    void print();
    void printAll();
    bool askForPrinter(QPrinter& printer, const std::vector<PagesView*>& documents);
    bool send(QPrinter& printer, const std::vector<PagesView*>& documents);
    void askAndSavePdf();
    void askAndSaveAll();
    bool save(PagesView& pages, const QString& fileName);
    void buildCommands();
    void buildReportMenu(QToolBar& bar);
    void buildEditMenu();
    void buildViewMenu(QToolBar& bar);
    QAction* addCommand(const char* objectName, const char* iconName, const QString& title, const QString& toolTip,
                        const QList<QKeySequence>& keys, const std::function<void()>& act);
    void find(bool backwards);
    void closeDocument(int index);
    void showCurrent();
    void showPosition();
    void resizeEvent(QResizeEvent* event) override;

    QPageLayout m_layout;
    QString m_language;
    DocumentTabs* m_tabs = nullptr;
    FindBar* m_findBar = nullptr;
    QLabel* m_position = nullptr;
    QAction* m_fitWidth = nullptr;
    std::vector<QAction*> m_forAll;
    std::set<const PagesView*> m_kept;
};

}  // namespace kpx
