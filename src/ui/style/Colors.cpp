#include "ui/style/Colors.h"

namespace kpx {

namespace {

/// The few tones from which a palette is made.
struct Tones {
    QColor window, base, stripe, button, border, line, text, faint, disabled, accent, onAccent, link;
};

QPalette paletteFromTones(const Tones& tones) {
    QPalette palette;
    palette.setColor(QPalette::Window, tones.window);
    palette.setColor(QPalette::Base, tones.base);
    palette.setColor(QPalette::AlternateBase, tones.stripe);
    palette.setColor(QPalette::Button, tones.button);
    palette.setColor(QPalette::ToolTipBase, tones.button);
    // Mid draws the edges of controls, Midlight the lines that only separate.
    palette.setColor(QPalette::Mid, tones.border);
    palette.setColor(QPalette::Midlight, tones.line);
    palette.setColor(QPalette::Light, tones.base);
    palette.setColor(QPalette::Dark, tones.border.darker(125));
    palette.setColor(QPalette::Shadow, QColor(0, 0, 0));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, tones.text);
        palette.setColor(QPalette::Disabled, role, tones.disabled);
    }
    palette.setColor(QPalette::PlaceholderText, tones.faint);
    palette.setColor(QPalette::BrightText, tones.onAccent);
    palette.setColor(QPalette::Highlight, tones.accent);
    palette.setColor(QPalette::HighlightedText, tones.onAccent);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, tones.border);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, tones.disabled);
    palette.setColor(QPalette::Disabled, QPalette::Base, tones.window);
    palette.setColor(QPalette::Disabled, QPalette::Button, tones.window);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, tones.disabled);
    palette.setColor(QPalette::Link, tones.link);
    palette.setColor(QPalette::LinkVisited, tones.link);
    return palette;
}

const Tones light = {.window = QColor(0xF2F5F4),
                     .base = QColor(0xFFFFFF),
                     .stripe = QColor(0xF6F9F8),
                     .button = QColor(0xFFFFFF),
                     .border = QColor(0xB9C4C2),
                     .line = QColor(0xDDE4E2),
                     .text = QColor(0x1B2426),
                     .faint = QColor(0x5C6B6C),
                     .disabled = QColor(0x8E9B9B),
                     .accent = QColor(0x0F6F69),
                     .onAccent = QColor(0xFFFFFF),
                     .link = QColor(0x0B625D)};

const Tones dark = {.window = QColor(0x191E20),
                    .base = QColor(0x21282A),
                    .stripe = QColor(0x262E30),
                    .button = QColor(0x2C3537),
                    .border = QColor(0x536063),
                    .line = QColor(0x343E40),
                    .text = QColor(0xE6ECEB),
                    .faint = QColor(0x9DACAC),
                    .disabled = QColor(0x6C7979),
                    .accent = QColor(0x55BDB1),
                    .onAccent = QColor(0x0A1F1D),
                    .link = QColor(0x6CCBC0)};

// Of high contrast: no shades on shades, and every edge as strong as a text.
const Tones strongLight = {.window = QColor(0xFFFFFF),
                           .base = QColor(0xFFFFFF),
                           .stripe = QColor(0xF2F2F2),
                           .button = QColor(0xFFFFFF),
                           .border = QColor(Qt::black),
                           .line = QColor(0x4D4D4D),
                           .text = QColor(Qt::black),
                           .faint = QColor(0x303030),
                           .disabled = QColor(0x6B6B6B),
                           .accent = QColor(0x005C56),
                           .onAccent = QColor(0xFFFFFF),
                           .link = QColor(0x005C56)};

const Tones strongDark = {.window = QColor(Qt::black),
                          .base = QColor(Qt::black),
                          .stripe = QColor(0x161616),
                          .button = QColor(Qt::black),
                          .border = QColor(0xFFFFFF),
                          .line = QColor(0xB0B0B0),
                          .text = QColor(0xFFFFFF),
                          .faint = QColor(0xD8D8D8),
                          .disabled = QColor(0x969696),
                          .accent = QColor(0x82EADD),
                          .onAccent = QColor(Qt::black),
                          .link = QColor(0x82EADD)};

}  // namespace

QPalette paletteOf(const Scheme& scheme) {
    if (scheme.highContrast) {
        return paletteFromTones(scheme.dark ? strongDark : strongLight);
    }
    return paletteFromTones(scheme.dark ? dark : light);
}

bool isDarkPalette(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

bool isHighContrastPalette(const QPalette& palette) {
    return palette.color(QPalette::Mid) == palette.color(QPalette::WindowText);
}

QColor warningRed(const QPalette& palette) {
    if (isHighContrastPalette(palette)) {
        return isDarkPalette(palette) ? QColor(0xFFB4AB) : QColor(0x8C0009);
    }
    return isDarkPalette(palette) ? QColor(0xFF8F85) : QColor(0xB3261E);
}

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto part = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return QColor(part(first.red(), second.red()), part(first.green(), second.green()),
                  part(first.blue(), second.blue()));
}

}  // namespace kpx
