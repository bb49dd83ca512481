#pragma once

#include <filesystem>
#include <string>

namespace kpx {

/// The agent's entry in a folder of programs to be started at login, its name in each language that the resources have.
std::string autostartEntry(const std::filesystem::path& program, const std::filesystem::path& resources);

/// Sees to it that the agent starts at login: where no installed entry does it, one is written to the user's
/// own autostart folder, once. An entry that the user changed, hid or removed stays as it is, but that it names this
/// program where the one that it named is gone; the folder of the schedule keeps the mark that there was one.
void startAtLogin(const std::filesystem::path& program, const std::filesystem::path& resources,
                  const std::filesystem::path& scheduleFolder);

}  // namespace kpx
