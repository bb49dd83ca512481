#include "plist/PropertyList.h"
#include "tests/support/HouseholdGenerator.h"

#include <benchmark/benchmark.h>

#include <map>

// Reading and writing a history of 1,000 to 100,000 records; both grow with the number of records.

namespace {

const kpx::Value& history(std::size_t count) {
    static std::map<std::size_t, kpx::Value> made;
    const auto known = made.find(count);
    if (known != made.end()) {
        return known->second;
    }
    const kpx::Records records = kpx::test::makeHousehold(count).history;
    const kpx::Array array(std::vector<kpx::Value>(records.begin(), records.end()));
    // As the program has them: every write follows a read of the same file.
    return made.emplace(count, *kpx::readPropertyList(*kpx::writePropertyList(array))).first->second;
}

void setCounters(benchmark::State& state, std::size_t byteCount) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(byteCount));
    state.SetComplexityN(state.range(0));
}

void readHistory(benchmark::State& state) {
    const std::string bytes = *kpx::writePropertyList(history(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(kpx::readPropertyList(bytes));
    }
    setCounters(state, bytes.size());
}

void writeHistory(benchmark::State& state) {
    const kpx::Value& value = history(static_cast<std::size_t>(state.range(0)));
    std::size_t byteCount = 0;
    for (auto _ : state) {
        byteCount = kpx::writePropertyList(value)->size();
        benchmark::DoNotOptimize(byteCount);
    }
    setCounters(state, byteCount);
}

BENCHMARK(readHistory)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(writeHistory)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
