#include "ui/style/Appearance.h"

#include "ui/style/CalmStyle.h"

#include <QApplication>
#include <QFontInfo>
#include <QToolTip>

// A static library's pictures are not there until they are asked for. The macro works in no namespace.
static void registerPictures() { Q_INIT_RESOURCE(velmora); }

namespace kpx {

namespace {

/// Where a desktop names no font the toolkit's is called "Sans Serif", which it would look up anew for each script of
/// each text. It finds the same when it is called by its own name.
void callFontByItsName() {
    QFont font = QApplication::font();
    if (const QString name = QFontInfo(font).family(); name != font.family()) {
        font.setFamily(name);
        QApplication::setFont(font);
    }
}

bool isWrittenInIdeographs(std::string_view languageCode) { return languageCode == "ja" || languageCode == "zh"; }

}  // namespace

void installStyle(QApplication& application, std::string_view languageCode) {
    registerPictures();
    callFontByItsName();
    application.setStyle(new CalmStyle(!isWrittenInIdeographs(languageCode)));
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
