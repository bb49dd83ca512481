#pragma once

#include "decoding/DecodingRequest.h"

#include <QImage>
#include <QWidget>

#include <string>

namespace kpx {

class ReceiptLoader;
class ReceiptPages;
class ReceiptWatch;
struct DocumentOutline;

/// The receipt at full size in its popover: a picture, or all pages of a document one below the other, as
/// wide as the view. Holds one display at most; a file that cannot be read leaves it empty. The file is
/// not touched before the view is on the screen.
class ReceiptView : public QWidget {
    Q_OBJECT

public:
    explicit ReceiptView(QWidget* parent = nullptr);
    ~ReceiptView() override;

    /// Shows the file of that full path, in any bytes; none for an empty one.
    void showReceipt(const std::string& file);
    void clear() { showReceipt({}); }

    /// Why nothing is displayed although there is a receipt; empty for none of that.
    void setMessage(const QString& message);

    /// An acceptable drag hovers over it.
    void setDragInside(bool inside);

    /// The picture on display; null while there is none.
    const QImage& image() const { return m_image; }
    /// The pages on display; null while there are none.
    ReceiptPages* pages() const { return m_pages; }
    /// What came of the file; Shown while nothing is known to the contrary.
    DecodingResult result() const { return m_result; }

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void takeDown();
    void build();
    void load(int firstPage, int pageCount);
    void buildPages(const DocumentOutline& outline);
    void pageCame(int index, const QImage& picture);
    void finished(DecodingResult result);

    std::string m_file;
    QString m_message;
    bool m_built = false;
    bool m_dragInside = false;
    DecodingResult m_result = DecodingResult::Shown;
    QImage m_image;
    ReceiptLoader* m_loader;
    ReceiptWatch* m_watch;
    ReceiptPages* m_pages = nullptr;
};

}  // namespace kpx
