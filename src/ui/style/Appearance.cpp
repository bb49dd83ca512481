#include "ui/style/Appearance.h"

#include "ui/style/CalmStyle.h"
#include "ui/style/Colors.h"

#include <QApplication>
#include <QToolTip>

namespace kpx {

void installStyle(QApplication& application) { application.setStyle(new CalmStyle); }

void showAppearance(QApplication& application, bool dark) {
    const QPalette palette = dark ? darkPalette() : lightPalette();
    application.setPalette(palette);
    QToolTip::setPalette(palette);
}

}  // namespace kpx
