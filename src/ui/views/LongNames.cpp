#include "ui/views/LongNames.h"

namespace kpx {

QString withBreaks(const QString& text) {
    constexpr int longestUnbroken = 40;
    constexpr QChar zeroWidthSpace(0x200B);
    QString broken;
    int unbroken = 0;
    for (const QChar character : text) {
        unbroken = character.isSpace() ? 0 : unbroken + 1;
        if (unbroken > longestUnbroken && !character.isLowSurrogate() && !character.isMark()) {
            broken.append(zeroWidthSpace);
            unbroken = 1;
        }
        broken.append(character);
    }
    return broken;
}

}  // namespace kpx
