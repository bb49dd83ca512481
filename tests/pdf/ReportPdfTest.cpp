#include "tests/pdf/ExampleReports.h"
#include "tests/pdf/PdfReading.h"
#include "ui/Conversions.h"
#include "ui/ReportOutput.h"
#include "ui/ReportPainter.h"

#include <gmock/gmock.h>

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHashSeed>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <functional>

namespace kpx::test {
namespace {

constexpr double tolerance = 0.2;

QPageLayout letter() { return QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Landscape, QMarginsF()); }

/// The reader gives the upper edge of the letters' ascent.
double ascent(double size) { return ReportPainter::metrics(size).ascent; }

Document oneLine(const std::string& text) {
    return {4, "Title", {{{DrawText{text, "LucidaGrande", 8, false, 20, 500}}}}};
}

std::vector<std::string> wordsOf(const Document& document) {
    std::vector<std::string> words;
    const auto pages = wordsOfPdf(reportPdf(document, letter(), QStringLiteral("en")));
    for (const FoundWord& word : pages.at(0).words) {
        words.push_back(utf8(word.text));
    }
    return words;
}

bool holds(const FoundPage& page, const QString& word, double left, double baseline, double size) {
    return std::ranges::any_of(page.words, [&](const FoundWord& found) {
        return found.text == word && std::abs(found.left - left) < tolerance &&
               std::abs(page.height - (found.top + ascent(size)) - baseline) < tolerance;
    });
}

TEST(DrawingPainter, ATextKeepsItsOwnDirectionInAWindowReadFromTheRight) {
    const auto drawn = [](const std::string& text, Qt::LayoutDirection window) {
        QImage image(1200, 200, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setLayoutDirection(window);
        DrawingPainter(20).paint(painter, {DrawText{text, "LucidaGrande", 8, false, 2, 10}});
        EXPECT_EQ(painter.layoutDirection(), window);
        return image;
    };
    EXPECT_EQ(drawn("7 Elm Avenue", Qt::RightToLeft), drawn("7 Elm Avenue", Qt::LeftToRight));
    EXPECT_NE(drawn("7 Elm Avenue", Qt::RightToLeft), drawn("Elm Avenue 7", Qt::RightToLeft));
}

TEST(ReportPdf, EveryTextStandsWhereTheLayoutPutIt) {
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 99}) {
        SCOPED_TRACE(type);
        const Document document = exampleReport(type, 46);
        const auto pages = wordsOfPdf(reportPdf(document, letter(), QStringLiteral("en-US")));
        ASSERT_EQ(pages.size(), 2U);
        ASSERT_EQ(document.pages.size(), 2U);
        std::size_t checked = 0;
        for (std::size_t index = 0; index < pages.size(); ++index) {
            EXPECT_EQ(pages[index].width, 792);
            EXPECT_EQ(pages[index].height, 612);
            for (const DrawingOperation& operation : document.pages[index].operations) {
                const auto* text = std::get_if<DrawText>(&operation);
                if (!text || text->text.empty()) {
                    continue;
                }
                const QString firstWord = qstring(text->text).split(QRegularExpression(QStringLiteral("\\s")))[0];
                EXPECT_TRUE(holds(pages[index], firstWord, text->x, text->y, text->size))
                    << text->text << " at " << text->x << ", " << text->y;
                ++checked;
            }
        }
        EXPECT_GT(checked, 46U);
    }
}

