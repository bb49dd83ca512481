#pragma once

#include "app/Ports.h"

#include <QPointer>

#include <vector>

namespace kpx {

class PreviewWindow;

/// Opens each document in a preview window of its own; the windows delete themselves when closed.
class QtPrintPreview : public PrintPreview {
public:
    ~QtPrintPreview() override;

    void open(Document document) override;
    FontMetrics metrics(const std::string& font, double size) override;

    /// Those still open, in the order in which they were opened.
    std::vector<PreviewWindow*> windows() const;

private:
    std::vector<QPointer<PreviewWindow>> m_windows;
};

}  // namespace kpx
