#pragma once

#include <QFont>
#include <QPalette>

class QLabel;
class QWidget;

namespace kpx {

// Headings are bold. In Chinese and Japanese they have the colour of what is chosen instead: small characters of many
// strokes fill up in bold, and the typeface that only a few headings need takes a twentieth of the window's start. The
// first line of an alert is bold in every language.

QFont headingFont(QFont font);
QPalette::ColorRole headingColor();

void makeHeading(QLabel& label);
/// Makes headings of those labels in the form that have the property "heading". Before the form is laid out.
void showHeadings(const QWidget& form);

}  // namespace kpx
