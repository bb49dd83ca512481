#include "ui/ReportPainter.h"

#include "ui/Conversions.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kpx {

namespace {

constexpr double letterSpacingPercent = 96;
constexpr double tabStopDistance = 28 * ReportPainter::unitsPerPoint;

/// A line stays a line: whatever would break it becomes a blank.
QString oneLine(const std::string& text) {
    QString line = qstring(text);
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

/// Accents that are characters of their own must be put over their letters.
bool hasMarks(const QString& text) {
    return std::ranges::any_of(text, [](QChar character) { return character.isMark() || character.isSurrogate(); });
}

}  // namespace

FontMetrics ReportPainter::metrics(double size) {
    constexpr double unitsPerEm = 2048;
    return {1901 / unitsPerEm * size, 483 / unitsPerEm * size};
}

void ReportPainter::paint(QPainter& painter, const Page& page) {
    for (const DrawingOperation& operation : page.operations) {
        if (const auto* text = std::get_if<DrawText>(&operation)) {
            paintText(painter, *text);
        } else if (const auto* line = std::get_if<DrawLine>(&operation)) {
            paintLine(painter, *line);
        }
    }
}

void ReportPainter::paintText(QPainter& painter, const DrawText& text) {
    const QString line = oneLine(text.text);
    const QFont& lineFont = font(text, hasMarks(line));
    painter.setFont(lineFont);
    painter.setPen(Qt::black);
    const double start = text.x * unitsPerPoint;
    const double baseline = fromTop(text.y);
    if (!line.contains(QLatin1Char('\t'))) {
        painter.drawText(QPointF(start, baseline), line);
        return;
    }
    const QFontMetricsF metrics(lineFont);
    double offset = 0;
    for (const QString& part : line.split(QLatin1Char('\t'))) {
        painter.drawText(QPointF(start + offset, baseline), part);
        offset += metrics.horizontalAdvance(part);
        offset = (std::floor(offset / tabStopDistance) + 1) * tabStopDistance;
    }
}

void ReportPainter::paintLine(QPainter& painter, const DrawLine& line) {
    painter.setPen(QPen(Qt::black, line.width * unitsPerPoint, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(line.x1 * unitsPerPoint, fromTop(line.y1)),
                     QPointF(line.x2 * unitsPerPoint, fromTop(line.y2)));
}

const QFont& ReportPainter::font(const DrawText& text, bool needsShaping) {
    const auto [place, isNew] = m_fonts.try_emplace({text.font, text.size, text.underline, needsShaping});
    QFont& result = place->second;
    if (!isNew) {
        return result;
    }
    result.setFamily(QStringLiteral("DejaVu Sans"));
    result.setStyleHint(QFont::SansSerif);
    result.setBold(text.font.ends_with("-Bold"));
    result.setUnderline(text.underline);
    result.setPixelSize(static_cast<int>(std::lround(text.size * unitsPerPoint)));
    result.setHintingPreference(QFont::PreferNoHinting);
    // The stand-in runs wider than the named font, and what follows a text stands at a fixed place.
    result.setLetterSpacing(QFont::PercentageSpacing, letterSpacingPercent);
    // No ligatures: "office" must be found by a search for its letters. Scripts that cannot be written
    // without shaping are shaped all the same; where marks need it, the letter spacing keeps them away.
    if (!needsShaping) {
        result.setStyleStrategy(QFont::PreferNoShaping);
    }
    return result;
}

}  // namespace kpx
