#include "ui/style/Headings.h"

#include "ui/style/CalmStyle.h"

#include <QApplication>
#include <QLabel>

namespace kpx {

namespace {

bool areBold() {
    const auto* style = qobject_cast<CalmStyle*>(QApplication::style());
    return !style || style->headingsAreBold();
}

}  // namespace

QFont headingFont(QFont font) {
    font.setBold(areBold());
    return font;
}

QPalette::ColorRole headingColor() { return areBold() ? QPalette::WindowText : QPalette::Highlight; }

void makeHeading(QLabel& label) {
    label.setFont(headingFont(label.font()));
    label.setForegroundRole(headingColor());
}

void showHeadings(const QWidget& form) {
    for (QLabel* label : form.findChildren<QLabel*>()) {
        if (label->property("heading").toBool()) {
            makeHeading(*label);
        }
    }
}

}  // namespace kpx
