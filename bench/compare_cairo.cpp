#include "reports/ReportKind.h"
#include "reports/ReportLayout.h"
#include "tests/support/HouseholdGenerator.h"
#include "ui/ReportOutput.h"
#include "ui/ReportPainter.h"

#include <benchmark/benchmark.h>
#include <cairo-pdf.h>
#include <cairo.h>

#include <QGuiApplication>

#include <cstdlib>
#include <map>
#include <string>

// Our PDF of a report beside that of a plain cairo program that draws the same operations, in one run. Both
// make the whole file in memory.

namespace {

const kpx::Document& report(std::size_t count) {
    static std::map<std::size_t, kpx::Document> made;
    const auto known = made.find(count);
    if (known != made.end()) {
        return known->second;
    }
    const kpx::Environment environment{kpx::Date::fromSecondsSince1970(1709640000), kpx::Region("en_US", "UTC")};
    kpx::Records records = kpx::test::makeHousehold(count).history;
    const auto& order = kpx::reportKind(kpx::allPrescriptionsReport)->order;
    kpx::doSortWithArray(records, order[0], order[1], order[2], environment);
    const auto metrics = kpx::ReportPainter::metrics(kpx::reportBodyFontSize);
    return made
        .emplace(count,
                 kpx::printReport(kpx::allPrescriptionsReport, records, 0, 0, 0, environment, {}, metrics, {}).document)
        .first->second;
}

void ours(benchmark::State& state) {
    const kpx::Document& document = report(static_cast<std::size_t>(state.range(0)));
    const QPageLayout letter(QPageSize(QPageSize::Letter), QPageLayout::Landscape, QMarginsF());
    qsizetype bytes = 0;
    for (auto _ : state) {
        bytes = kpx::reportPdf(document, letter, QStringLiteral("en-US")).size();
    }
    state.counters["fileKB"] = static_cast<double>(bytes) / 1000;
    state.counters["pages"] = static_cast<double>(document.pages.size());
}

cairo_status_t append(void* text, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

void showLine(cairo_t* cairo, const kpx::DrawText& text) {
    constexpr double height = 612;
    constexpr double tabStop = 28;
    const bool bold = text.font.ends_with("-Bold");
    cairo_select_font_face(cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, text.size);
    double offset = 0;
    for (std::size_t begin = 0; begin <= text.text.size();) {
        const std::size_t end = std::min(text.text.find('\t', begin), text.text.size());
        const std::string part = text.text.substr(begin, end - begin);
        cairo_move_to(cairo, text.x + offset, height - text.y);
        cairo_show_text(cairo, part.c_str());
        if (text.underline || end < text.text.size()) {
            cairo_text_extents_t extents;
            cairo_text_extents(cairo, part.c_str(), &extents);
            if (text.underline) {
                cairo_set_line_width(cairo, 1);
                cairo_move_to(cairo, text.x + offset, height - text.y + 1);
                cairo_rel_line_to(cairo, extents.x_advance, 0);
                cairo_stroke(cairo);
            }
            offset = (static_cast<int>((offset + extents.x_advance) / tabStop) + 1) * tabStop;
        }
        begin = end + 1;
    }
}

void plainCairo(benchmark::State& state) {
    const kpx::Document& document = report(static_cast<std::size_t>(state.range(0)));
    std::string pdf;
    for (auto _ : state) {
        pdf.clear();
        cairo_surface_t* surface = cairo_pdf_surface_create_for_stream(append, &pdf, 792, 612);
        cairo_t* cairo = cairo_create(surface);
        for (const kpx::Page& page : document.pages) {
            for (const kpx::DrawingOperation& operation : page.operations) {
                if (const auto* text = std::get_if<kpx::DrawText>(&operation)) {
                    showLine(cairo, *text);
                } else {
                    const auto& line = std::get<kpx::DrawLine>(operation);
                    cairo_set_line_width(cairo, line.width);
                    cairo_move_to(cairo, line.x1, 612 - line.y1);
                    cairo_line_to(cairo, line.x2, 612 - line.y2);
                    cairo_stroke(cairo);
                }
            }
            cairo_show_page(cairo);
        }
        cairo_destroy(cairo);
        cairo_surface_finish(surface);
        cairo_surface_destroy(surface);
    }
    state.counters["fileKB"] = static_cast<double>(pdf.size()) / 1000;
    state.counters["pages"] = static_cast<double>(document.pages.size());
}

BENCHMARK(ours)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(plainCairo)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
