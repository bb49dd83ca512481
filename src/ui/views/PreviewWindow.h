#pragma once

#include "reports/Document.h"

#include <QMainWindow>
#include <QPageLayout>

class QAction;
class QLabel;

namespace kpx {

class PagesView;

/// One printed report, to be looked through, printed or saved as a PDF.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

public:
    PreviewWindow(Document document, const QPageLayout& layout, QWidget* parent = nullptr);

    const Document& document() const { return m_document; }
    /// Writes the PDF. False when the file cannot be written; an old file of that name then stands as it was.
    [[nodiscard]] bool savePdf(const QString& fileName) const;

private:
    void print();
    void askAndSavePdf();
    QAction* addCommand(const QString& objectName, const QString& title, const QString& toolTip,
                        const QString& iconName);
    void buildCommands();
    void showPosition();
    void resizeEvent(QResizeEvent* event) override;

    Document m_document;
    QPageLayout m_layout;
    PagesView* m_pages = nullptr;
    QLabel* m_position = nullptr;
    QAction* m_fitWidth = nullptr;
};

}  // namespace kpx
