#pragma once

#include <QImage>
#include <QWidget>

class QPdfDocument;
class QPdfView;

namespace kpx {

class ReceiptLoader;

/// The receipt at full size in its popover: a picture, or all pages of a document one below the other, as
/// wide as the view. Holds one display at most; a file that cannot be read leaves it empty. The file is
/// not touched before the view is on the screen.
class ReceiptView : public QWidget {
    Q_OBJECT

public:
    explicit ReceiptView(QWidget* parent = nullptr);
    ~ReceiptView() override;

    void showImage(const QString& file);
    void showPdf(const QString& file);
    void clear();

    /// An acceptable drag hovers over it.
    void setDragInside(bool inside);

    /// The picture on display; null while there is none.
    const QImage& image() const { return m_image; }
    /// The pages on display; null while there are none.
    QPdfView* pages() const { return m_pages; }

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Kind { None, Image, Pdf };
    void display(Kind kind, const QString& file);
    void build();
    void buildPages();

    Kind m_kind = Kind::None;
    QString m_file;
    bool m_built = false;
    bool m_dragInside = false;
    QImage m_image;
    ReceiptLoader* m_loader;
    QPdfDocument* m_document = nullptr;
    QPdfView* m_pages = nullptr;
};

}  // namespace kpx
