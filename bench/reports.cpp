#include "core/Keys.h"
#include "reports/ReportKind.h"
#include "reports/ReportLayout.h"
#include "tests/support/HouseholdGenerator.h"

#include <benchmark/benchmark.h>

#include <map>

// From the narrowed history to the pages of a report; time grows with the number of records.

namespace {

const kpx::Records& history(std::size_t count) {
    static std::map<std::size_t, kpx::Records> made;
    const auto known = made.find(count);
    return known != made.end() ? known->second
                               : made.emplace(count, kpx::test::makeHousehold(count).history).first->second;
}

kpx::Environment reader() { return {kpx::Date::fromSecondsSince1970(1709640000), kpx::Region("en_US", "UTC")}; }

void assembleAndLayOut(benchmark::State& state) {
    const int type = static_cast<int>(state.range(0));
    const kpx::Environment environment = reader();
    const kpx::Records& records = history(static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        kpx::Records sorted = records;
        const auto& order = kpx::reportKind(type)->order;
        kpx::doSortWithArray(sorted, order[0], order[1], order[2], environment);
        benchmark::DoNotOptimize(
            kpx::printReport(type, sorted, 0, 0, 0, environment, {}, kpx::FontMetrics{7.42578125, 1.88671875}, {}));
    }
    state.SetItemsProcessed(state.iterations() * state.range(1));
    state.SetComplexityN(state.range(1));
}

BENCHMARK(assembleAndLayOut)
    ->ArgNames({"type", "records"})
    ->ArgsProduct({{1}, {1000, 10000, 100000}})
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(assembleAndLayOut)
    ->ArgNames({"type", "records"})
    ->ArgsProduct({{3}, {1000, 10000, 100000}})
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace
