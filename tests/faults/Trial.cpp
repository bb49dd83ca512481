#include "tests/faults/Trial.h"

#include "core/DataFiles.h"
#include "earlier/Overview.h"
#include "tests/faults/Actions.h"
#include "tests/runner/Commands.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestPlatform.h"

#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace kpx::faults {

namespace fs = std::filesystem;
using test::readFile;

namespace {

constexpr const char* noteName = "user.velmora.beginnings";

std::string noteOn(const fs::path& folder) {
    char text[1024];
    const ssize_t length = ::getxattr(folder.c_str(), noteName, text, sizeof text);
    return length < 0 ? "" : std::string(text, static_cast<std::size_t>(length));
}

test::Surroundings surroundingsIn(const fs::path& folder) {
    return {test::regionOf("en_US.UTF-8", "America/New_York"), folder, folder / "config"};
}

}  // namespace

Tree treeOf(const fs::path& folder) {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string path = entry.path().lexically_relative(folder).string();
        if (entry.is_regular_file()) {
            tree[path] = readFile(entry.path());
        } else if (const std::string note = noteOn(entry.path()); !note.empty()) {
            tree[path] = note;
        }
    }
    return tree;
}

void restore(const fs::path& from, const fs::path& to) {
    for (const char* part : {dataFolder, earlierFolder}) {
        if (!fs::exists(from / part)) {
            fs::remove_all(to / part);
            continue;
        }
        fs::create_directories(to / part);
        for (const auto& entry : fs::directory_iterator(to / part)) {
            fs::remove_all(entry.path());
        }
        const std::string note = noteOn(from / part);
        if (note.empty()) {
            ::removexattr((to / part).c_str(), noteName);
        } else {
            ::setxattr((to / part).c_str(), noteName, note.data(), note.size(), 0);
        }
        for (const auto& entry : fs::directory_iterator(from / part)) {
            const fs::path copy = to / part / entry.path().filename();
            fs::copy_file(entry.path(), copy);
            fs::last_write_time(copy, fs::last_write_time(entry.path()));
        }
    }
}

void restoreFound(Found found, const fs::path& household, const fs::path& to) {
    restore(household, to);
    if (found != Found::Household) {
        fs::remove_all(to / earlierFolder);
    }
    if (found == Found::Nothing) {
        fs::remove_all(to / dataFolder);
    }
}

Run::Run(const fs::path& folder) : m_session(surroundingsIn(folder), [](const test::Json&) {}) {}

void Run::operator()(const std::vector<std::string>& commands, bool mustSucceed) {
    for (const std::string& line : commands) {
        const auto words = std::get<runner::Words>(runner::splitLine(line));
        const auto command = runner::parseCommand(words, m_session.platform.localTime);
        const test::Json result = runner::runCommand(m_session, std::get<runner::Command>(command));
        if (mustSucceed && !result["ok"].get<bool>()) {
            std::cerr << line << ": " << result.dump() << '\n';
            std::_Exit(EXIT_FAILURE);
        }
    }
}

int inProcess(const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        std::_Exit(EXIT_SUCCESS);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

Tree dataFilesOf(const Tree& tree) {
    Tree files;
    for (const HouseholdFile& file : householdFiles()) {
        const auto found = tree.find(std::string(dataFolder) + '/' + std::string(file.name));
        files[std::string(file.name)] = found == tree.end() ? "missing" : found->second;
    }
    return files;
}

std::string replacedAndNotKept(const Tree& before, const Tree& left) {
    const Tree files = dataFilesOf(left);
    for (const auto& [name, bytes] : dataFilesOf(before)) {
        const auto holdsIt = [&bytes = bytes](const auto& file) {
            return file.first.starts_with(std::string(earlierFolder) + '/') && file.second == bytes;
        };
        if (files.at(name) != bytes && std::ranges::none_of(left, holdsIt)) {
            return name + " was replaced and not kept";
        }
    }
    return {};
}

std::string wrongFiles(const Tree& wholeBefore, const Tree& wholeAfter, const Tree& left) {
    const Tree before = dataFilesOf(wholeBefore);
    const Tree after = dataFilesOf(wholeAfter);
    int changes = 0;
    for (const auto& [name, bytes] : dataFilesOf(left)) {
        if (bytes != before.at(name) && bytes != after.at(name)) {
            return name + " is neither the old nor the new one";
        }
        changes += before.at(name) != after.at(name) ? 1 : 0;
    }
    // What several files of which were exchanged can be had back from what is kept.
    return changes > 1 ? replacedAndNotKept(wholeBefore, left) : std::string();
}

bool offersWholeStates(const fs::path& folder) {
    const int status = inProcess([&] {
        const Environment nextDay{Date::fromSecondsSince1970(1709917200), Region("en_US", "America/New_York")};
        for (const EarlierState& state : earlierStatesOf(folder / dataFolder, nextDay, LocalizedStrings()).states) {
            if (std::ranges::any_of(state.contents, [](const auto& content) { return !content; })) {
                std::_Exit(EXIT_FAILURE);
            }
        }
    });
    return status == EXIT_SUCCESS;
}

std::string wrongAfterwards(const fs::path& live, const fs::path& check) {
    restore(live, check);
    const int status = inProcess([&] {
        Run run(check);
        run({"clock 2024-03-08T12:00:00"});
        run(startAndWriteAll());
    });
    if (status != EXIT_SUCCESS) {
        return "the next start and write end with " + std::to_string(status);
    }
    const Tree left = treeOf(check / dataFolder);
    if (left.size() != householdFileCount) {
        return "something is left beside the data files";
    }
    for (const auto& [name, bytes] : left) {
        const auto records = recordsFromBytes(bytes);
        const auto old = copyArrayFromDataFile(live / dataFolder, name);
        if (!records || !old || records->size() != old->size() + 1) {
            return name + " did not gain the next record";
        }
    }
    for (const auto& entry : fs::directory_iterator(check / "Velmora-earlier")) {
        if (!keptContentOfName(entry.path().filename().native()) || !recordsFromBytes(readFile(entry.path()))) {
            return entry.path().filename().string() + " is no kept content";
        }
    }
    return {};
}

}  // namespace kpx::faults
