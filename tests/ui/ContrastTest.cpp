#include "ui/charts/ChartColors.h"
#include "ui/style/Colors.h"
#include "ui/style/ControlDrawing.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace kpx;

/// How well every text that is not greyed stands out from every ground that it is drawn on.
class ContrastTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textStandsOut_data() {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("highContrast");
        QTest::addColumn<double>("least");
        QTest::newRow("light") << false << false << 4.5;
        QTest::newRow("dark") << true << false << 4.5;
        QTest::newRow("light, high contrast") << false << true << 7.0;
        QTest::newRow("dark, high contrast") << true << true << 7.0;
    }
    void textStandsOut() {
        QFETCH(bool, dark);
        QFETCH(bool, highContrast);
        QFETCH(double, least);
        const QPalette palette = paletteOf({.dark = dark, .highContrast = highContrast});
        QCOMPARE(isDarkPalette(palette), dark);
        QCOMPARE(isHighContrastPalette(palette), highContrast);
        double worst = 21;
        for (const Pair& pair : pairs(palette)) {
            const double contrast = contrastOf(pair.text, pair.ground);
            QVERIFY2(contrast >= least, qPrintable(QString::asprintf("%s: %.2f", pair.where, contrast)));
            worst = std::min(worst, contrast);
        }
        qInfo("The least contrast: %.2f", worst);
    }

    void measuresAsTheFormulaSays() {
        QCOMPARE(contrastOf(Qt::black, Qt::white), 21.0);
        QCOMPARE(contrastOf(Qt::white, Qt::white), 1.0);
        QVERIFY(std::abs(contrastOf(QColor(0x777777), Qt::white) - 4.48) < 0.005);
    }

private:
    struct Pair {
        const char* where;
        QColor text;
        QColor ground;
    };

    /// The relative luminance of the Web's guidelines for accessibility.
    static double luminance(const QColor& color) {
        const auto part = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    }
    static double contrastOf(const QColor& one, const QColor& other) {
        const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
        return (lighter + 0.05) / (darker + 0.05);
    }

    static QColor fill(const QPalette& palette, bool main, QStyle::State state) {
        QStyleOption option;
        option.palette = palette;
        option.state = QStyle::State_Enabled | state;
        return buttonFill(&option, main);
    }

    static std::vector<Pair> pairs(const QPalette& palette) {
        using P = QPalette;
        const auto of = [&palette](P::ColorRole role) { return palette.color(P::Active, role); };
        const QColor red = warningRed(palette);
        const Inks chart = chartInks(palette);
        const QColor pressedTool = mixed(of(P::Base), of(P::Highlight), 0.18);
        std::vector<Pair> all = {
            {"a label", of(P::WindowText), of(P::Window)},
            {"a label on a card", of(P::WindowText), of(P::Base)},
            {"a coloured heading", of(P::Highlight), of(P::Window)},
            {"a coloured heading on a card", of(P::Highlight), of(P::Base)},
            {"a text that is typed or shown", of(P::Text), of(P::Base)},
            {"a text that is only shown", of(P::Text), of(P::Window)},
            {"a striped row", of(P::Text), of(P::AlternateBase)},
            {"a selected row", of(P::HighlightedText), of(P::Highlight)},
            {"a hint on a card", of(P::PlaceholderText), of(P::Base)},
            {"a hint on a stripe, the receipt's button", of(P::PlaceholderText), of(P::AlternateBase)},
            {"a hint in the window, a tab", of(P::PlaceholderText), of(P::Window)},
            {"a tool tip", of(P::ToolTipText), of(P::ToolTipBase)},
            {"a link", of(P::Link), of(P::Window)},
            {"a link on a card", of(P::Link), of(P::Base)},
            {"a tool button pressed", of(P::ButtonText), pressedTool},
            {"a due date", red, of(P::Base)},
            {"a due date on a stripe", red, of(P::AlternateBase)},
            {"a chart's text", chart.text, of(P::Base)},
            {"a chart's quiet text", chart.quietText, of(P::Base)},
            {"a chart's average", chart.average, of(P::Base)},
            {"a chart's text at the current bar", chart.text, highlightedSlot(palette)},
            {"a chart's quiet text at the current bar", chart.quietText, highlightedSlot(palette)},
        };
        for (const QStyle::State state : {QStyle::State_None, QStyle::State_MouseOver, QStyle::State_Sunken}) {
            all.push_back({"a button", of(P::ButtonText), fill(palette, false, state)});
            all.push_back({"a pop-up", of(P::Text), fill(palette, false, state)});
            all.push_back({"the main button", of(P::HighlightedText), fill(palette, true, state)});
        }
        return all;
    }
};

QTEST_MAIN(ContrastTest)
#include "ContrastTest.moc"
