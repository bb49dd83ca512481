// What the user waits for on tabs 2 and 3, beside a bare reading of the history; and what the charts have of it.

#include "app/KPXAppDelegate.h"
#include "bench/HouseholdFolder.h"
#include "costs/CostChart.h"
#include "tests/support/HouseholdGenerator.h"
#include "tests/support/TestPlatform.h"

#include <benchmark/benchmark.h>

namespace {

using namespace kpx;

struct Application {
    explicit Application(const benchmark::State& state)
        : household(static_cast<std::size_t>(state.range(0))),
          platform({test::regionOf("en_US", "America/New_York"), household.dataHome(), {}}, [](const test::Json&) {}),
          delegate(platform.ports()) {
        delegate.applicationDidFinishLaunching();
    }
    bench::HouseholdFolder household;
    test::TestPlatform platform;
    KPXAppDelegate delegate;
};

void bareRead(benchmark::State& state) {
    const bench::HouseholdFolder household(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(copyArrayFromDataFile(household.folder(), prescriptionHistoryFile));
    }
    state.SetComplexityN(state.range(0));
}

void start(benchmark::State& state) {
    const bench::HouseholdFolder household(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        test::TestPlatform platform({test::regionOf("en_US", "America/New_York"), household.dataHome(), {}},
                                    [](const test::Json&) {});
        KPXAppDelegate delegate(platform.ports());
        delegate.applicationDidFinishLaunching();
    }
    state.SetComplexityN(state.range(0));
}

template <int mode>
void schedule(benchmark::State& state) {
    Application application(state);
    application.delegate.outlets.radioBtnTab2.selectCellWithTag(mode);
    for (auto _ : state) {
        application.delegate.respondToShowBtnPane2();
    }
    state.SetComplexityN(state.range(0));
}

void costs(benchmark::State& state) {
    Application application(state);
    application.delegate.outlets.beginDateTab3.setDate({-1e9});
    application.delegate.outlets.endDateTab3.setDate({1e10});
    for (auto _ : state) {
        application.delegate.respondToShowBtnPane3();
    }
    state.SetComplexityN(state.range(0));
}

void costCharts(benchmark::State& state) {
    const Environment here{Date::fromSecondsSince1970(1709640000), Region("en_US", "America/New_York")};
    Records records = test::makeHousehold(static_cast<std::size_t>(state.range(0))).history;
    const CostFigures figures = costFigures(records, here);
    for (auto _ : state) {
        benchmark::DoNotOptimize(costCharts(records, figures, here, {}));
    }
    state.SetComplexityN(state.range(0));
}

void forRecords(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK(bareRead)->Apply(forRecords);
BENCHMARK(start)->Apply(forRecords);
BENCHMARK(schedule<1>)->Name("scheduleLatest")->Apply(forRecords);
BENCHMARK(schedule<2>)->Name("scheduleWholeHistory")->Apply(forRecords);
BENCHMARK(schedule<3>)->Name("scheduleOverdue")->Apply(forRecords);
BENCHMARK(costs)->Apply(forRecords);
BENCHMARK(costCharts)->Apply(forRecords);

}  // namespace
