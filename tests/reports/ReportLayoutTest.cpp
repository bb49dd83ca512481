#include "reports/ReportLayout.h"

#include "region/DateUtilities.h"
#include "tests/reports/ReportSupport.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace kpx {
namespace {

constexpr char regular[] = "LucidaGrande";
constexpr char bold[] = "LucidaGrande-Bold";

std::size_t linesOn(const Page& page) {
    std::vector<double> baselines;
    for (const DrawText& text : rowsOf(page)) {
        if (baselines.empty() || baselines.back() != text.y) {
            baselines.push_back(text.y);
        }
    }
    return baselines.size();
}

TEST(ReportLayout, APageOfOneRecordStepByStep) {
    const LaidOutReport report = laidOut(3, {prescription()});
    EXPECT_EQ(report.document.type, 3);
    EXPECT_EQ(report.document.title, "Prescriptions by Patient and Prescriber");
    EXPECT_EQ(report.missingFields, 0U);
    ASSERT_EQ(report.document.pages.size(), 1U);
    const std::vector<DrawingOperation> expected = {
        // A column may take up to 4 points before the next one, the last one up to 788.
        // 13 characters of the label: 20 + 68.9; 39 of the title: (690 − 117) / 2.
        DrawText{"Today's Date:", regular, 10, false, 20, 565, 5.3 * 13 + 0.2},
        DrawText{"3/5/24", regular, 10, false, 20 + 5.3 * 13, 565},
        DrawText{"Prescriptions by Patient and Prescriber", regular, 10, false, 286, 565, 402},
        DrawText{"Page: 1", regular, 10, false, 690, 565, 98},
        DrawLine{20, 557, 725, 557, 1.0},
        DrawLine{20, 553, 725, 553, 1.8},
        DrawText{"Patient", bold, 10, true, 20, 535, 126},
        DrawText{"Prescriber", bold, 10, true, 150, 535, 106},
        DrawText{"Drug Name", bold, 10, true, 260, 535, 116},
        DrawText{"Rx Number", bold, 10, true, 380, 535, 86},
        DrawText{"Dispense/Expire Dates", bold, 10, true, 470, 535, 136},
        DrawText{"Type/Remaining Refills", bold, 10, true, 610, 535, 178},
        DrawText{"Ann", regular, 8, false, 20, 524, 126},
        DrawText{"Dr. Grey", regular, 8, false, 150, 524, 106},
        DrawText{"Aspirin", regular, 8, false, 260, 524, 116},
        DrawText{"17", regular, 8, false, 380, 524, 86},
        DrawText{"1/5/24\t3/20/25", regular, 8, false, 470, 524, 136},
        DrawText{"Initial\t\t2", regular, 8, false, 610, 524, 178},
    };
    EXPECT_EQ(report.document.pages[0].operations, expected);
}

TEST(ReportLayout, PagesOfFortyFive) {
    struct Row {
        std::size_t records;
        std::vector<std::size_t> linesByPage;
    };
    const std::vector<Row> rows = {{1, {1}}, {45, {45}}, {46, {45, 1}}, {90, {45, 45}}, {91, {45, 45, 1}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.records);
        const auto report = laidOut(3, Records(row.records, prescription()));
        std::vector<std::size_t> lines;
        for (std::size_t page = 0; page < report.document.pages.size(); ++page) {
            lines.push_back(linesOn(report.document.pages[page]));
            EXPECT_EQ(textsOf(report.document.pages[page])[3].text, "Page: " + std::to_string(page + 1));
            EXPECT_EQ(rowsOf(report.document.pages[page]).front().y, 524);
        }
        EXPECT_EQ(lines, row.linesByPage);
    }
}

TEST(ReportLayout, LinesStepByTheFontsUnroundedHeight) {
    const FontMetrics metrics{7.42578125, 1.88671875};
    const auto report = printReport(3, Records(45, prescription()), 0, 0, 0, reportEnvironment(), {}, metrics, {});
    EXPECT_EQ(rowsOf(report.document.pages[0]).front().y, 535 - 11.3125);
    EXPECT_EQ(rowsOf(report.document.pages[0]).back().y, 535 - 45 * 11.3125);
}

TEST(ReportLayout, NoRecordsMakeOneBlankPage) {
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 99}) {
        SCOPED_TRACE(type);
        const auto report = laidOut(type, {});
        ASSERT_EQ(report.document.pages.size(), 1U);
        EXPECT_TRUE(report.document.pages[0].operations.empty());
        EXPECT_EQ(report.missingFields, 0U);
    }
}