TEST(ReportPdf, TabsStopEveryTwentyEightPoints) {
    struct Row {
        const char* text;
        std::vector<double> lefts;
    };
    // A digit is just under five points wide: five of them end before the first stop, six after it.
    const std::vector<Row> rows = {{"1\t2", {20, 48}},   {"12345\t2", {20, 48}},           {"123456\t2", {20, 76}},
                                   {"1\t\t2", {20, 76}}, {"123456789012\t\t2", {20, 132}}, {"1\t2\t3", {20, 48, 76}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto pages = wordsOfPdf(reportPdf(oneLine(row.text), letter(), QStringLiteral("en")));
        ASSERT_EQ(pages[0].words.size(), row.lefts.size());
        for (std::size_t index = 0; index < row.lefts.size(); ++index) {
            EXPECT_NEAR(pages[0].words[index].left, row.lefts[index], tolerance);
        }
    }
}

TEST(ReportPdf, LettersAreFoundAsTheyWereWritten) {
    for (const char* text : {"office", "Fflewddur", "Zoë", "Nguyễn", "Zoe\u0308-office", "Łódź", "Иванов", "Ωμέγα"}) {
        SCOPED_TRACE(text);
        const auto words = wordsOf(oneLine(text));
        ASSERT_EQ(words.size(), 1U);
        EXPECT_EQ(qstring(words[0]).normalized(QString::NormalizationForm_C),
                  qstring(text).normalized(QString::NormalizationForm_C));
    }
}

TEST(ReportPdf, LettersThatJoinAreJoined) {
    struct Row {
        const char* what;
        const char* text;
        bool isNarrowerJoined;
    };
    const std::vector<Row> rows = {{"Arabic", "صيدلية السلام", true},
                                   {"Arabic in Latin", "Main Street (صيدلية السلام) 12", true},
                                   {"Hebrew", "בית המרקחת", false},
                                   {"Latin", "The Office, Main Street 12", false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        QFont font(paperTypeface().family);
        font.setPixelSize(80);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setLetterSpacing(QFont::PercentageSpacing, paperTypeface().letterSpacing);
        const double joined = QFontMetricsF(font).horizontalAdvance(qstring(row.text));
        font.setStyleStrategy(QFont::PreferNoShaping);
        const double apart = QFontMetricsF(font).horizontalAdvance(qstring(row.text));
        EXPECT_EQ(joined < 0.95 * apart, row.isNarrowerJoined);
        const DrawText drawn{.text = row.text, .font = "LucidaGrande", .size = 8, .x = 20, .y = 500};
        EXPECT_NEAR(DrawingPainter(612).placeOf(drawn).width(),
                    (row.isNarrowerJoined ? joined : apart) / DrawingPainter::unitsPerPoint, 0.05);
    }
}

TEST(ReportPdf, PutsWhatFollowsTheLastTabInOneLine) {
    const auto widthOf = [](const char* text, double lastPart) {
        return DrawingPainter(612)
            .placeOf({.text = text, .font = "LucidaGrande", .size = 8, .x = 20, .y = 500, .lastPart = lastPart})
            .width();
    };
    const double ofShort = widthOf("İlk\t\t5", 84);
    EXPECT_GT(ofShort, 84);
    EXPECT_DOUBLE_EQ(widthOf("Reposição\t\t5", 84), ofShort);
    EXPECT_GT(widthOf("Reposição\t\t5", 0), widthOf("İlk\t\t5", 0) + 27);
    EXPECT_GT(widthOf("A word that is too long for it\t\t5", 84), 112);
}

TEST(ReportPdf, ALineStaysALine) {
    const auto pages = wordsOfPdf(reportPdf(oneLine("one\ntwo\r\nthree"), letter(), QStringLiteral("en")));
    ASSERT_EQ(pages[0].words.size(), 3U);
    EXPECT_EQ(pages[0].words[0].top, pages[0].words[2].top);
}

TEST(ReportPdf, TitleLanguageAndFonts) {
    const QByteArray pdf = reportPdf(exampleReport(4, 3), letter(), QStringLiteral("de-AT"));
    const QString facts = askAboutPdf(QStringLiteral("pdfinfo"), {}, pdf);
    EXPECT_THAT(utf8(facts), testing::ContainsRegex("Title: +Patient List\n"));
    EXPECT_THAT(utf8(facts), testing::ContainsRegex("Pages: +1\n"));
    EXPECT_THAT(utf8(facts), testing::ContainsRegex("Page size: +792 x 612 pts"));
    EXPECT_THAT(utf8(facts), testing::Not(testing::HasSubstr("rror")));
    // The catalog that counts is the last one.
    const QByteArray catalog = pdf.mid(pdf.lastIndexOf("/Type /Catalog") - 200);
    EXPECT_TRUE(catalog.contains("/Lang (de-AT)"));
    EXPECT_TRUE(catalog.contains("/DisplayDocTitle true"));
    const QString fonts = askAboutPdf(QStringLiteral("pdffonts"), {}, pdf);
    EXPECT_THAT(utf8(fonts), testing::ContainsRegex("DejaVuSans .* yes +(yes|no) +yes"));
    EXPECT_THAT(utf8(fonts), testing::ContainsRegex("DejaVuSans-Bold .* yes +(yes|no) +yes"));
}

TEST(ReportPdf, ABlankPageForNoRecords) {
    const QByteArray pdf = reportPdf(exampleReport(6, 0), letter(), QStringLiteral("en"));
    EXPECT_THAT(utf8(askAboutPdf(QStringLiteral("pdfinfo"), {}, pdf)), testing::ContainsRegex("Pages: +1\n"));
    EXPECT_EQ(askAboutPdf(QStringLiteral("pdftotext"), {}, pdf).trimmed(), QString());
}

TEST(ReportPdf, PlacesCountFromTheLowerEdgeOfAnyPaper) {
    const QPageLayout a4(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF());
    const auto pages = wordsOfPdf(reportPdf(oneLine("here"), a4, QStringLiteral("en")));
    EXPECT_NEAR(pages[0].height, 595, 0.5);
    EXPECT_TRUE(holds(pages[0], QStringLiteral("here"), 20, 500, 8));
}

/// The report with each text of its rows replaced.
Document withTexts(Document report, const std::function<std::string(const DrawText&)>& text) {
    for (Page& page : report.pages) {
        for (DrawingOperation& operation : page.operations) {
            if (auto* drawn = std::get_if<DrawText>(&operation); drawn && drawn->y < 550) {
                drawn->text = text(*drawn);
            }
        }
    }
    return report;
}

/// How many words stand upon another.
int overprinted(const FoundPage& page) {
    int count = 0;
    for (const FoundWord& word : page.words) {
        count += std::ranges::any_of(page.words, [&](const FoundWord& other) {
            const double across = std::min(word.right, other.right) - std::max(word.left, other.left);
            const double down = std::min(word.bottom, other.bottom) - std::max(word.top, other.top);
            // Letters written from the right are words of their own to the reader, and touch.
            return &other != &word && across > 0.5 && down > 4;
        });
    }
    return count;
}

TEST(ReportPdf, NoWordIsPrintedUponAnother) {
    const std::vector<std::string> names = {
        "CVS Pharmacy #4417, Main St",
        "Maximiliane von Hohenfels-Schillingsfürst",
        "Dr. Bartholomew Featherstonehaugh-Cholmondeley III, Department of Internal Medicine",
        std::string(300, 'W'),
        "東京都千代田区丸の内一丁目九番一号 中央薬局",
        "Аптека на Большой Никитской улице, дом двенадцать",
        "Zoe\u0308 Mu\u0308ller-Lu\u0308denscheidt, Ko\u0308nigsstra\u00DFe",
        "صيدلية الشفاء المركزية، شارع الملك عبد العزيز ٤٤١٧",
        "בית המרקחת המרכזי 4417, רחוב הרצל (Main Street), תל אביב",
        "above\nand below\twith a tab, and \u202Eturned round\u202C again\r\n",
        "ร้านขายยาใจกลางเมืองกรุงเทพมหานคร สาขาที่สี่พันสี่ร้อยสิบเจ็ด",
        "👩‍⚕️👨‍👩‍👧‍👦 "
        "💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊💊",
    };
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 99}) {
        SCOPED_TRACE(type);
        std::size_t next = 0;
        const Document report =
            withTexts(exampleReport(type, 46), [&](const DrawText&) { return names[next++ % names.size()]; });
        for (const FoundPage& page : wordsOfPdf(reportPdf(report, letter(), QStringLiteral("en")))) {
            EXPECT_EQ(overprinted(page), 0);
            for (const FoundWord& word : page.words) {
                EXPECT_LE(word.right, 788.1) << utf8(word.text);
            }
        }
    }
}

