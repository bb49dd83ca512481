#include "tests/pdf/ExampleReports.h"
#include "tests/pdf/PdfReading.h"
#include "ui/Conversions.h"
#include "ui/ReportOutput.h"
#include "ui/ReportPainter.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QRegularExpression>

#include <cmath>

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

TEST(ReportPdf, WhatIsNoPdfIsLeftAlone) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("text"), QByteArray("trailer\n<< /Root 1 0 R >>\nstartxref\n7\n%%EOF\n")}) {
        EXPECT_EQ(withDocumentLanguage(bytes, QStringLiteral("en")), bytes);
    }
}

}  // namespace
}  // namespace kpx::test

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