TEST(ReportLayout, ActiveOnes) {
    struct Row {
        const char* about;
        std::optional<Value> expiration;
        std::optional<Value> refills;
        bool printed;
    };
    const std::vector<Row> rows = {
        {"tomorrow", "20240306", 1, true},
        {"today began before now", "20240305", 1, false},
        {"yesterday", "20240304", 1, false},
        {"this very instant", reportEnvironment().now, 1, true},
        {"a second ago", reportEnvironment().now.addingSeconds(-1), 1, false},
        {"no refills", "20250101", 0, false},
        {"refills below none", "20250101", -1, false},
        {"refills in a text", "20250101", "2", true},
        {"no number of refills", "20250101", std::nullopt, false},
        {"no expiration date", std::nullopt, 1, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.about);
        Record record = prescription();
        record.remove(MHExpireDateKey);
        record.remove(MHRefillsKey);
        if (row.expiration) {
            record.set(MHExpireDateKey, *row.expiration);
        }
        if (row.refills) {
            record.set(MHRefillsKey, *row.refills);
        }
        EXPECT_EQ(rowsOf(laidOut(1, {record}).document.pages[0]).empty(), !row.printed);
        EXPECT_FALSE(rowsOf(laidOut(2, {record}).document.pages[0]).empty());
    }
}

TEST(ReportLayout, SkippedRecordsGiveTheirLineBackAndKeepTheirPlace) {
    Record expired = prescription("Gone");
    expired.set(MHExpireDateKey, "20240101");
    Records records(91, expired);
    records[1] = prescription("First");
    records[3] = prescription("Second");
    records[90] = prescription("Third");
    const auto report = laidOut(1, records);
    ASSERT_EQ(report.document.pages.size(), 3U);
    std::vector<std::pair<std::string, double>> names;
    for (const Page& page : report.document.pages) {
        for (const DrawText& text : rowsOf(page)) {
            if (text.x == 20) {
                names.emplace_back(text.text, text.y);
            }
        }
    }
    EXPECT_THAT(names,
                testing::ElementsAre(std::pair("First", 524.0), std::pair("Second", 513.0), std::pair("Third", 524.0)));
    // The second page has its header and nothing else.
    EXPECT_TRUE(rowsOf(report.document.pages[1]).empty());
    EXPECT_EQ(textsOf(report.document.pages[1])[3].text, "Page: 2");
}

TEST(ReportLayout, ClosingBlock) {
    const auto report = laidOut(2, {prescription()});
    const auto texts = rowsOf(report.document.pages[0]);
    ASSERT_EQ(texts.size(), 11U);
    EXPECT_EQ(texts[5], (DrawText{"$1,234.50", regular, 8, false, 700, 524, 88}));
    EXPECT_EQ(texts[6], (DrawText{"======", regular, 8, false, 700, 509, 88}));
    EXPECT_EQ(texts[7], (DrawText{"Total Service Costs", regular, 8, false, 560, 494, 136}));
    EXPECT_EQ(texts[8], (DrawText{"$2,469.00", regular, 8, false, 700, 494, 88}));
    EXPECT_EQ(texts[9], (DrawText{"Average Monthly Cost", regular, 8, false, 560, 479, 136}));
    EXPECT_EQ(texts[10], (DrawText{"$1,234.50", regular, 8, false, 700, 479, 88}));
}

TEST(ReportLayout, ClosingBlockOnAPageNumberedLikeTheOneBefore) {
    // 535 − 43 × 11 = 62, 535 − 44 × 11 = 51.
    EXPECT_EQ(laidOut(2, Records(43, prescription())).document.pages.size(), 1U);
    const auto report = laidOut(2, Records(89, prescription()));
    ASSERT_EQ(report.document.pages.size(), 3U);
    EXPECT_EQ(textsOf(report.document.pages[1])[3].text, "Page: 2");
    EXPECT_EQ(textsOf(report.document.pages[2])[3].text, "Page: 2");
    EXPECT_EQ(rowsOf(report.document.pages[2]).size(), 5U);
    EXPECT_EQ(rowsOf(report.document.pages[2]).front(), (DrawText{"======", regular, 8, false, 700, 509, 88}));
}

TEST(ReportLayout, ALineAtSixtyLeavesRoomForTheClosingBlock) {
    const FontMetrics metrics{21.75, 0};  // 535 − 20 × 23.75 = 60
    const auto printed = [&](std::size_t count) {
        return printReport(2, Records(count, prescription()), 0, 0, 0, reportEnvironment(), {}, metrics, {}).document;
    };
    EXPECT_EQ(printed(20).pages.size(), 1U);
    EXPECT_EQ(printed(21).pages.size(), 2U);
}

