#include "reminders/ReminderFolder.h"

#include "files/FileReplacement.h"
#include "files/FolderLock.h"
#include "files/WholeFile.h"
#include "plist/PropertyList.h"
#include "values/Record.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <system_error>
#include <thread>

namespace kpx {

namespace {

constexpr const char* lockName = "lock";
constexpr const char* serverName = "server";
constexpr const char* damagedEnd = ".damaged";
/// Far more than any text of ours: what is longer is no reminder.
constexpr std::size_t longestFile = 16U << 20U;

FileDescriptor openFolder(const std::filesystem::path& path) {
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

/// Keeps the others out of the folder for the length of one step, so that a listing and what follows from it belong
/// together. Whoever holds it lets go within microseconds; a holder that was stopped in between holds nobody up.
class Turn {
public:
    explicit Turn(const std::filesystem::path& path) : m_folder(openFolder(path)) {
        using namespace std::chrono_literals;
        constexpr int mostTries = 200;
        for (int tries = 0; m_folder && tries < mostTries; ++tries) {
            if (tryToLock(m_folder)) {
                return;
            }
            std::this_thread::sleep_for(5ms);
        }
    }

private:
    FileDescriptor m_folder;
};

bool makePrivateFolders(const std::filesystem::path& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return true;
    }
    if (path.has_parent_path() && path != path.parent_path() && !makePrivateFolders(path.parent_path())) {
        return false;
    }
    return ::mkdir(path.c_str(), S_IRWXU) == 0 || std::filesystem::is_directory(path, error);
}

/// None when the folder cannot be read.
std::optional<std::vector<Reminder>> remindersIn(const std::filesystem::path& path) {
    std::vector<Reminder> reminders;
    std::error_code error;
    std::filesystem::directory_iterator entry(path, error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        if (const auto reminder = reminderFromFileName(entry->path().filename().string())) {
            reminders.push_back(*reminder);
        }
    }
    if (error && error != std::errc::no_such_file_or_directory) {
        return std::nullopt;
    }
    // Identifiers begin with the time at which they were given.
    std::ranges::sort(reminders, {}, &Reminder::identifier);
    return reminders;
}

/// What is known of an identifier: that it is not there is known only where the folder can be read.
struct Search {
    bool isKnown = false;
    std::optional<Reminder> found;
};

Search searchIn(const std::filesystem::path& path, std::string_view identifier) {
    const auto reminders = remindersIn(path);
    if (!reminders) {
        return {};
    }
    const auto found = std::ranges::find(*reminders, identifier, &Reminder::identifier);
    return {true, found == reminders->end() ? std::nullopt : std::optional(*found)};
}

std::optional<ReminderContent> contentFromBytes(std::string_view bytes) {
    const auto value = readPropertyList(bytes);
    const Record* record = value ? value->as<Record>() : nullptr;
    const auto title = record ? record->text("title") : std::nullopt;
    const auto text = record ? record->text("text") : std::nullopt;
    if (!title || !text) {
        return std::nullopt;
    }
    const Value* sound = record->find("sound");
    const bool* sounds = sound ? sound->as<bool>() : nullptr;
    return ReminderContent{title->string(), text->string(), sounds && *sounds,
                           static_cast<int>(record->integer("lead"))};
}

bool write(const std::filesystem::path& file, const ReminderContent& content) {
    const auto bytes = writePropertyList(Record{{"title", content.title},
                                                {"text", content.text},
                                                {"sound", content.sound},
                                                {"lead", std::int64_t(content.lead)}});
    return bytes && replaceFile(file, *bytes);
}

}  // namespace

std::string newReminderIdentifier() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    std::random_device random;
    char text[32];
    std::snprintf(text, sizeof text, "%012llx%08x%08x",
                  static_cast<unsigned long long>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()),
                  random(), random());
    return text;
}

std::filesystem::path remindersFolder() {
    const auto folderIn = [](const char* variable) {
        const char* value = std::getenv(variable);
        const std::filesystem::path folder = value ? value : "";
        return folder.is_absolute() ? folder : std::filesystem::path();
    };
    if (const auto state = folderIn("XDG_STATE_HOME"); !state.empty()) {
        return state / "Velmora/reminders";
    }
    const auto home = folderIn("HOME");
    return home.empty() ? home : home / ".local/state/Velmora/reminders";
}

bool ReminderFolder::make() const { return makePrivateFolders(m_path); }

std::optional<std::vector<Reminder>> ReminderFolder::load() const {
    const Turn turn(m_path);
    return remindersIn(m_path);
}

std::optional<Reminder> ReminderFolder::find(std::string_view identifier) const {
    const Turn turn(m_path);
    return searchIn(m_path, identifier).found;
}

std::optional<Reminder> ReminderFolder::findByText(std::string_view text) const {
    std::optional<Reminder> found;
    for (const Reminder& reminder : load().value_or(std::vector<Reminder>())) {
        if (reminder.phase == Phase::Withdrawn || isStanding(reminder) || (found && !reminder.deliveredDay)) {
            continue;
        }
        if (const FoundContent content = read(reminder);
            content.state == FoundContent::State::Whole && content.content.text == text) {
            found = reminder;
        }
        if (found && found->deliveredDay) {
            break;
        }
    }
    return found;
}

