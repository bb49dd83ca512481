#pragma once

#include <QColor>
#include <QString>
#include <QStyleOption>
#include <QWidget>

class QPainter;

namespace kpx {

// What the parts of controls look like.

inline bool isOn(const QStyleOption* option, QStyle::StateFlag flag) { return option->state & flag; }

/// The text, not turned by the direction of the window around it: between Arabic words an address keeps its number in
/// front, and what is cut off has its ellipsis where it ends.
QString inItsOwnDirection(const QString& text, Qt::LayoutDirection ofWindow);

/// The main one of its group, or the one that Return presses.
bool isMainButton(const QWidget* widget, const QStyleOption* option);

QColor edgeColor(const QStyleOption* option);
QColor buttonFill(const QStyleOption* option, bool main);

void drawPushButton(const QStyleOption* option, QPainter* painter, const QWidget* widget);

/// A field that only displays lies flat.
void drawField(const QStyleOption* option, QPainter* painter, bool focus, bool displayOnly = false);

/// Square: the list that drops from a pop-up, because it is a window of its own.
void drawSquareField(const QStyleOption* option, QPainter* painter);

/// Of a check box or, round, of a radio button.
void drawIndicator(const QStyleOption* option, QPainter* painter, bool round);

/// A plain frame is a card: raised ground with a thin edge. Around a list only the edge is drawn; it shows
/// that the keyboard leads there, for a list without a current row could not.
void drawPanel(const QStyleOption* option, QPainter* painter, const QWidget* widget);

/// Of the button that closes the tab, for a language written from the left.
QRect tabButtonRect(const QStyleOptionTab& tab);
void drawTab(const QStyleOption* option, QPainter* painter);
void drawTabLabel(const QStyle* style, const QStyleOptionTab* tab, QPainter* painter);

}  // namespace kpx
