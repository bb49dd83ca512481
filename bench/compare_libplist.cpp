#include "plist/PropertyList.h"
#include "tests/support/HouseholdGenerator.h"

#include <benchmark/benchmark.h>
#include <plist/plist.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>

// Our reader and writer beside those of the packaged C library, with the same records, in one run.
//
// fileMB   the size of the file read or written
// peakMB   the largest memory of a process of its own that holds the file and reads it once

namespace {

struct Ours {
    static constexpr const char* name = "ours";
    using List = kpx::Value;
    static List read(const std::string& bytes) { return *kpx::readPropertyList(bytes); }
    static std::size_t write(const List& list) { return kpx::writePropertyList(list)->size(); }
};

struct Theirs {
    static constexpr const char* name = "theirs";
    using List = std::unique_ptr<void, decltype(&plist_free)>;
    static List read(const std::string& bytes) {
        plist_t list = nullptr;
        plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &list);
        return {list, plist_free};
    }
    static std::size_t write(const List& list) {
        char* bytes = nullptr;
        std::uint32_t size = 0;
        plist_to_bin(list.get(), &bytes, &size);
        plist_to_bin_free(bytes);
        return size;
    }
};

const std::string& historyBytes(std::size_t count) {
    static std::map<std::size_t, std::string> made;
    const auto known = made.find(count);
    if (known != made.end()) {
        return known->second;
    }
    const kpx::Records records = kpx::test::makeHousehold(count).history;
    const kpx::Array array(std::vector<kpx::Value>(records.begin(), records.end()));
    return made.emplace(count, *kpx::writePropertyList(array)).first->second;
}

constexpr const char* peakSwitch = "--peak-of-reading";

/// What this program prints when it is started with the switch, a library's name and a file.
void printPeakOfReading(const std::string& library, const char* file) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(std::filesystem::file_size(file), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (library == Ours::name) {
        benchmark::DoNotOptimize(Ours::read(bytes));
    } else if (library == Theirs::name) {
        benchmark::DoNotOptimize(Theirs::read(bytes));
    }
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            std::puts(line.c_str() + std::string("VmHWM:").size());
        }
    }
}

double peakOfReading(const char* library, const std::string& bytes) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("kpx-bench-" + std::to_string(getpid()));
    std::ofstream(file, std::ios::binary) << bytes;
    const std::string program = std::filesystem::read_symlink("/proc/self/exe");
    const std::string command = program + " " + peakSwitch + " " + library + " " + file.string();
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
    std::array<char, 64> line{};
    const bool isRead = output && std::fgets(line.data(), line.size(), output.get());
    std::filesystem::remove(file);
    return isRead ? std::strtod(line.data(), nullptr) / 1024 : 0;
}

template <typename Library>
void reading(benchmark::State& state) {
    const std::string& bytes = historyBytes(static_cast<std::size_t>(state.range(0)));
    state.counters["peakMB"] = peakOfReading(Library::name, bytes);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Library::read(bytes));
    }
    state.counters["fileMB"] = static_cast<double>(bytes.size()) / 1e6;
}

template <typename Library>
void writing(benchmark::State& state) {
    const auto list = Library::read(historyBytes(static_cast<std::size_t>(state.range(0))));
    std::size_t size = 0;
    for (auto _ : state) {
        size = Library::write(list);
    }
    state.counters["fileMB"] = static_cast<double>(size) / 1e6;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.5);
}

BENCHMARK(reading<Ours>)->Apply(sizes);
BENCHMARK(reading<Theirs>)->Apply(sizes);
BENCHMARK(writing<Ours>)->Apply(sizes);
BENCHMARK(writing<Theirs>)->Apply(sizes);

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == peakSwitch) {
        printPeakOfReading(argv[2], argv[3]);
        return EXIT_SUCCESS;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