TEST(ReportPdf, AWideLabelOfTheDateStopsBeforeIt) {
    Document report = exampleReport(4, 1);
    std::vector<DrawingOperation>& operations = report.pages.front().operations;
    auto& label = std::get<DrawText>(operations[0]);
    const auto date = std::get<DrawText>(operations[1]);
    ASSERT_EQ(label.text, "Today's Date:");
    label.text = "WWWWWWWWWWWW:";  // as many letters, and so the same place
    operations.erase(operations.begin() + 1);
    const FoundWord word = wordsOfPdf(reportPdf(report, letter(), QStringLiteral("en"))).front().words.front();
    EXPECT_EQ(word.text, QStringLiteral("WWWWWWWWWWWW:"));
    EXPECT_LE(word.right, date.x + 0.1);
    EXPECT_GT(word.right, date.x - 5);
}

TEST(ReportPdf, LongTextsEndInAnEllipsisAndLessLongOnesAreWhole) {
    struct Row {
        std::size_t letters;
        bool isWhole;
    };
    // In 76 points: about 16 letters fit as they are, 26 at the narrowest stretch, 40 at the narrowest of all.
    for (const Row& row : std::vector<Row>{{10, true}, {20, true}, {30, true}, {36, true}, {60, false}, {400, false}}) {
        SCOPED_TRACE(row.letters);
        Document document = oneLine(std::string(row.letters, 'a'));
        std::get<DrawText>(document.pages[0].operations[0]).room = 76;
        const auto pages = wordsOfPdf(reportPdf(document, letter(), QStringLiteral("en")));
        ASSERT_EQ(pages[0].words.size(), 1U);
        const FoundWord& word = pages[0].words[0];
        EXPECT_EQ(word.text.size() == static_cast<qsizetype>(row.letters), row.isWhole) << utf8(word.text);
        EXPECT_EQ(word.text.endsWith(QChar(0x2026)), !row.isWhole);
        EXPECT_NEAR(word.left, 20, tolerance);
        EXPECT_LE(word.right, 96.1);
        if (row.letters > 20) {
            EXPECT_GT(word.right, 80);
        }
    }
}

