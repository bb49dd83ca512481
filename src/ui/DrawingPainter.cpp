#include "ui/DrawingPainter.h"

#include "ui/Conversions.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace kpx {

namespace {

constexpr double tabStopDistance = 28;
constexpr int wholeStretch = 100;
constexpr int narrowestStretch = 62;
/// Of its own width, what a text keeps at least.
constexpr double narrowestShare = 0.40;

/// Accents that are characters of their own must be put over their letters, and the letters of Arabic and its like
/// joined.
bool mustBeShaped(const QString& text) {
    constexpr char16_t firstMark = 0x0300;
    return std::ranges::any_of(text, [](QChar character) {
        return character.unicode() >= firstMark &&
               (character.isMark() || character.isSurrogate() || character.joiningType() != QChar::Joining_None);
    });
}

/// Calls `place` for each part of the line between tabs, with its offset from the start; answers the line's width.
/// `measure` answers a part's width, and the last part begins at `last` at least.
template <typename Measure, typename Place>
double eachPart(const QString& line, double tabDistance, double last, Measure measure, Place place) {
    if (!line.contains(QLatin1Char('\t'))) {
        place(0.0, line);
        return measure(line);
    }
    double offset = 0;
    double width = 0;
    const QStringList parts = line.split(QLatin1Char('\t'));
    for (qsizetype index = 0; index < parts.size(); ++index) {
        if (index + 1 == parts.size()) {
            offset = std::max(offset, last);
        }
        place(offset, parts[index]);
        width = offset + measure(parts[index]);
        offset = (std::floor(width / tabDistance) + 1) * tabDistance;
    }
    return width;
}

/// The characters of a part between tabs, in the order of reading, whichever way they are written. Each reaches to the
/// one beside it; those that share a glyph share its place.
void appendCharacters(const QString& part, const QFont& font, double offset, std::vector<CharacterPlace>& places) {
    QTextLayout layout(part, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (!line.isValid()) {
        return;
    }
    line.setLineWidth(QWIDGETSIZE_MAX);
    layout.endLayout();
    struct Seen {
        double left = 0;
        bool fromRight = false;
    };
    std::vector<Seen> characters;
    for (int index = 0; index < part.size(); ++index) {
        const QList<QGlyphRun> glyphs = layout.glyphRuns(index, 1);
        const bool isOneOfItsOwn = layout.isValidCursorPosition(index) && !glyphs.isEmpty();
        characters.push_back(isOneOfItsOwn        ? Seen{glyphs[0].positions().value(0).x(), glyphs[0].isRightToLeft()}
                             : characters.empty() ? Seen{}
                                                  : characters.back());
    }
    std::vector<double> ends{line.naturalTextWidth()};
    std::ranges::transform(characters, std::back_inserter(ends), &Seen::left);
    std::ranges::sort(ends);
    for (const Seen& seen : characters) {
        const auto next = std::ranges::upper_bound(ends, seen.left);
        const double right = next == ends.end() ? seen.left : *next;
        places.push_back(
            {offset + (seen.fromRight ? right : seen.left), offset + (seen.fromRight ? seen.left : right)});
    }
}

/// Where a text begins that is so wide.
double startOf(const DrawText& text, double width) {
    const double x = text.x * DrawingPainter::unitsPerPoint;
    switch (text.alignment) {
        case Alignment::Center:
            return x - width / 2;
        case Alignment::Right:
            return x - width;
        case Alignment::Left:
            break;
    }
    return x;
}

}  // namespace

const QColor& Inks::operator[](Ink ink) const {
    switch (ink) {
        case Ink::QuietText:
            return quietText;
        case Ink::Grid:
            return grid;
        case Ink::Bar:
            return bar;
        case Ink::Average:
            return average;
        case Ink::Text:
            break;
    }
    return text;
}

Inks paperInks() {
    return {.text = Qt::black,
            .quietText = QColor(0x404040),
            .grid = QColor(0xC8C8C8),
            .bar = QColor(0x8FB4D8),
            .average = QColor(0x8A3A00)};
}

Typeface paperTypeface() { return {.family = QStringLiteral("DejaVu Sans"), .letterSpacing = 96}; }

DrawingPainter::DrawingPainter(double height, Inks inks, Typeface typeface)
    : m_height(height), m_inks(std::move(inks)), m_typeface(std::move(typeface)) {}

void DrawingPainter::paint(QPainter& painter, const std::vector<DrawingOperation>& operations) {
    m_fontInUse = nullptr;
    // Each text as it is written, whatever the window: an address in an Arabic report keeps its number in front.
    const Qt::LayoutDirection before = painter.layoutDirection();
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    for (const DrawingOperation& operation : operations) {
        if (const auto* text = std::get_if<DrawText>(&operation)) {
            paintText(painter, *text);
        } else if (const auto* line = std::get_if<DrawLine>(&operation)) {
            paintLine(painter, *line);
        }
    }
    painter.setLayoutDirection(before);
}

QString DrawingPainter::oneLine(const DrawText& text) {
    QString line = qstring(text.text);
    std::ranges::replace_if(
        line,
        [](QChar character) {
            return character != QLatin1Char('\t') &&
                   (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
                    character == QChar::ParagraphSeparator);
        },
        QLatin1Char(' '));
    return line;
}

double DrawingPainter::Face::widthOf(const QString& part) const {
    double width = 0;
    for (const QChar character : part) {
        if (character.unicode() >= advances.size()) {
            return QFontMetricsF(font).horizontalAdvance(part);
        }
        width += advances[character.unicode()];
    }
    return width;
}

double DrawingPainter::Face::placeOfLast(double lastPart) const { return lastPart / tabStopDistance * tabDistance; }

double DrawingPainter::Face::widthOfLine(const QString& line, double lastPart) const {
    return eachPart(
        line, tabDistance, placeOfLast(lastPart), [this](const QString& part) { return widthOf(part); },
        [](double, const QString&) {});
}

void DrawingPainter::Face::draw(QPainter& painter, QPointF start, const QString& line, double lastPart) const {
    if (!line.contains(QLatin1Char('\t'))) {
        painter.drawText(start, line);
        return;
    }
    eachPart(
        line, tabDistance, placeOfLast(lastPart), [this](const QString& part) { return widthOf(part); },
        [&](double offset, const QString& part) { painter.drawText(start + QPointF(offset, 0), part); });
}

QRectF DrawingPainter::placeOf(const DrawText& text) {
    const QString line = oneLine(text);
    const double natural =
        face(text, mustBeShaped(line), wholeStretch).widthOfLine(line, text.lastPart) / unitsPerPoint;
    const double width = text.room > 0 ? std::min(natural, text.room) : natural;
    const double left = startOf(text, width * unitsPerPoint) / unitsPerPoint;
    const double ascent = 0.93 * text.size;
    const double descent = 0.24 * text.size;
    return {left, m_height - text.y - ascent, width, ascent + descent};
}

std::vector<CharacterPlace> DrawingPainter::charactersOf(const DrawText& text) {
    const QString line = oneLine(text);
    const Face& drawn = face(text, mustBeShaped(line), wholeStretch);
    std::vector<CharacterPlace> places;
    places.reserve(static_cast<std::size_t>(line.size()));
    const double whole = eachPart(
        line, drawn.tabDistance, drawn.placeOfLast(text.lastPart),
        [&](const QString& part) { return drawn.widthOf(part); },
        [&](double offset, const QString& part) {
            if (offset > 0) {
                places.push_back({offset, offset});  // the tab before the part
            }
            appendCharacters(part, drawn.font, offset, places);
        });
    const double shown = placeOf(text).width() * unitsPerPoint;
    const double share = whole > 0 ? std::clamp(shown / whole, narrowestShare, 1.0) : 1;
    // What an ellipsis stands for is the end of the text, at the left where it is written from the right.
    const double hidden = line.isRightToLeft() ? std::max(whole * share - shown, 0.0) : 0;
    const auto placed = [&](double x) { return std::clamp(x * share - hidden, 0.0, shown) / unitsPerPoint; };
    for (CharacterPlace& place : places) {
        place = {placed(place.begin), placed(place.end)};
    }
    return places;
}

void DrawingPainter::paintText(QPainter& painter, const DrawText& text) {
    const QString line = oneLine(text);
    const bool needsShaping = mustBeShaped(line);
    const Face& whole = face(text, needsShaping, wholeStretch);
    const double room = text.room * unitsPerPoint;
    const double width = room > 0 || text.alignment != Alignment::Left ? whole.widthOfLine(line, text.lastPart) : 0;
    painter.setPen(m_inks[text.ink]);
    if (room > 0 && width > room) {
        paintNarrowed(painter, text, line, needsShaping, room);
        return;
    }
    // A painter looks the font up anew for each text when it is told the same one again.
    if (m_fontInUse != &whole) {
        painter.setFont(whole.font);
        m_fontInUse = &whole;
    }
    whole.draw(painter, {startOf(text, width), fromTop(text.y)}, line, text.lastPart);
}

void DrawingPainter::paintNarrowed(QPainter& painter, const DrawText& text, const QString& line, bool needsShaping,
                                   double room) {
    const auto widthAt = [&](int stretch) {
        return face(text, needsShaping, stretch).widthOfLine(line, text.lastPart);
    };
    // PDFs round the advances of glyphs, which adds up over a text.
    room -= 0.3 * unitsPerPoint;
    int stretch =
        std::clamp(static_cast<int>(room / widthAt(wholeStretch) * wholeStretch), narrowestStretch, wholeStretch - 1);
    // A font may have a narrow face of its own, whose widths are not just in proportion.
    while (stretch > narrowestStretch && widthAt(stretch) > room) {
        --stretch;
    }
    const Face& narrow = face(text, needsShaping, stretch);
    QString fitting = line;
    double width = widthAt(stretch);
    const double least = narrowestShare * wholeStretch / stretch;
    const double share = std::clamp(room / width, least, 1.0);
    if (width * share > room * 1.001) {
        fitting.replace(QLatin1Char('\t'), QLatin1Char(' '));
        fitting = QFontMetricsF(narrow.font).elidedText(fitting, Qt::ElideRight, room / share);
        width = narrow.widthOfLine(fitting, text.lastPart);
    }
    painter.save();
    painter.setFont(narrow.font);
    painter.translate(startOf(text, width * share), fromTop(text.y));
    if (share < 1) {
        painter.scale(share, 1);
    }
    narrow.draw(painter, {0, 0}, fitting, text.lastPart);
    painter.restore();
}

void DrawingPainter::paintLine(QPainter& painter, const DrawLine& line) const {
    painter.setPen(QPen(m_inks[line.ink], line.width * unitsPerPoint, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(line.x1 * unitsPerPoint, fromTop(line.y1)),
                     QPointF(line.x2 * unitsPerPoint, fromTop(line.y2)));
}

DrawingPainter::Face& DrawingPainter::face(const DrawText& text, bool needsShaping, int stretch) {
    const auto [place, isNew] = m_faces.try_emplace({text.font, text.size, text.underline, needsShaping, stretch});
    Face& result = place->second;
    if (!isNew) {
        return result;
    }
    QFont& font = result.font;
    font.setFamily(m_typeface.family);
    font.setStyleHint(QFont::SansSerif);
    font.setBold(text.font.ends_with("-Bold"));
    font.setUnderline(text.underline);
    font.setPixelSize(static_cast<int>(std::lround(text.size * unitsPerPoint)));
    font.setHintingPreference(QFont::PreferNoHinting);
    if (stretch != wholeStretch) {
        font.setStretch(stretch);
    }
    font.setLetterSpacing(QFont::PercentageSpacing, m_typeface.letterSpacing);
    // No ligatures: "office" must be found by a search for its letters. Where shaping is needed, the letter
    // spacing of paper keeps them away.
    if (!needsShaping) {
        font.setStyleStrategy(QFont::PreferNoShaping);
    }
    result.tabDistance = tabStopDistance * unitsPerPoint * stretch / wholeStretch;
    const QFontMetricsF metrics(font);
    for (std::size_t letter = 0; letter < result.advances.size(); ++letter) {
        // A single letter is measured without the letter spacing.
        const double advance = metrics.horizontalAdvance(QChar(static_cast<ushort>(letter)));
        result.advances[letter] = static_cast<float>(advance * m_typeface.letterSpacing / 100);
    }
    return result;
}

}  // namespace kpx
