#pragma once

#include "tests/faults/Actions.h"
#include "tests/runner/Session.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

// What a trial of a fault needs: folders that can be put back, a session in one of them, processes of its own, and the
// rules by which what it left is judged.

namespace kpx::faults {

inline constexpr const char* dataFolder = "Velmora";
inline constexpr const char* earlierFolder = "Velmora-earlier";

/// The bytes of every file below a folder, by its path there, and what is noted on folders.
using Tree = std::map<std::string, std::string>;

Tree treeOf(const std::filesystem::path& folder);

/// Makes both folders there what they are here, the times of the files and what is noted on them included.
void restore(const std::filesystem::path& from, const std::filesystem::path& to);

/// Makes there what an action finds of a household.
void restoreFound(Found found, const std::filesystem::path& household, const std::filesystem::path& to);

/// A session of the runner in the folder; ends the process when a command cannot be carried out.
class Run {
public:
    explicit Run(const std::filesystem::path& folder);
    void operator()(const std::vector<std::string>& commands, bool mustSucceed = true);

private:
    runner::Session m_session;
};

/// How a process of its own that does the work ends: its exit status, or the negative signal.
int inProcess(const std::function<void()>& work);

/// The bytes of each data file, or "missing".
Tree dataFilesOf(const Tree& tree);

/// Names a data file whose earlier bytes are gone; empty when all that was replaced was kept.
std::string replacedAndNotKept(const Tree& before, const Tree& left);

/// What is not allowed of the data files that an action left which was cut off or met an error; empty when all is.
std::string wrongFiles(const Tree& before, const Tree& after, const Tree& left);

/// Whether no earlier state that is offered lacks a file, as it must be where all were there before anything was kept.
/// Found out in a process of its own, so that this one makes the same calls as before.
bool offersWholeStates(const std::filesystem::path& folder);

/// What is wrong with the next start in the folder, and the next write of each file, tried on a copy; empty when
/// nothing is.
std::string wrongAfterwards(const std::filesystem::path& live, const std::filesystem::path& check);

}  // namespace kpx::faults
