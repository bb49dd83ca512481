#pragma once

#include "app/Ports.h"

#include <vector>

namespace kpx {

/// Keeps the documents that were opened, in their order.
class QtPrintPreview : public PrintPreview {
public:
    void open(Document document) override;
    FontMetrics metrics(const std::string& font, double size) override;

    const std::vector<Document>& documents() const { return m_documents; }

private:
    std::vector<Document> m_documents;
};

}  // namespace kpx
