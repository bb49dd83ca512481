#include "ui/views/LongNames.h"

#include <QTextBoundaryFinder>

namespace kpx {

QString withBreaks(const QString& text) {
    constexpr int longestUnbroken = 40;
    constexpr QChar zeroWidthSpace(0x200B);
    // Some languages write no blanks, and know where a line may end: not before a full stop.
    QTextBoundaryFinder lineEnds(QTextBoundaryFinder::Line, text);
    QString broken;
    int unbroken = 0;
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QChar character = text[place];
        lineEnds.setPosition(place);
        unbroken = lineEnds.isAtBoundary() ? 1 : unbroken + 1;
        if (unbroken > longestUnbroken && !character.isLowSurrogate() && !character.isMark()) {
            broken.append(zeroWidthSpace);
            unbroken = 1;
        }
        broken.append(character);
    }
    return broken;
}

}  // namespace kpx
