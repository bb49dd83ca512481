#pragma once

#include "core/DataFilesReplacement.h"
#include "reminders/Schedule.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kpx {

/// What a reminder says. Bytes as they were given, carriage returns included.
struct ReminderContent {
    std::string title;
    std::string text;
    bool sound = false;
    bool operator==(const ReminderContent&) const = default;
};

/// The schedule on disk: one file for each reminder, a property list of its content, named after its state
/// (Schedule.h). So ten thousand reminders cost no more memory than their names, a damaged file harms no
/// other reminder, and a change of state is one rename.
///
/// A file that cannot be read is renamed out of the way, never overwritten and never deleted.
class ReminderFolder {
public:
    /// Makes the folder and what is missing above it, readable by the user only. Waits while another
    /// process keeps the schedule: an agent of the same user in another session would deliver all of it
    /// a second time. Null when there can be no such folder.
    static std::optional<ReminderFolder> open(std::filesystem::path path);

    /// Whether any reminder is scheduled there, whoever keeps the schedule.
    static bool holdsAny(const std::filesystem::path& path);

    /// All reminders, in the order in which they were scheduled.
    std::vector<Reminder> load() const;

    /// Null when the file is damaged or gone; it is then set aside.
    std::optional<ReminderContent> read(const Reminder& reminder) const;

    // Each answers whether it took place. Only then has the reminder its new state; after add(), remove() and
    // synchronize() it has it for good, whatever happens to the machine.
    [[nodiscard]] bool add(const Reminder& reminder, const ReminderContent& content) const;
    [[nodiscard]] bool remove(const Reminder& reminder) const;
    /// Survives the death of the process at once, that of the machine from the next synchronize() on.
    [[nodiscard]] bool change(const Reminder& from, const Reminder& to) const;
    bool synchronize() const;

    /// The notification server which the numbers in the names belong to; "" when none is noted.
    std::string server() const;
    void setServer(const std::string& server) const;

private:
    ReminderFolder(std::filesystem::path path, FileDescriptor folder, FileDescriptor lock)
        : m_path(std::move(path)), m_folder(std::move(folder)), m_lock(std::move(lock)) {}

    std::filesystem::path m_path;
    FileDescriptor m_folder;
    FileDescriptor m_lock;
};

}  // namespace kpx