FoundContent ReminderFolder::read(const Reminder& reminder) const {
    const std::string name = fileNameFromReminder(reminder);
    const WholeFile file = readWholeFile(m_path / name, longestFile);
    if (file.state != WholeFile::State::Read) {
        return {file.state == WholeFile::State::Missing ? FoundContent::State::Gone : FoundContent::State::Unreadable,
                {}};
    }
    if (const auto content = contentFromBytes(file.bytes)) {
        return {FoundContent::State::Whole, *content};
    }
    rename(name, name + damagedEnd);
    return {FoundContent::State::Damaged, {}};
}

bool ReminderFolder::add(const Reminder& reminder, const ReminderContent& content) const {
    if (!make()) {
        return false;
    }
    const Turn turn(m_path);
    const Search search = searchIn(m_path, reminder.identifier);
    return search.isKnown &&
           (search.found || (write(m_path / fileNameFromReminder(reminder), content) && synchronize()));
}

bool ReminderFolder::withdraw(std::string_view identifier) const {
    const Turn turn(m_path);
    const auto [isKnown, reminder] = searchIn(m_path, identifier);
    if (!reminder || reminder->phase == Phase::Withdrawn) {
        return isKnown;
    }
    if (reminder->phase != Phase::Shown) {
        return unlink(*reminder);
    }
    Reminder withdrawn = *reminder;
    withdrawn.phase = Phase::Withdrawn;
    return rename(fileNameFromReminder(*reminder), fileNameFromReminder(withdrawn)) && synchronize();
}

bool ReminderFolder::remove(const Reminder& reminder) const {
    const Turn turn(m_path);
    return unlink(reminder);
}

bool ReminderFolder::change(const Reminder& from, const Reminder& to) const {
    if (from == to) {
        return true;
    }
    const Turn turn(m_path);
    return rename(fileNameFromReminder(from), fileNameFromReminder(to));
}

bool ReminderFolder::unlink(const Reminder& reminder) const {
    const int result = ::unlink((m_path / fileNameFromReminder(reminder)).c_str());
    return (result == 0 || errno == ENOENT) && synchronize();
}

bool ReminderFolder::rename(const std::string& from, const std::string& to) const {
    return ::rename((m_path / from).c_str(), (m_path / to).c_str()) == 0;
}

bool ReminderFolder::synchronize() const { return synchronizeFolder(m_path); }

std::optional<int> ReminderFolder::standingLead() const {
    const Turn turn(m_path);
    const auto standing = searchIn(m_path, standingIdentifier).found;
    const FoundContent found = standing && standing->phase != Phase::Withdrawn ? read(*standing) : FoundContent();
    return found.state == FoundContent::State::Whole ? std::optional(found.content.lead) : std::nullopt;
}

bool ReminderFolder::setStandingLead(std::optional<int> lead, LocalTime now) const {
    if (!lead) {
        return withdraw(standingIdentifier);
    }
    if (!make()) {
        return false;
    }
    const Turn turn(m_path);
    auto [isKnown, standing] = searchIn(m_path, standingIdentifier);
    if (!isKnown) {
        return false;
    }
    if (standing && standing->phase == Phase::Withdrawn) {
        // Its notification stays on the screen: nobody is left to close it.
        if (!unlink(*standing)) {
            return false;
        }
        standing.reset();
    }
    const Reminder kept = standing.value_or(newStandingReminder(now));
    return write(m_path / fileNameFromReminder(kept), {.title = {}, .text = {}, .sound = true, .lead = *lead}) &&
           synchronize();
}

std::string ReminderFolder::server() const { return readWholeFile(m_path / serverName, longestFile).bytes; }

void ReminderFolder::setServer(const std::string& server) const {
    // Should it fail, the numbers are forgotten at the next start: clicks of notifications shown by now would
    // then go unheard, and the reminders come again the next day.
    if (server != this->server()) {
        static_cast<void>(replaceFile(m_path / serverName, server));
    }
}

void ReminderFolder::removeLeftovers() const { removeLeftOvers(m_path); }

DeliveryLock::Outcome DeliveryLock::tryToGet(const std::filesystem::path& folder) {
    if (m_descriptor) {
        return Outcome::Held;
    }
    FileDescriptor lock(::open((folder / lockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!lock) {
        return Outcome::Impossible;
    }
    if (!tryToLock(lock)) {
        return Outcome::TakenByAnother;
    }
    m_descriptor.emplace(std::move(lock));
    return Outcome::Held;
}

void DeliveryLock::waitUntilFree(const std::filesystem::path& folder) {
    const FileDescriptor lock(::open((folder / lockName).c_str(), O_RDWR | O_CLOEXEC));
    while (lock && ::flock(lock.get(), LOCK_SH) != 0 && errno == EINTR) {
    }
}

}  // namespace kpx
