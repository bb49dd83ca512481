// What the user waits for on tab 1, through the whole application: adding, changing, deleting, showing a
// filtered history and sorting it; beside each its bare cost.

#include "app/KPXAppDelegate.h"
#include "bench/HouseholdFolder.h"
#include "core/Keys.h"
#include "core/Sorting.h"
#include "tests/support/TestPlatform.h"

#include <benchmark/benchmark.h>
#include <unicode/coll.h>
#include <algorithm>
#include <memory>

namespace {

using namespace kpx;

/// The application, started on a household.
class Application {
public:
    explicit Application(std::size_t fillCount)
        : household(fillCount),
          m_platform({test::regionOf("en_US", "America/New_York"), household.dataHome(), {}}, [](const test::Json&) {}),
          delegate(m_platform.ports()) {
        delegate.applicationDidFinishLaunching();
    }

    /// An initial fill of a new prescription stands in the form.
    void fillForm() {
        Outlets& outlets = delegate.outlets;
        for (PopUpButton* popUp :
             {&outlets.patientPopTab1, &outlets.pharmacyPopTab1, &outlets.drugPopTab1, &outlets.prescriberPopTab1}) {
            popUp->selectItemAtIndex(0);
        }
        outlets.fillTypeTab1.selectItemWithTitle(fillTypeInitial);
        outlets.rxNumberTab1.setText("bench-1");
        outlets.daysSupply.setText("30");
        outlets.totalCostTab1.setText("12.50");
    }

    bench::HouseholdFolder household;

private:
    test::TestPlatform m_platform;

public:
    KPXAppDelegate delegate;
};

std::unique_ptr<Application> applicationOf(const benchmark::State& state) {
    return std::make_unique<Application>(static_cast<std::size_t>(state.range(0)));
}

void bareReadAndWrite(benchmark::State& state) {
    const bench::HouseholdFolder household(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const auto history = copyArrayFromDataFile(household.folder(), prescriptionHistoryFile);
        benchmark::DoNotOptimize(writeArray(history, household.folder(), prescriptionHistoryFile));
    }
    state.SetComplexityN(state.range(0));
}

void add(benchmark::State& state) {
    const auto application = applicationOf(state);
    for (auto _ : state) {
        state.PauseTiming();
        application->household.writeHistory();
        application->fillForm();
        state.ResumeTiming();
        application->delegate.outlets.addBtnTab1.userClick();
    }
    if (application->delegate.maintArrayForTVTab1.size() != application->household.history().size() + 1) {
        state.SkipWithError("nothing was added");
    }
    state.SetComplexityN(state.range(0));
}

void change(benchmark::State& state) {
    const auto application = applicationOf(state);
    Outlets& outlets = application->delegate.outlets;
    for (auto _ : state) {
        state.PauseTiming();
        outlets.tableViewTab1.userDoubleClickRow(outlets.tableViewTab1.numberOfRows() / 2);
        outlets.scriptNoteTab1.setText("changed");
        state.ResumeTiming();
        outlets.changeBtnTab1.userClick();
    }
    state.SetComplexityN(state.range(0));
}

void deleteOne(benchmark::State& state) {
    const auto application = applicationOf(state);
    for (auto _ : state) {
        state.PauseTiming();
        application->household.writeHistory();
        application->delegate.populateTableViewArrayFromFileArray(application->household.history(),
                                                                  application->delegate.maintArrayForTVTab1);
        application->delegate.outlets.tableViewTab1.selectRow(0);
        state.ResumeTiming();
        if (application->delegate.deleteMaintFromList()) {
            state.SkipWithError("nothing was deleted");
            break;
        }
    }
    state.SetComplexityN(state.range(0));
}

void showFiltered(benchmark::State& state) {
    const auto application = applicationOf(state);
    Outlets& outlets = application->delegate.outlets;
    outlets.beginDateForShowTab1.setDate({-1e9});
    outlets.endDateForShowTab1.setDate({1e10});
    for (auto _ : state) {
        application->delegate.respondToShowBtnPane1();
    }
    state.SetComplexityN(state.range(0));
}

void sortByTextColumn(benchmark::State& state) {
    const auto application = applicationOf(state);
    TableView& table = application->delegate.outlets.tableViewTab1;
    bool ascending = false;
    for (auto _ : state) {
        table.userSort("scriptnum", ascending = !ascending);
    }
    state.SetComplexityN(state.range(0));
}

/// The same order from collation keys: made for every row, then compared byte by byte.
void sortByCollationKeys(benchmark::State& state) {
    const auto application = applicationOf(state);
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(icu::Locale("en_US"), status));
    collator->setStrength(icu::Collator::SECONDARY);
    bool ascending = false;
    for (auto _ : state) {
        ascending = !ascending;
        std::vector<std::pair<std::string, std::size_t>> keys;
        const Records& rows = application->delegate.maintArrayForTVTab1;
        keys.reserve(rows.size());
        for (std::size_t index = 0; index < rows.size(); ++index) {
            const auto text = icu::UnicodeString::fromUTF8(rows[index].text("scriptnum").value_or("").string());
            std::uint8_t bytes[256];
            const int length = collator->getSortKey(text, bytes, sizeof bytes);
            keys.emplace_back(std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)),
                              index);
        }
        std::ranges::stable_sort(keys, [&](const auto& left, const auto& right) {
            return ascending ? left.first < right.first : right.first < left.first;
        });
        Records sorted;
        sorted.reserve(rows.size());
        for (const auto& [key, index] : keys) {
            sorted.push_back(rows[index]);
        }
        benchmark::DoNotOptimize(sorted);
    }
    state.SetComplexityN(state.range(0));
}

void forRecords(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK(bareReadAndWrite)->Apply(forRecords);
BENCHMARK(add)->Apply(forRecords);
BENCHMARK(change)->Apply(forRecords);
BENCHMARK(deleteOne)->Apply(forRecords);
BENCHMARK(showFiltered)->Apply(forRecords);
BENCHMARK(sortByTextColumn)->Apply(forRecords);
BENCHMARK(sortByCollationKeys)->Apply(forRecords);

}  // namespace
