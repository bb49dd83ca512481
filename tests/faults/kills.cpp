// kills [COUNT [SEED]]: kills the program COUNT times (10,000 unless told) at any moment of its writing actions, with
// histories of 10 to 10,000 fills, and looks at what it left. Ends with the number of wrong states, at most 1.
//
// A kill falls where it falls, so no two runs are the same; what is the same each time stands in the faults' trials.
// A superuser's runs are nobody's.

#include "core/DataFiles.h"
#include "core/Keys.h"
#include "tests/faults/Actions.h"
#include "tests/faults/Trial.h"
#include "tests/support/TemporaryFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace kpx;
using namespace kpx::faults;
using Clock = std::chrono::steady_clock;

/// A household whose history has that many fills.
void makeHousehold(const fs::path& folder, std::size_t fills) {
    fs::create_directories(folder / dataFolder);
    if (inProcess([&] { Run{folder}(madeHousehold()); }) != EXIT_SUCCESS) {
        std::_Exit(EXIT_FAILURE);
    }
    Records history = copyArrayFromDataFile(folder / dataFolder, prescriptionHistoryFile).value_or(Records());
    for (std::size_t number = history.size(); number < fills; ++number) {
        Record fill = history.front();
        fill.set(MHRxNumberKey, "R" + std::to_string(number));
        history.push_back(std::move(fill));
    }
    const fs::path file = folder / dataFolder / prescriptionHistoryFile;
    const auto time = fs::last_write_time(file);
    if (!writeArray(history, folder / dataFolder, prescriptionHistoryFile)) {
        std::_Exit(EXIT_FAILURE);
    }
    fs::last_write_time(file, time);
}

/// Kills in one action, from a process that stands right before it.
class Kills {
public:
    Kills(const fs::path& root, const Action& action, unsigned seed)
        : m_action(action), m_live(root / "live"), m_start(root / "start"), m_check(root / "check"), m_random(seed) {
        restoreFound(action.found, root / "household", m_live);
    }

    /// The number of wrong states.
    int operator()(int count) {
        Run run(m_live);
        run({"clock 2024-03-07T12:00:00", "start"});
        run(m_action.before);
        restore(m_live, m_start);
        const auto begun = Clock::now();
        inProcess([&] { run(m_action.act); });
        const auto whole = Clock::now() - begun;
        m_after = treeOf(m_live);
        restore(m_start, m_live);
        m_before = treeOf(m_live);
        for (int kill = 0; kill < count; ++kill) {
            killOnce(run, std::uniform_int_distribution<Clock::rep>(0, whole.count() * 9 / 8)(m_random));
        }
        return m_wrong;
    }

private:
    void killOnce(Run& run, Clock::rep delay) {
        const auto end = Clock::now() + Clock::duration(delay);
        const pid_t child = ::fork();
        if (child == 0) {
            run(m_action.act, false);
            std::_Exit(EXIT_SUCCESS);
        }
        while (Clock::now() < end) {
        }
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const Tree left = treeOf(m_live);
        std::string wrong = wrongFiles(m_before, m_after, left);
        if (wrong.empty() && m_checked.insert(fingerprint(left)).second) {
            wrong = wrongAfterwards(m_live, m_check);
        }
        if (!wrong.empty()) {
            std::cout << "  " << m_action.name << ": " << wrong << std::endl;
            ++m_wrong;
        }
        if (left != m_before) {
            restore(m_start, m_live);
        }
    }

    static std::size_t fingerprint(const Tree& tree) {
        std::string all;
        for (const auto& [name, bytes] : tree) {
            // What a kill left of a temporary file differs each time, and each is as good as another.
            const bool isTemporary = fs::path(name).filename().native().starts_with('.');
            all += isTemporary ? "." : name + '\n' + std::to_string(std::hash<std::string>()(bytes));
            all += '\n';
        }
        return std::hash<std::string>()(all);
    }

    const Action& m_action;
    fs::path m_live;
    fs::path m_start;
    fs::path m_check;
    std::mt19937 m_random;
    Tree m_before;
    Tree m_after;
    std::set<std::size_t> m_checked;
    int m_wrong = 0;
};

/// Kills each action equally often with each size.
int killAll(int count, unsigned seed) {
    const std::vector<std::size_t> sizes = {10, 30, 100, 300, 1000, 3000, 10000};
    const int trials = static_cast<int>(sizes.size() * writingActions().size());
    int done = 0;
    int trial = 0;
    int wrong = 0;
    for (const std::size_t size : sizes) {
        const test::TemporaryFolder folder;
        makeHousehold(folder.path() / "household", size);
        const int before = done;
        for (const Action& action : writingActions()) {
            ++trial;
            const int share = count * trial / trials - done;
            done += share;
            wrong += inProcess([&] {
                         const int found = Kills(folder.path(), action, seed + static_cast<unsigned>(trial))(share);
                         std::_Exit(found == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
                     }) == EXIT_SUCCESS
                         ? 0
                         : 1;
        }
        std::cout << size << " fills: " << done - before << " kills, " << wrong << " actions with wrong states so far"
                  << std::endl;
    }
    return wrong;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 10000;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : std::random_device()();
    std::cout << "seed " << seed << std::endl;
    return test::becomeNobody() && killAll(count, seed) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
