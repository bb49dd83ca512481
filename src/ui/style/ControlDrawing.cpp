#include "ui/style/ControlDrawing.h"

#include "ui/style/Colors.h"
#include "ui/style/Headings.h"
#include "ui/style/Strokes.h"

#include <QAbstractScrollArea>
#include <QPainter>

namespace kpx {

namespace {

/// Between a tab's ends and what is drawn in it.
constexpr int tabInset = 12;

}  // namespace

QString inItsOwnDirection(const QString& text, Qt::LayoutDirection ofWindow) {
    if (ofWindow != Qt::RightToLeft) {
        return text;
    }
    // Not closed again, so that an ellipsis in place of its end is taken in as well. The newer isolates would do the
    // same, but few typefaces have them, and all others would be searched for one.
    constexpr QChar leftToRightEmbedding(0x202A);
    constexpr QChar rightToLeftEmbedding(0x202B);
    return (text.isRightToLeft() ? rightToLeftEmbedding : leftToRightEmbedding) + text;
}

bool isMainButton(const QWidget* widget, const QStyleOption* option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return (widget && widget->property("accent").toBool()) ||
           (button && (button->features & QStyleOptionButton::DefaultButton));
}

QColor edgeColor(const QStyleOption* option) {
    const QColor edge = option->palette.color(QPalette::Mid);
    return isOn(option, QStyle::State_Enabled) ? edge : option->palette.color(QPalette::Midlight);
}

QColor buttonFill(const QStyleOption* option, bool main) {
    const QPalette& palette = option->palette;
    if (!isOn(option, QStyle::State_Enabled)) {
        return palette.color(QPalette::Disabled, QPalette::Button);
    }
    QColor fill = palette.color(main ? QPalette::Highlight : QPalette::Button);
    // A filled button turns away from the colour of its text, which stays as readable as before.
    const bool lightText = palette.color(QPalette::HighlightedText).lightness() > fill.lightness();
    const QColor shade = !main ? palette.color(QPalette::ButtonText) : lightText ? QColor(Qt::black) : QColor(0xFFFFFF);
    if (isOn(option, QStyle::State_Sunken)) {
        fill = mixed(fill, shade, 0.16);
    } else if (isOn(option, QStyle::State_MouseOver)) {
        fill = mixed(fill, shade, 0.07);
    }
    return fill;
}

void drawPushButton(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
    const bool main = isMainButton(widget, option) && isOn(option, QStyle::State_Enabled);
    const bool focus = isOn(option, QStyle::State_HasFocus) && isOn(option, QStyle::State_KeyboardFocusChange);
    const QColor fill = buttonFill(option, main);
    const QColor ring = main ? option->palette.color(QPalette::WindowText) : option->palette.color(QPalette::Highlight);
    drawBox(*painter, option->rect, fill, main ? fill : edgeColor(option), focus, ring);
}

void drawField(const QStyleOption* option, QPainter* painter, bool focus, bool displayOnly) {
    const QColor fill = option->palette.color(displayOnly ? QPalette::Window : QPalette::Base);
    const QColor edge = displayOnly ? option->palette.color(QPalette::Midlight) : edgeColor(option);
    drawBox(*painter, option->rect, fill, edge, focus, option->palette.color(QPalette::Highlight));
}

void drawSquareField(const QStyleOption* option, QPainter* painter) {
    painter->fillRect(option->rect, option->palette.color(QPalette::Base));
    painter->setPen(option->palette.color(QPalette::Mid));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
}

void drawIndicator(const QStyleOption* option, QPainter* painter, bool round) {
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool on = isOn(option, QStyle::State_On);
    const QPalette& palette = option->palette;
    const QColor accent = palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Highlight);
    const QColor fill = on ? accent : palette.color(QPalette::Base);
    const QColor edge = on ? accent : isOn(option, QStyle::State_MouseOver) && enabled ? accent : edgeColor(option);
    const QRectF box = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(edge, isOn(option, QStyle::State_HasFocus) ? 2 : 1));
    painter->setBrush(fill);
    if (round) {
        painter->drawEllipse(box);
        if (on) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(palette.color(QPalette::HighlightedText));
            painter->drawEllipse(box.center(), box.width() * 0.2, box.width() * 0.2);
        }
    } else {
        painter->drawRoundedRect(box, 3.5, 3.5);
    }
    painter->restore();
    if (on && !round) {
        drawCheckMark(*painter, box, palette.color(QPalette::HighlightedText));
    }
}

void drawPanel(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
    const bool card = !qobject_cast<const QAbstractScrollArea*>(widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool focus = !card && isOn(option, QStyle::State_HasFocus) && isOn(option, QStyle::State_KeyboardFocusChange);
    painter->setPen(QPen(option->palette.color(focus ? QPalette::Highlight : QPalette::Midlight), 1));
    painter->setBrush(card ? QBrush(option->palette.color(QPalette::Active, QPalette::Base)) : QBrush(Qt::NoBrush));
    const double corner = card ? 8 : 3;
    painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter->restore();
}

QRect tabButtonRect(const QStyleOptionTab& tab) {
    QRect button(QPoint(), tab.rightButtonSize);
    button.moveCenter(tab.rect.center());
    button.moveRight(tab.rect.right() - tabInset);
    return button;
}

void drawTab(const QStyleOption* option, QPainter* painter) {
    const bool selected = isOn(option, QStyle::State_Selected);
    const bool lit = selected || isOn(option, QStyle::State_HasFocus);
    const QRect bar(option->rect.left() + tabInset, option->rect.bottom() - 2, option->rect.width() - 2 * tabInset, 3);
    if (!lit && !isOn(option, QStyle::State_MouseOver)) {
        return;
    }
    painter->fillRect(bar, lit ? option->palette.color(QPalette::Highlight) : option->palette.color(QPalette::Mid));
}

void drawTabLabel(const QStyle* style, const QStyleOptionTab* tab, QPainter* painter) {
    const bool selected = isOn(tab, QStyle::State_Selected);
    painter->save();
    if (selected) {
        painter->setFont(headingFont(painter->font()));
    }
    const QPalette::ColorRole role = selected ? headingColor() : QPalette::PlaceholderText;
    const bool focus = isOn(tab, QStyle::State_HasFocus) && isOn(tab, QStyle::State_KeyboardFocusChange);
    if (focus) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(tab->palette.color(QPalette::Highlight), 1.5));
        painter->drawRoundedRect(QRectF(tab->rect).adjusted(4, 5, -4, -6), 5, 5);
    }
    painter->setPen(tab->palette.color(role));
    QRect beside = tab->rect;
    if (!tab->rightButtonSize.isEmpty()) {
        // The chosen one's is wider than the tab was made for.
        constexpr int gap = 4;
        beside.setLeft(beside.left() + tabInset);
        beside.setRight(tabButtonRect(*tab).left() - gap);
    }
    style->drawItemText(painter, QStyle::visualRect(tab->direction, tab->rect, beside),
                        Qt::AlignCenter | Qt::TextShowMnemonic, tab->palette, true, tab->text);
    painter->restore();
}

}  // namespace kpx
