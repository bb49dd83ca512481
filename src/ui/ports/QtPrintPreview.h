#pragma once

#include "app/Ports.h"

#include <QPointer>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

namespace kpx {

class PreviewWindow;

/// Opens documents in preview windows, those of one action as tabs of one; the windows delete themselves when closed.
class QtPrintPreview : public PrintPreview {
public:
    QtPrintPreview();
    ~QtPrintPreview() override;

    void open(Document document) override;
    FontMetrics metrics(const std::string& font, double size) override;

    /// Those still open, in the order in which they were opened.
    std::vector<PreviewWindow*> windows() const;
    /// Closes those whose documents are all saved or printed.
    void closeKept();

    /// Of the documents' texts; PDFs say it to those who have them read to them.
    QString language = QStringLiteral("en");
    /// Called when a window was closed and no other is open.
    std::function<void()> lastClosed;

private:
    PreviewWindow& windowOfThisAction();

    std::vector<QPointer<PreviewWindow>> m_windows;
    /// The window that further documents of the running action go to.
    QPointer<PreviewWindow> m_filling;
    QTimer m_endOfAction;
};

}  // namespace kpx
