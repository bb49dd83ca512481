#pragma once

#include <QToolButton>

namespace kpx {

/// The receipt button of the entry form: shows the receipt's picture, or where to drop one.
class DropButton : public QToolButton {
    Q_OBJECT

public:
    explicit DropButton(QWidget* parent = nullptr);

    /// The receipt's picture; a null one for none.
    void setPicture(const QImage& picture);
    /// A picture is being read: neither the one before nor the invitation is right any more.
    void expectPicture();
    const QImage& picture() const { return m_picture; }
    /// An acceptable drag hovers over it; drawn as a ring inside its edge.
    void setDragInside(bool inside);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawInvitation(QPainter& painter, const QRect& area);

    QImage m_picture;
    bool m_expectsPicture = false;
    bool m_dragInside = false;
};

}  // namespace kpx
