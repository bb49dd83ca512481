#include "ui/style/Appearance.h"

#include "ui/style/CalmStyle.h"

#include <QApplication>
#include <QToolTip>

// A static library's pictures are not there until they are asked for. The macro works in no namespace.
static void registerPictures() { Q_INIT_RESOURCE(velmora); }

namespace kpx {

void installStyle(QApplication& application) {
    registerPictures();
    application.setStyle(new CalmStyle);
}

void showAppearance(QApplication& application, const Scheme& scheme) {
    const QPalette palette = paletteOf(scheme);
    application.setPalette(palette);
    QToolTip::setPalette(palette);
}

void setToolTipDelay(QApplication& application, int milliseconds) {
    if (auto* style = qobject_cast<CalmStyle*>(application.style())) {
        style->setToolTipDelay(milliseconds);
    }
}

}  // namespace kpx
