#include "fuzz/ThrowAwayFolder.h"
#include "reminders/ReminderFolder.h"
#include "reminders/Schedule.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// The input is the name of a reminder's file up to the first line break, and the rest its content. A name that is
// read is written the same way again; a content that is none is set aside and not lost.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kpx::ThrowAwayFolder folder;
    static const kpx::ReminderFolder reminders(folder.path());
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const auto named = kpx::reminderFromFileName(bytes.substr(0, end));
    if (named && kpx::reminderFromFileName(kpx::fileNameFromReminder(*named)) != named) {
        std::abort();
    }
    kpx::Reminder reminder;
    reminder.identifier = "fuzz";
    const std::string name = kpx::fileNameFromReminder(reminder);
    folder.write(name, bytes.substr(std::min(end + 1, bytes.size())));
    const bool isWhole = reminders.read(reminder).state == kpx::FoundContent::State::Whole;
    if (isWhole != std::filesystem::exists(folder.path() / name) ||
        isWhole == std::filesystem::exists(folder.path() / (name + ".damaged"))) {
        std::abort();
    }
    std::filesystem::remove(folder.path() / (name + ".damaged"));
    folder.write("server", bytes);
    static_cast<void>(reminders.server());
    return 0;
}
