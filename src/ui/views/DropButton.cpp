#include "ui/views/DropButton.h"

#include "ui/views/DropRing.h"

#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextOption>

namespace kpx {

namespace {

constexpr int inset = 8;

/// The outline of a till receipt: a sheet with a torn lower edge.
void drawSheet(QPainter& painter, const QRectF& sheet) {
    QPolygonF outline{sheet.topLeft(), sheet.topRight()};
    constexpr int teeth = 4;
    for (int tooth = 0; tooth <= 2 * teeth; ++tooth) {
        const double x = sheet.right() - sheet.width() * tooth / (2.0 * teeth);
        outline << QPointF(x, sheet.bottom() - (tooth % 2 == 0 ? 0 : 4));
    }
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(outline);
}

/// A button that has a menu too; the toolkit's own has no act for one that comes by a right click.
class AccessibleDrop : public QAccessibleWidget {
public:
    explicit AccessibleDrop(DropButton* button) : QAccessibleWidget(button, QAccessible::Button) {}

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        return widget()->isEnabled() ? QStringList{pressAction(), showMenuAction()} + names : names;
    }
    void doAction(const QString& name) override {
        auto& button = static_cast<DropButton&>(*widget());
        if (name == pressAction()) {
            button.click();
        } else if (name == showMenuAction() && button.isEnabled()) {
            Q_EMIT button.contextMenuWanted(button.middle());
        } else {
            QAccessibleWidget::doAction(name);
        }
    }
};

QAccessibleInterface* accessibleDrop(const QString&, QObject* object) {
    auto* button = qobject_cast<DropButton*>(object);
    return button ? new AccessibleDrop(button) : nullptr;
}

}  // namespace

DropButton::DropButton(QWidget* parent) : QToolButton(parent) {
    // A second time changes nothing.
    QAccessible::installFactory(accessibleDrop);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAcceptDrops(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void DropButton::setPicture(const QImage& picture) {
    m_picture = picture;
    m_expectsPicture = false;
    update();
}

void DropButton::expectPicture() {
    m_picture = QImage();
    m_expectsPicture = true;
    update();
}

void DropButton::setDragInside(bool inside) {
    m_dragInside = inside;
    update();
}

void DropButton::setProblem(Problem problem, const QString& words) {
    m_problem = problem;
    m_words = words;
    update();
}

void DropButton::contextMenuEvent(QContextMenuEvent* event) {
    Q_EMIT contextMenuWanted(event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : middle());
}

QSize DropButton::sizeHint() const { return {136, 136}; }

QRectF DropButton::sheet() const {
    constexpr QSize size(26, 34);
    const QRect area = rect().adjusted(inset, inset, -inset, -inset);
    int top = area.center().y() - 40;
    if (m_problem == Problem::None) {
        const QRect words = fontMetrics().boundingRect(area, Qt::AlignHCenter | Qt::TextWordWrap, text());
        top = qMin(top, area.bottom() - words.height() - inset - size.height());
    }
    return top < area.top() ? QRectF() : QRectF(QPoint(area.center().x() - size.width() / 2, top), size);
}

QRect DropButton::textArea() const {
    QRect area = rect().adjusted(inset, inset, -inset, -inset);
    if (const QRectF above = sheet(); !above.isNull()) {
        area.setTop(qRound(above.bottom()) + inset);
    }
    return area;
}

void DropButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const bool hovered = underMouse() && QGuiApplication::applicationState() == Qt::ApplicationActive;
    const bool lit = isEnabled() && (hovered || hasFocus());
    const QRectF frame = QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75);
    QPen pen(lit ? palette().color(QPalette::Highlight) : palette().color(QPalette::Mid), lit ? 1.5 : 1);
    pen.setStyle(m_picture.isNull() && !m_expectsPicture ? Qt::DashLine : Qt::SolidLine);
    painter.setPen(pen);
    painter.setBrush(isEnabled() ? palette().color(QPalette::AlternateBase) : palette().color(QPalette::Window));
    painter.drawRoundedRect(frame, 6, 6);

    const QRect area = rect().adjusted(inset, inset, -inset, -inset);
    if (m_picture.isNull() || m_problem != Problem::None) {
        if (!m_expectsPicture || m_problem != Problem::None) {
            drawPaper(painter);
        }
    } else {
        QRect target(QPoint(), m_picture.size().scaled(area.size(), Qt::KeepAspectRatio));
        target.moveCenter(area.center());
        painter.drawImage(target, m_picture);
    }
    if (m_dragInside) {
        drawDropRing(painter, *this, true);
    }
}

void DropButton::drawPaper(QPainter& painter) const {
    const QColor ink = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::PlaceholderText);
    if (const QRectF paper = sheet(); !paper.isNull()) {
        painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        drawSheet(painter, paper);
        drawMark(painter, paper);
    }
    painter.setPen(m_problem == Problem::None ? ink : palette().color(QPalette::Text));
    QTextOption lines(Qt::AlignHCenter);
    lines.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.drawText(QRectF(textArea()), shownWords(), lines);
}

QString DropButton::shownWords() const {
    if (m_problem == Problem::None) {
        return text();
    }
    const QSize room = textArea().size();
    const int lineCount = room.height() / fontMetrics().lineSpacing();
    // Broken at words, each line but the last may lack the width of one.
    constexpr double usedShare = 0.75;
    const int widest = qRound(room.width() * lineCount * usedShare);
    return fontMetrics().elidedText(m_words, Qt::ElideMiddle, qMax(room.width(), widest));
}

void DropButton::drawMark(QPainter& painter, const QRectF& sheet) const {
    const QRectF mark(sheet.left() + 8, sheet.top() + 8, 10, 14);
    switch (m_problem) {
        case Problem::None:
            for (int line = 0; line < 3; ++line) {
                const double y = sheet.top() + 9 + 6 * line;
                painter.drawLine(QPointF(sheet.left() + 6, y), QPointF(sheet.right() - (line == 2 ? 12 : 6), y));
            }
            return;
        case Problem::CannotBeShown:
            painter.drawLine(mark.topLeft(), mark.bottomRight());
            painter.drawLine(mark.topRight(), mark.bottomLeft());
            return;
        case Problem::NotFound:
            painter.drawText(sheet, Qt::AlignCenter, QStringLiteral("?"));
            return;
    }
}

}  // namespace kpx
