// What the sheet of earlier states costs to open: 150 states are read and compared with the present. Beside it one
// comparison of records that no key tells apart.

#include "bench/HouseholdFolder.h"
#include "core/Keys.h"
#include "earlier/Difference.h"
#include "earlier/KeepingWriter.h"
#include "earlier/Overview.h"
#include "tests/support/RegionSupport.h"

#include <benchmark/benchmark.h>
#include <stdexcept>
#include <string>

namespace {

using namespace kpx;

constexpr double secondsOfDay = 86400;

/// A household whose history was changed at the end of every month and day that earlier states go back to, then
/// deleted from 50 times on one day and changed 50 times on the last: all that is ever kept of it. Two contents differ
/// in one fill.
class KeptHousehold {
public:
    explicit KeptHousehold(std::size_t fillCount) : m_household(fillCount), m_history(m_household.history()) {
        for (int month = 24; month > 1; --month) {
            write(-30.5 * secondsOfDay * month, Replacing::Change);
        }
        for (int day = 29; day > 1; --day) {
            write(-secondsOfDay * day, Replacing::Change);
        }
        for (int deletion = 0; deletion < 50; ++deletion) {
            write(-1.4 * secondsOfDay + 60 * deletion, Replacing::Deletion);
        }
        for (int change = 50; change >= 0; --change) {
            write(-60.0 * change, Replacing::Change);
        }
    }

    EarlierStates states() const { return earlierStatesOf(m_household.folder(), at(0), LocalizedStrings()); }

private:
    static Environment at(double seconds) {
        return {universal(2024, 3, 15, 12).addingSeconds(seconds), Region("en_US", "UTC")};
    }

    void write(double seconds, Replacing replacing) {
        m_history.back().set(MHNoteKey, "as of " + std::to_string(seconds));
        const std::string bytes = bytesFromRecords(m_history).value_or("");
        if (!replaceKeepingEarlier(m_household.folder(), prescriptionHistoryFile, {.bytes = bytes}, replacing,
                                   at(seconds))) {
            throw std::runtime_error("the history cannot be written");
        }
    }

    bench::HouseholdFolder m_household;
    Records m_history;
};

void openSheet(benchmark::State& state) {
    const KeptHousehold household(static_cast<std::size_t>(state.range(0)));
    std::size_t count = 0;
    for (auto _ : state) {
        count = household.states().rows.size();
    }
    state.counters["states"] = static_cast<double>(count);
}

void compareWithoutKeys(benchmark::State& state) {
    Records present;
    Records earlier;
    for (std::int64_t number = 0; number < state.range(0); ++number) {
        present.push_back({{"other", number}});
        earlier.push_back({{"other", state.range(0) - number}});
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(PresentRecords(householdFiles()[0], present).differenceTo(earlier));
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(openSheet)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(compareWithoutKeys)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