TEST(ReportLayout, MissingValuesStayBlankAndAreCounted) {
    Record bare{{MHPatientKey, "Ann"}};
    const auto report = laidOut(3, {bare, prescription()});
    EXPECT_EQ(report.missingFields, 5U);
    EXPECT_EQ(rowsOf(report.document.pages[0]).size(), 7U);

    Record halfDated = prescription();
    halfDated.remove(MHExpireDateKey);
    EXPECT_EQ(laidOut(2, {halfDated}).missingFields, 1U);
    EXPECT_EQ(laidOut(1, {halfDated}).missingFields, 1U);
    halfDated.remove(MHDispenseDateKey);
    EXPECT_EQ(laidOut(2, {halfDated}).missingFields, 1U);
}

TEST(ReportLayout, TheShownTable) {
    const Record row{{"patient", "Ann"},
                     {"pharmacy", "Corner"},
                     {"drugname", "Aspirin"},
                     {"prescriber", "Dr. Grey"},
                     {"filltype", "Refill"},
                     {"scriptnum", "17"},
                     {"dispensedate", reportEnvironment().now}};
    Record full = row;
    full.set("scriptnote", "with water");
    full.set("remainingrefills", 70000);
    full.set("cost", 12.5);
    Record nameless = row;
    nameless.remove("patient");
    const std::vector<std::string> titles = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"};
    const auto report = printReport(99, {row, full, nameless}, 0, 0, 0, reportEnvironment(), {}, plainMetrics, titles);
    EXPECT_EQ(report.missingFields, 1U);

    std::vector<std::string> headings;
    for (const DrawText& text : textsOf(report.document.pages[0])) {
        if (text.underline) {
            headings.push_back(text.text + " " + std::to_string(static_cast<int>(text.x)));
        }
    }
    EXPECT_THAT(headings, testing::ElementsAre("A 20", "B 100", "C 200", "D 310", "E 410", "F 540", "G 580", "H 630",
                                               "I 685", "J 725"));
    std::vector<std::string> fields;
    for (const DrawText& text : rowsOf(report.document.pages[0])) {
        if (text.y == 513) {
            fields.push_back(text.text);
        }
    }
    EXPECT_THAT(fields, testing::ElementsAre("Ann", "Corner", "Aspirin", "Dr. Grey", "with water", "Refill", "17",
                                             "4464", "$12.50", "3/5/24"));
    EXPECT_EQ(rowsOf(report.document.pages[0]).size(), 7U + 10U + 6U);
}

class TranslatedReport : public testing::Test {
protected:
    /// The layout's titles in a language where the patient list has the given one.
    DrawText titleOf(const std::string& title, const std::string& more = {}) {
        std::filesystem::create_directories(folder.path() / "xx.lproj");
        test::writeFile(folder.path() / "xx.lproj" / "Localizable.strings",
                        "\"Patient List\" = \"" + title +
                            "\";\n\"Today's Date:\" = \"Äöü\";\n\"Page: \" = \"S. \";\n\"City\" = \"Ort\";\n" + more);
        const auto report = laidOut(4, {Record{{patientCityKey, "Bonn"}}}, reportEnvironment(), {folder.path(), "xx"});
        texts = textsOf(report.document.pages[0]);
        EXPECT_EQ(report.document.title, title);
        return texts[2];
    }
    test::TemporaryFolder folder;
    std::vector<DrawText> texts;
};

TEST_F(TranslatedReport, TextsAndPlacesByCharacters) {
    titleOf("Patienten");
    EXPECT_EQ(texts[0].text, "Äöü");
    EXPECT_EQ(texts[1].x, 20 + 5.3 * 3);
    EXPECT_EQ(texts[3].text, "S. 1");
    EXPECT_EQ(texts[6].text, "Ort");
}

TEST_F(TranslatedReport, AWholeSentenceSaysTheDateWhereItBelongs) {
    titleOf("Patienten", "\"Today's Date: %@\" = \"Am %@ gedruckt\";\n");
    const std::string today = shortStyleFromDate(reportEnvironment().now, reportEnvironment());
    EXPECT_EQ(texts[0].text, "Am " + today + " gedruckt");
    EXPECT_EQ(texts[0].room, 0) << "a date that is cut short is none";
    EXPECT_EQ(texts[1].text, "Patienten");
}

TEST_F(TranslatedReport, RemainingRefillsStandInOneLineWhateverTheWordsBefore) {
    titleOf("Patienten");
    const auto report = laidOut(3, {prescription()}, reportEnvironment(), {folder.path(), "xx"});
    for (const DrawText& text : rowsOf(report.document.pages[0])) {
        EXPECT_EQ(text.lastPart, text.x == 610 ? 84 : 0) << text.text;
    }
}

TEST_F(TranslatedReport, RoughlyCentredTitle) {
    struct Row {
        std::size_t characters;
        double x;
    };
    const std::vector<Row> rows = {{1, 343}, {40, 285}, {41, 283}, {230, 0}, {231, -1}, {300, -105}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.characters);
        EXPECT_EQ(titleOf(std::string(row.characters, 'x')).x, row.x);
    }
}

}  // namespace
}  // namespace kpx
