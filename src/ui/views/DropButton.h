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
    /// Something stands in the way of the receipt's picture: its words then take the picture's place. `problem` is
    /// what the small sheet of paper bears.
    enum class Problem { None, CannotBeShown, NotFound };
    void setProblem(Problem problem, const QString& words);

    /// An acceptable drag hovers over it; drawn as a ring inside its edge.
    void setDragInside(bool inside);

    QSize sizeHint() const override;
    /// Where its words stand while it has no picture to show.
    QRect textArea() const;
    /// Without the middle of a file's name that is too long for that.
    QString shownWords() const;
    /// On the screen.
    QPoint middle() const { return mapToGlobal(rect().center()); }

Q_SIGNALS:
    void contextMenuWanted(const QPoint& globalPosition);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// A sheet of paper and words below it: the invitation, or what is wrong.
    void drawPaper(QPainter& painter) const;
    /// Null where large words leave it no room.
    QRectF sheet() const;
    void drawMark(QPainter& painter, const QRectF& sheet) const;

    Problem m_problem = Problem::None;
    QString m_words;

    QImage m_picture;
    bool m_expectsPicture = false;
    bool m_dragInside = false;
};

}  // namespace kpx
