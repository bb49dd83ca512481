#pragma once

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

/// The bytes of every file below a folder, by its path there.
using Tree = std::map<std::string, std::string>;

Tree treeOf(const std::filesystem::path& folder);

/// Makes both folders there what they are here, the times of the files included.
void restore(const std::filesystem::path& from, const std::filesystem::path& to);

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

/// What is wrong with the next start in the folder, and the next write of each file, tried on a copy; empty when
/// nothing is.
std::string wrongAfterwards(const std::filesystem::path& live, const std::filesystem::path& check);

}  // namespace kpx::faults