TEST(ReportPdf, WhatFitsIsDrawnAsIfThereWereNoColumns) {
    // What differs from one writing to the next whatever is drawn.
    const auto drawn = [](const Document& document) {
        static const QRegularExpression changing(
            QStringLiteral(R"(/CreationDate[^)]*|/ID \[[^]]*|DocumentID="[^"]*|<xmp:\w+Date>[^<]*)"));
        return QString::fromLatin1(reportPdf(document, letter(), QStringLiteral("en"))).remove(changing);
    };
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 99}) {
        SCOPED_TRACE(type);
        Document report =
            withTexts(exampleReport(type, 46), [](const DrawText& text) { return text.text.substr(0, 4); });
        const QString inColumns = drawn(report);
        for (Page& page : report.pages) {
            for (DrawingOperation& operation : page.operations) {
                if (auto* text = std::get_if<DrawText>(&operation)) {
                    text->room = 0;
                }
            }
        }
        EXPECT_TRUE(inColumns == drawn(report));
    }
}

TEST(ReportPdf, ATextThatJustFitsIsDrawnAsItIs) {
    for (const char* text : {"CVS Pharmacy #4417, Main St", "12/31/2023\t1/2/2024", "Zoë Müller", "東京都千代田区"}) {
        SCOPED_TRACE(text);
        Document document = oneLine(text);
        auto& drawn = std::get<DrawText>(document.pages[0].operations[0]);
        const auto lastWord = [&] {
            return wordsOfPdf(reportPdf(document, letter(), QStringLiteral("en")))[0].words.back();
        };
        const FoundWord free = lastWord();
        drawn.room = DrawingPainter(612).placeOf(drawn).width() + 0.01;
        EXPECT_EQ(lastWord().right, free.right);
        drawn.room -= 0.5;
        EXPECT_LT(lastWord().right, free.right);
    }
}

