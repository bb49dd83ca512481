#pragma once

#include "drawing/Document.h"

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <array>
#include <map>
#include <string>
#include <tuple>
#include <vector>

class QPainter;

namespace kpx {

/// The colour of each ink on one ground.
struct Inks {
    QColor text, quietText, grid, bar, average;
    const QColor& operator[](Ink ink) const;
};

/// What stands in for the named fonts.
struct Typeface {
    QString family;
    /// Of a letter's own width, what it takes, in percent.
    double letterSpacing = 100;
};

/// DejaVu Sans, which every desktop can install. It runs wider than the named fonts, and what follows a text stands at
/// a fixed place, so its letters are drawn together.
Typeface paperTypeface();

/// Black on paper; bars in a light blue that leaves black and the average's brown readable upon it.
Inks paperInks();

struct CharacterPlace {
    double begin = 0;
    double end = 0;
};

/// Puts drawing operations on paper, screen or PDF: the one painter for all of them.
///
/// The named fonts have stand-ins: for paper one of nearly their look, elsewhere the desktop's own. They are laid out
/// without hinting, so a line breaks nowhere and is as wide on the screen as in print.
///
/// A text wider than its room is set narrower: by the font's own stretch down to 62 %, beyond that by scaling
/// its glyphs across, down to 40 %; what is longer still ends in an ellipsis. One that fits is drawn as it is.
class DrawingPainter {
public:
    /// Painters handed to paint() count in this many units per inch, tenths of a point: fine enough for the
    /// places to come out exactly, and whole for every font size used.
    static constexpr int unitsPerInch = 720;
    static constexpr double unitsPerPoint = unitsPerInch / 72.0;

    /// `height` in points: operations count from the lower left corner, so it decides where things stand.
    explicit DrawingPainter(double height, Inks inks = paperInks(), Typeface typeface = paperTypeface());

    /// REQUIRES: the painter's origin is the upper left corner, its unit a tenth of a point.
    void paint(QPainter& painter, const std::vector<DrawingOperation>& operations);

    /// Where the text comes to stand, in points, counted from the upper left corner downward.
    QRectF placeOf(const DrawText& text);
    /// Where each of its characters begins and ends, in points from its left end. One that is written from the
    /// right begins right of where it ends; those that an ellipsis stands for are at the end of the text.
    std::vector<CharacterPlace> charactersOf(const DrawText& text);

    /// The text as it is drawn: a line stays a line, so whatever would break it becomes a blank.
    static QString oneLine(const DrawText& text);

private:
    /// A font, and what its plain letters take in it, in units: adding them up is far faster than laying out.
    struct Face {
        QFont font;
        double tabDistance = 0;
        std::array<float, 128> advances{};

        /// Of a text without tabs.
        double widthOf(const QString& part) const;
        /// `lastPart` is as in DrawText.
        double widthOfLine(const QString& line, double lastPart) const;
        /// REQUIRES: the painter has its font.
        void draw(QPainter& painter, QPointF start, const QString& line, double lastPart) const;
        /// Where what follows the last tab begins at least.
        double placeOfLast(double lastPart) const;
    };
    void paintText(QPainter& painter, const DrawText& text);
    void paintNarrowed(QPainter& painter, const DrawText& text, const QString& line, bool needsShaping, double room);
    void paintLine(QPainter& painter, const DrawLine& line) const;
    Face& face(const DrawText& text, bool needsShaping, int stretch);
    double fromTop(double y) const { return (m_height - y) * unitsPerPoint; }

    double m_height;
    Inks m_inks;
    Typeface m_typeface;
    std::map<std::tuple<std::string, double, bool, bool, int>, Face> m_faces;
    /// The one that the painter at work has; null where that is not known.
    const Face* m_fontInUse = nullptr;
};

}  // namespace kpx
