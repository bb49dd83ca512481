#pragma once

#include "files/FileDescriptor.h"
#include "reminders/Schedule.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// What a reminder says. Bytes as they were given, carriage returns included.
struct ReminderContent {
    std::string title;
    std::string text;
    bool sound = false;
    /// Of the standing reminder, which has no text of its own: how many days ahead it looks.
    int lead = 0;
    bool operator==(const ReminderContent&) const = default;
};

/// A reminder's content as it was found, or why it was not.
struct FoundContent {
    enum class State {
        Whole,
        Gone,        ///< withdrawn meanwhile, or its state has changed
        Unreadable,  ///< it cannot be read now: to be tried again
        Damaged,     ///< it can, and it is no reminder; it was set aside
    };
    State state = State::Unreadable;
    ReminderContent content;  ///< meaningful when whole
};

/// For a new reminder. Begins with the time, so that identifiers sort in the order in which they were given.
std::string newReminderIdentifier();

/// Where the reminders lie: the user's, whichever session he is in. Empty when no home is known.
std::filesystem::path remindersFolder();

/// The schedule on disk: one file for each reminder, a property list of its content, named after its state
/// (Schedule.h). So ten thousand reminders cost no more memory than their names, a damaged file harms no
/// other reminder, and a change of state is one rename.
///
/// The window program adds and withdraws, whichever agent delivers changes states, and both at any time: they take
/// turns, each step is one rename or one removal, and a step whose file has another name by now fails and changes
/// nothing. A file that cannot be read is renamed out of the way, never overwritten and never deleted.
class ReminderFolder {
public:
    /// The folder is made when the first reminder is added.
    explicit ReminderFolder(std::filesystem::path path) : m_path(std::move(path)) {}

    const std::filesystem::path& path() const { return m_path; }
    /// Makes it and what is missing above it, readable by the user only.
    bool make() const;

    /// All reminders, withdrawn ones too, in the order in which they were scheduled; none when the folder cannot be
    /// read now. A folder that is missing is empty.
    std::optional<std::vector<Reminder>> load() const;
    /// The one of that identifier, as it stands now.
    std::optional<Reminder> find(std::string_view identifier) const;

    /// One of that text, not withdrawn; a delivered one if there is one.
    std::optional<Reminder> findByText(std::string_view text) const;

    FoundContent read(const Reminder& reminder) const;

    // Each answers whether it took place. Only then has the reminder its new state; after add(), withdraw(),
    // remove() and synchronize() it has it for good, whatever happens to the machine.

    /// Also when a reminder of that identifier is there already: what is to be added twice is there once.
    [[nodiscard]] bool add(const Reminder& reminder, const ReminderContent& content) const;
    /// Takes it out of the schedule in whatever state it is. Whoever delivers then closes its notification.
    [[nodiscard]] bool withdraw(std::string_view identifier) const;
    [[nodiscard]] bool remove(const Reminder& reminder) const;
    /// Survives the death of the process at once, that of the machine from the next synchronize() on.
    [[nodiscard]] bool change(const Reminder& from, const Reminder& to) const;
    bool synchronize() const;

    /// Of what the standing reminder speaks; none while there is none.
    std::optional<int> standingLead() const;
    /// None switches it off. Switched on it begins with the next 08:00; another lead changes nothing about what was
    /// named already.
    [[nodiscard]] bool setStandingLead(std::optional<int> lead, LocalTime now) const;

    /// The notification server which the numbers in the names belong to; "" when none is noted.
    std::string server() const;
    void setServer(const std::string& server) const;

    /// Removes what writers that were killed left behind.
    void removeLeftovers() const;

private:
    // Within a turn of the caller's.
    bool unlink(const Reminder& reminder) const;
    bool rename(const std::string& from, const std::string& to) const;

    std::filesystem::path m_path;
};

/// The right to deliver what is scheduled: one agent has it, of whatever session. It ends with the process.
class DeliveryLock {
public:
    enum class Outcome {
        Held,
        TakenByAnother,
        Impossible,  ///< the folder cannot be written
    };
    /// Without waiting.
    Outcome tryToGet(const std::filesystem::path& folder);
    /// Returns when nobody else has it. To be called on a thread that has nothing else to do.
    static void waitUntilFree(const std::filesystem::path& folder);

private:
    std::optional<FileDescriptor> m_descriptor;
};

}  // namespace kpx