TEST(ReportPdf, NothingIsCutOnOtherPaper) {
    struct Row {
        QPageSize::PageSizeId paper;
        QPageLayout::Orientation orientation;
    };
    const Document report = exampleReport(2, 46);
    const auto wordsOn = [&](const Row& row) {
        const QPageLayout layout(QPageSize(row.paper), row.orientation, QMarginsF());
        return wordsOfPdf(reportPdf(report, layout, QStringLiteral("en")));
    };
    const auto whole = wordsOn({QPageSize::Letter, QPageLayout::Landscape});
    for (const Row& row : {Row{QPageSize::Letter, QPageLayout::Portrait}, Row{QPageSize::A4, QPageLayout::Portrait},
                           Row{QPageSize::A5, QPageLayout::Landscape}, Row{QPageSize::A5, QPageLayout::Portrait},
                           Row{QPageSize::A6, QPageLayout::Portrait}, Row{QPageSize::A3, QPageLayout::Landscape}}) {
        SCOPED_TRACE(static_cast<int>(row.paper) * 10 + static_cast<int>(row.orientation));
        const auto pages = wordsOn(row);
        ASSERT_EQ(pages.size(), whole.size());
        for (std::size_t index = 0; index < pages.size(); ++index) {
            // Which letters a reader takes for one word depends on their size; no letter may be missing.
            const auto letters = [](const FoundPage& page) {
                qsizetype count = 0;
                for (const FoundWord& word : page.words) {
                    count += word.text.size();
                }
                return count;
            };
            EXPECT_EQ(letters(pages[index]), letters(whole[index]));
            for (const FoundWord& word : pages[index].words) {
                EXPECT_GE(word.left, 0);
                EXPECT_GE(word.top, 0);
                EXPECT_LE(word.right, pages[index].width);
                EXPECT_LE(word.bottom, pages[index].height);
            }
        }
    }
}

TEST(ReportPainter, PlacesTheDrawingOnTheSheet) {
    struct Row {
        const char* what;
        QSizeF sheet;
        QRectF place;  ///< of a point-sized square whose lower left corner is at 20, 20
    };
    const std::vector<Row> rows = {
        {"letter across", {792, 612}, {20, 591, 1, 1}},
        {"A4 across", {842, 595}, {20, 574, 1, 1}},
        {"just large enough", {788, 580}, {20, 559, 1, 1}},
        // Turned: what is at the lower left comes to the lower right.
        {"letter upright", {612, 792}, {591, 771, 1, 1}},
        // Half the size in both directions.
        {"half as large", {404, 300}, {10, 289.5, 0.5, 0.5}},
        {"half as large, upright", {300, 404}, {289.5, 393.5, 0.5, 0.5}},
        // As wide as fits, in the middle.
        {"low", {800, 300}, {208, 289.5, 0.5, 0.5}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const bool upright = row.sheet.height() > row.sheet.width();
        const QSizeF across = upright ? row.sheet.transposed() : row.sheet;
        const double height = across.width() >= 788 && across.height() >= 580 ? across.height() : 600;
        const QRectF placed = ReportPainter(row.sheet).placed({20, height - 21, 1, 1});
        EXPECT_NEAR(placed.left(), row.place.left(), 1e-6);
        EXPECT_NEAR(placed.top(), row.place.top(), 1e-6);
        EXPECT_NEAR(placed.width(), row.place.width(), 1e-6);
        EXPECT_NEAR(placed.height(), row.place.height(), 1e-6);
    }
}

TEST(ReportPdf, PaperLiesAcrossWhicheverWayItsSizeIsGiven) {
    for (const QSizeF millimeters : {QSizeF(210, 297), QSizeF(29, 62), QSizeF(62, 29), QSizeF(100, 100)}) {
        const QSizeF points = pageLayoutAcross(QPageSize(millimeters, QPageSize::Millimeter)).fullRectPoints().size();
        EXPECT_GE(points.width(), points.height()) << millimeters.width();
    }
}

TEST(ReportPdf, WhatIsNoPdfIsLeftAlone) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("text"), QByteArray("trailer\n<< /Root 1 0 R >>\nstartxref\n7\n%%EOF\n")}) {
        EXPECT_EQ(withDocumentLanguage(bytes, QStringLiteral("en")), bytes);
    }
}

}  // namespace
}  // namespace kpx::test

int main(int argc, char** argv) {
    // The order of fonts in a file follows from hashes.
    QHashSeed::setDeterministicGlobalSeed();
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
