#include "drawing/ChartLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace kpx {
namespace {

constexpr Box box{.left = 20, .bottom = 30, .width = 700, .height = 400};

Chart columns(const std::vector<double>& amounts, double axisFrom, double axisTo) {
    Chart chart;
    for (const double amount : amounts) {
        const std::string name = "Nov " + std::to_string(2000 + chart.bars.size());
        chart.bars.push_back({name, amount, "$", name});
    }
    chart.axis = {{axisFrom, "$0"}, {axisTo, "$100"}};
    return chart;
}

template <typename Operation>
std::vector<Operation> all(const LaidOutChart& picture, Ink ink) {
    std::vector<Operation> found;
    for (const DrawingOperation& operation : picture.operations) {
        if (const auto* drawn = std::get_if<Operation>(&operation); drawn && drawn->ink == ink) {
            found.push_back(*drawn);
        }
    }
    return found;
}

TEST(ChartLayout, BarsAreAsHighAsTheirAmounts) {
    const LaidOutChart picture = layOutChart(columns({100, 50, 0, 25}, 0, 100), {.box = box});
    const auto bars = all<DrawLine>(picture, Ink::Bar);
    ASSERT_EQ(bars.size(), 3U);  // nothing is drawn for nothing
    const double whole = bars[0].y2 - bars[0].y1;
    EXPECT_GT(whole, 300);
    EXPECT_DOUBLE_EQ(bars[1].y2 - bars[1].y1, whole / 2);
    EXPECT_DOUBLE_EQ(bars[2].y2 - bars[2].y1, whole / 4);
    EXPECT_EQ(picture.slots.size(), 4U);
}

TEST(ChartLayout, NegativeAmountsHangBelowNothing) {
    const auto bars = all<DrawLine>(layOutChart(columns({60, -40}, -40, 60), {.box = box}), Ink::Bar);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_DOUBLE_EQ(bars[0].y1, bars[1].y1);
    EXPECT_GT(bars[0].y2, bars[0].y1);
    EXPECT_LT(bars[1].y2, bars[1].y1);
    EXPECT_NEAR((bars[0].y2 - bars[0].y1) / (bars[1].y1 - bars[1].y2), 1.5, 1e-9);
}

TEST(ChartLayout, NoAmountLeavesTheFrame) {
    for (const double amount : {1e308, -1e308, std::nan(""), static_cast<double>(INFINITY)}) {
        const LaidOutChart picture = layOutChart(columns({amount, 5}, -10, 10), {.box = box});
        for (const DrawLine& bar : all<DrawLine>(picture, Ink::Bar)) {
            EXPECT_GE(bar.y2, box.bottom);
            EXPECT_LE(bar.y2, box.top());
        }
    }
}

TEST(ChartLayout, LabelsAreThinnedUntilTheyStandApart) {
    for (const std::size_t months : {1U, 2U, 12U, 36U, 400U}) {
        SCOPED_TRACE(months);
        const LaidOutChart picture = layOutChart(columns(std::vector<double>(months, 1.0), 0, 1), {.box = box});
        const auto labels = all<DrawText>(picture, Ink::Text);
        ASSERT_FALSE(labels.empty());
        EXPECT_EQ(labels.size() == months, months <= 12) << labels.size();
        for (std::size_t index = 0; index + 1 < labels.size(); ++index) {
            EXPECT_LE(labels[index].x + labels[index].room / 2 + 4, labels[index + 1].x - labels[index + 1].room / 2);
        }
        EXPECT_GE(labels.front().x - labels.front().room / 2, box.left);
        EXPECT_LE(labels.back().x + labels.back().room / 2, box.right());
    }
}

TEST(ChartLayout, EveryBarHasAPlaceToPointAt) {
    Chart rows = columns({100, 50, 25}, 0, 100);
    rows.shape = Chart::Shape::Rows;
    const LaidOutChart picture = layOutChart(rows, {.box = box});
    ASSERT_EQ(picture.slots.size(), 3U);
    EXPECT_GT(picture.slots[0].bottom, picture.slots[1].bottom);
    const auto bars = all<DrawLine>(picture, Ink::Bar);
    for (std::size_t index = 0; index < bars.size(); ++index) {
        EXPECT_TRUE(picture.slots[index].contains(bars[index].x1 + 1, bars[index].y1));
    }
}

TEST(ChartLayout, AMirroredChartIsItsMirrorImage) {
    for (const Chart::Shape shape : {Chart::Shape::Columns, Chart::Shape::Rows}) {
        Chart chart = columns({100, 50}, 0, 100);
        chart.shape = shape;
        const LaidOutChart plain = layOutChart(chart, {.box = box});
        const LaidOutChart mirrored = layOutChart(chart, {.box = box, .mirrored = true});
        const auto from = all<DrawLine>(plain, Ink::Bar);
        const auto to = all<DrawLine>(mirrored, Ink::Bar);
        ASSERT_EQ(from.size(), to.size());
        for (std::size_t index = 0; index < from.size(); ++index) {
            EXPECT_DOUBLE_EQ(from[index].x2 + to[index].x2, box.left + box.right());
            EXPECT_DOUBLE_EQ(from[index].y2, to[index].y2);
        }
        EXPECT_TRUE(std::ranges::all_of(all<DrawText>(mirrored, Ink::QuietText),
                                        [](const DrawText& text) { return text.alignment != Alignment::Right; }));
        EXPECT_NEAR(mirrored.slots[0].right(), box.left + box.right() - plain.slots[0].left, 1e-9);
    }
}

TEST(ChartLayout, WhatIsNotNothingIsSeen) {
    for (const Chart::Shape shape : {Chart::Shape::Columns, Chart::Shape::Rows}) {
        Chart chart = columns({1e9, 0.01, 0, -0.01}, -1e9, 1e9);
        chart.shape = shape;
        const auto bars = all<DrawLine>(layOutChart(chart, {.box = box}), Ink::Bar);
        ASSERT_EQ(bars.size(), 3U);
        const auto length = [](const DrawLine& bar) { return bar.x2 - bar.x1 + bar.y2 - bar.y1; };
        EXPECT_DOUBLE_EQ(length(bars[1]), 2);
        EXPECT_DOUBLE_EQ(length(bars[2]), -2);
    }
}

TEST(ChartLayout, TheSampleOfTheAverageFollowsItsWords) {
    for (const bool mirrored : {false, true}) {
        Chart chart = columns({100, 50}, 0, 100);
        chart.average = ChartMark{75, "Average"};
        const LaidOutChart picture = layOutChart(chart, {.box = box, .mirrored = mirrored});
        const auto texts = all<DrawText>(picture, Ink::Text);
        const auto words = std::ranges::find(texts, "Average", &DrawText::text);
        ASSERT_NE(words, texts.end());
        EXPECT_EQ(words->alignment, mirrored ? Alignment::Left : Alignment::Right);
        const DrawLine sample = all<DrawLine>(picture, Ink::Average).front();
        const double away =
            mirrored ? words->x - std::max(sample.x1, sample.x2) : std::min(sample.x1, sample.x2) - words->x;
        EXPECT_GT(away, 2);
        EXPECT_LT(away, 10);
    }
}

TEST(ChartLayout, FewRowsHaveTheirAxisRightBelow) {
    Chart rows = columns({100, 50}, 0, 100);
    rows.shape = Chart::Shape::Rows;
    const LaidOutChart picture = layOutChart(rows, {.box = box});
    for (const DrawText& mark : all<DrawText>(picture, Ink::QuietText)) {
        EXPECT_LT(mark.y, picture.slots[1].bottom);
        EXPECT_GT(mark.y, picture.slots[1].bottom - 20);
    }
}

TEST(ChartLayout, NothingForNoBars) { EXPECT_TRUE(layOutChart(Chart(), {.box = box}).operations.empty()); }

}  // namespace
}  // namespace kpx
