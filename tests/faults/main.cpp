// faults: fails every call of the system that a writing action makes, in each way in which it can fail, and kills the
// program before, after and within each. Whatever befalls it, each data file holds the state before the action or the
// one after it, the next start reads it, and after the next writes nothing but the data files is left.
//
// Each trial is a copy of a process that stands right before the action, so all of them are the same each time. A
// superuser runs the trials as nobody, too. With KPX_LONG each call fails in all its ways, else in some of them.

#include "core/DataFiles.h"
#include "tests/faults/Actions.h"
#include "tests/faults/SystemCalls.h"
#include "tests/faults/Trial.h"
#include "tests/support/TemporaryFolder.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace kpx;
using namespace kpx::faults;
using kpx::test::readFile;
using kpx::test::TemporaryFolder;

const char* wordOf(Fault fault) {
    switch (fault) {
        case Fault::None:
            return "nothing";
        case Fault::Error:
            return "error";
        case Fault::Short:
            return "half of it";
        case Fault::KillBefore:
            return "kill before";
        case Fault::KillWithin:
            return "kill within";
        case Fault::KillAfter:
            return "kill after";
    }
    return "";
}

/// The trials of one action, in a process that stands right before it.
class Trials {
public:
    Trials(const Action& action, const fs::path& root, bool all)
        : m_action(action),
          m_root(root),
          m_live(root / "live"),
          m_start(root / "start"),
          m_check(root / "check"),
          m_all(all) {}

    /// The number of states that are not allowed.
    int operator()() {
        restoreFound(m_action.found, m_root / "household", m_live);
        Run run(m_live);
        run({"clock 2024-03-07T12:00:00", "start"});
        run(m_action.before);
        restore(m_live, m_start);
        const std::vector<Call> calls = callsOf(run);
        m_after = treeOf(m_live);
        m_isWholeAfterwards = offersWholeStates(m_live);
        restore(m_start, m_live);
        m_before = treeOf(m_live);
        if (calls.size() < 20 || dataFilesOf(m_before) == dataFilesOf(m_after)) {
            return complain({}, "the action writes nothing");
        }
        for (const Call& call : calls) {
            tryFaultsOf(call, run);
        }
        std::cout << m_action.name << ": " << calls.size() << " calls, " << m_trials << " trials, " << m_checked.size()
                  << " different outcomes, " << m_wrong << " wrong\n";
        return m_wrong;
    }

private:
    /// Handed over in a file, as the calls are counted in another process.
    std::vector<Call> callsOf(Run& run) {
        const fs::path list = m_root / "calls";
        inProcess([&] {
            const auto calls = counted({}, [&] { run(m_action.act); });
            std::string text;
            for (const Call& call : calls) {
                text += call.name + '\n';
                for (const Plan& plan : call.faults) {
                    text += std::to_string(plan.call) + ' ' + std::to_string(static_cast<int>(plan.fault)) + ' ' +
                            std::to_string(plan.error) + '\n';
                }
            }
            test::writeFile(list, text);
        });
        std::vector<Call> calls;
        std::istringstream lines(readFile(list));
        for (std::string line; std::getline(lines, line);) {
            std::istringstream numbers(line);
            Plan plan;
            int fault = 0;
            if (numbers >> plan.call >> fault >> plan.error) {
                plan.fault = static_cast<Fault>(fault);
                calls.back().faults.push_back(plan);
            } else {
                calls.push_back({line, {}});
            }
        }
        return calls;
    }

    void tryFaultsOf(const Call& call, Run& run) {
        for (std::size_t index = 0; index < call.faults.size(); ++index) {
            const Plan& plan = call.faults[index];
            // A kill after one call is one before the next.
            const bool isChosen = call.name == "linkat" || plan.fault == Fault::KillBefore ||
                                  plan.fault == Fault::KillWithin || plan.fault == Fault::Short ||
                                  (plan.fault == Fault::Error && (plan.call + index) % 3 == 0);
            if (m_all || isChosen) {
                tryOut(call, plan, run);
            }
        }
    }

    void tryOut(const Call& call, const Plan& plan, Run& run) {
        ++m_trials;
        const int status = inProcess([&] { counted(plan, [&] { run(m_action.act, false); }); });
        const bool killed = plan.fault >= Fault::KillBefore;
        const std::string what = call.name + " (" + std::to_string(plan.call) + "), " + wordOf(plan.fault) +
                                 (plan.fault == Fault::Error ? std::string(" ") + ::strerrorname_np(plan.error) : "");
        if (status != (killed ? -SIGKILL : EXIT_SUCCESS)) {
            complain(what, "ended with " + std::to_string(status));
        }
        const Tree left = treeOf(m_live);
        std::string wrong = wrongIn(left);
        if (wrong.empty() && call.name == "linkat" && plan.fault == Fault::Error && plan.error != EEXIST) {
            // Where the file system has no second names, what is replaced is kept as a copy.
            wrong = dataFilesOf(left) == dataFilesOf(m_after) ? replacedAndNotKept(m_before, left) : "it did nothing";
        }
        if (wrong.empty() && isNoted(call, plan) && !offersWholeStates(m_live)) {
            wrong = "a state is offered of which not all is known";
        }
        if (!wrong.empty()) {
            complain(what, wrong);
        }
        restore(m_start, m_live);
    }

    /// Whether what is not known of an older household must have been noted, or can still be: this file system has
    /// notes, and the fault is not the one that loses it.
    bool isNoted(const Call& call, const Plan& plan) const {
        const bool isLost =
            plan.fault == Fault::Error && (call.name == "setxattr" || call.name == "getxattr" || call.name == "mkdir");
        return m_action.found == Found::WithoutEarlierStates && m_isWholeAfterwards && !isLost;
    }

    /// What is not allowed of what a trial left; empty when all is.
    std::string wrongIn(const Tree& left) {
        const std::string wrong = wrongFiles(m_before, m_after, left);
        return wrong.empty() && m_checked.insert(left).second ? wrongAfterwards(m_live, m_check) : wrong;
    }

    int complain(const std::string& fault, const std::string& wrong) {
        std::cout << "  " << m_action.name << ": " << fault << ": " << wrong << '\n';
        return ++m_wrong;
    }

    const Action& m_action;
    fs::path m_root;
    fs::path m_live;
    fs::path m_start;
    fs::path m_check;
    bool m_all;
    Tree m_before;
    Tree m_after;
    std::set<Tree> m_checked;
    bool m_isWholeAfterwards = false;
    int m_trials = 0;
    int m_wrong = 0;
};

/// The number of actions with a state that is not allowed.
int tryAll(bool all) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "household" / dataFolder);
    const int made = inProcess([&] { Run(folder.path() / "household")(madeHousehold()); });
    int wrong = made == EXIT_SUCCESS ? 0 : 1;
    for (const Action& action : writingActions()) {
        wrong += inProcess([&] {
                     const int found = Trials(action, folder.path(), all)();
                     std::cout.flush();
                     std::_Exit(found == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
                 }) == EXIT_SUCCESS
                     ? 0
                     : 1;
    }
    return wrong;
}

}  // namespace

int main() {
    const bool all = std::getenv("KPX_LONG") != nullptr;
    const int asNobody = inProcess([&] {
        if (!test::becomeNobody() || tryAll(all) > 0) {
            std::_Exit(EXIT_FAILURE);
        }
    });
    std::cout.flush();
    const bool isSuperuser = ::geteuid() == 0;
    const bool wrong = asNobody != EXIT_SUCCESS || (isSuperuser && tryAll(all) > 0);
    return wrong ? EXIT_FAILURE : EXIT_SUCCESS;
}
