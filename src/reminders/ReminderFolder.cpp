#include "reminders/ReminderFolder.h"

#include "core/PropertyList.h"
#include "core/Record.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace kpx {

namespace {

constexpr const char* lockName = "lock";
constexpr const char* serverName = "server";
constexpr const char* damagedEnd = ".damaged";

std::optional<std::string> contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool makePrivateFolders(const std::filesystem::path& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return true;
    }
    if (path.has_parent_path() && path != path.parent_path() && !makePrivateFolders(path.parent_path())) {
        return false;
    }
    return ::mkdir(path.c_str(), S_IRWXU) == 0 || errno == EEXIST;
}

}  // namespace

std::optional<ReminderFolder> ReminderFolder::open(std::filesystem::path path) {
    if (!makePrivateFolders(path)) {
        return std::nullopt;
    }
    FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return std::nullopt;
    }
    FileDescriptor lock(::openat(folder.get(), lockName, O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!lock) {
        return std::nullopt;
    }
    while (::flock(lock.get(), LOCK_EX) != 0 && errno == EINTR) {
    }
    return ReminderFolder(std::move(path), std::move(folder), std::move(lock));
}

bool ReminderFolder::holdsAny(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::directory_iterator entry(path, error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        if (reminderFromFileName(entry->path().filename().string())) {
            return true;
        }
    }
    return false;
}

std::vector<Reminder> ReminderFolder::load() const {
    std::vector<Reminder> reminders;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(m_path, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (const auto reminder = reminderFromFileName(name)) {
            reminders.push_back(*reminder);
        } else if (name.starts_with('.') && name.ends_with(".tmp")) {
            ::unlinkat(m_folder.get(), name.c_str(), 0);  // the half-written file of an agent that was killed
        }
    }
    // Identifiers begin with the time at which they were given.
    std::ranges::sort(reminders, {}, &Reminder::identifier);
    return reminders;
}

std::optional<ReminderContent> ReminderFolder::read(const Reminder& reminder) const {
    const std::string name = fileNameFromReminder(reminder);
    const auto bytes = contentOf(m_path / name);
    const auto value = bytes ? readPropertyList(*bytes) : std::nullopt;
    const Record* record = value ? value->as<Record>() : nullptr;
    const auto title = record ? record->text("title") : std::nullopt;
    const auto text = record ? record->text("text") : std::nullopt;
    if (!title || !text) {
        ::renameat(m_folder.get(), name.c_str(), m_folder.get(), (name + damagedEnd).c_str());
        return std::nullopt;
    }
    const Value* sound = record->find("sound");
    const bool* sounds = sound ? sound->as<bool>() : nullptr;
    return ReminderContent{title->string(), text->string(), sounds && *sounds};
}

bool ReminderFolder::add(const Reminder& reminder, const ReminderContent& content) const {
    const auto bytes =
        writePropertyList(Record{{"title", content.title}, {"text", content.text}, {"sound", content.sound}});
    return bytes && replaceFile(m_path / fileNameFromReminder(reminder), *bytes) && synchronize();
}

bool ReminderFolder::remove(const Reminder& reminder) const {
    const int result = ::unlinkat(m_folder.get(), fileNameFromReminder(reminder).c_str(), 0);
    return (result == 0 || errno == ENOENT) && synchronize();
}

bool ReminderFolder::change(const Reminder& from, const Reminder& to) const {
    return from == to || ::renameat(m_folder.get(), fileNameFromReminder(from).c_str(), m_folder.get(),
                                    fileNameFromReminder(to).c_str()) == 0;
}

bool ReminderFolder::synchronize() const { return ::fsync(m_folder.get()) == 0; }

std::string ReminderFolder::server() const { return contentOf(m_path / serverName).value_or(""); }

void ReminderFolder::setServer(const std::string& server) const {
    // Should it fail, the numbers are forgotten at the next start: clicks of notifications shown by now would
    // then go unheard, and the reminders come again the next day.
    if (server != this->server()) {
        static_cast<void>(replaceFile(m_path / serverName, server));
    }
}

}  // namespace kpx
