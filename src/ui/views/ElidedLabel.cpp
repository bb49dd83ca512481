#include "ui/views/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace kpx {

namespace {

QString inOneLine(QString text) {
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

}  // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

QSize ElidedLabel::minimumSizeHint() const {
    const QMargins margins = contentsMargins();
    return {0, fontMetrics().lineSpacing() + 2 * margin() + margins.top() + margins.bottom()};
}

QSize ElidedLabel::sizeHint() const { return {QLabel::sizeHint().width(), minimumSizeHint().height()}; }

bool ElidedLabel::isCut() const { return fontMetrics().horizontalAdvance(inOneLine(text())) > contentsRect().width(); }

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && isCut()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(inOneLine(text()), Qt::ElideMiddle, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), QStyle::visualAlignment(layoutDirection(), alignment()), palette(),
                          isEnabled(), shown, foregroundRole());
}

}  // namespace kpx
