#include "ui/views/FirstStepsView.h"

#include "ui/style/Strokes.h"

#include <QPainter>

namespace kpx {

namespace {

constexpr int discSize = 20;
constexpr int gap = 8;

}  // namespace

StepMark::StepMark(QWidget* parent) : QLabel(parent) { setIndent(discSize + gap); }

QSize StepMark::sizeHint() const { return QLabel::sizeHint().expandedTo(QSize(0, discSize + 2)); }

void StepMark::setNumber(int number) {
    m_number = number;
    update();
}

void StepMark::setDone(bool done) {
    m_done = done;
    setAccessibleName(done ? tr("Done: %1").arg(text()) : text());
    update();
}

QRectF StepMark::disc() const {
    const double left = layoutDirection() == Qt::RightToLeft ? width() - discSize - 0.5 : 0.5;
    return {left, (height() - discSize) / 2.0, discSize, discSize};
}

void StepMark::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    painter.setPen(QPen(accent, 1.5));
    painter.setBrush(m_done ? QBrush(accent) : QBrush(Qt::NoBrush));
    painter.drawEllipse(disc());
    if (m_done) {
        drawCheckMark(painter, disc(), palette().color(QPalette::HighlightedText));
        return;
    }
    QFont small = font();
    small.setPixelSize(discSize * 3 / 5);
    painter.setFont(small);
    painter.drawText(disc(), Qt::AlignCenter, QString::number(m_number));
}

void FirstStepsView::setDone(const std::vector<bool>& done) {
    const auto marks = findChildren<StepMark*>();
    for (StepMark* mark : marks) {
        const auto position = static_cast<std::size_t>(mark->number() - 1);
        mark->setDone(position < done.size() && done[position]);
    }
}

void FirstStepsView::setShown(bool shown) {
    setVisible(shown);
    if (auto* replaced = parentWidget()->findChild<QWidget*>(property("insteadOf").toString())) {
        replaced->setVisible(!shown);
    }
}

}  // namespace kpx
