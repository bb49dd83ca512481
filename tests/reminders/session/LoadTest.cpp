#include "plist/PropertyList.h"
#include "tests/reminders/session/Session.h"
#include "values/Record.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <sstream>

namespace kpx {
namespace {

/// The number after that word in a file of /proc; the sum over the process's threads when it is per thread.
long numberIn(const std::filesystem::path& file, const std::string& word) {
    std::ifstream stream(file);
    std::string line;
    while (std::getline(stream, line)) {
        if (line.starts_with(word)) {
            return std::stol(line.substr(word.size()));
        }
    }
    ADD_FAILURE() << file << " tells no " << word;
    return 0;
}

long wakeUps(qint64 process) {
    long sum = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        sum += numberIn(task.path() / "status", "voluntary_ctxt_switches:");
    }
    return sum;
}

/// In the scheduler's nanoseconds, over all threads.
long processorTime(qint64 process) {
    long sum = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        long time = 0;
        std::ifstream(task.path() / "schedstat") >> time;
        sum += time;
    }
    return sum;
}

TEST(Load, TenThousandRemindersWaitInLittleMemoryAndNoTime) {
    constexpr int count = 10000;
    constexpr long mostKilobytes = 40 * 1024;
    Session session;
    std::filesystem::create_directories(session.scheduleFolder());
    const std::string text = "Prescription: Lisinopril\r for patient: Ann\r is due";
    const std::string content = *writePropertyList(Record{{"title", "title"}, {"text", text}, {"sound", true}});
    for (int number = 0; number < count; ++number) {
        const Reminder reminder{.identifier = "019aa5f2c7" + std::to_string(100000 + number) + "0123456789ab",
                                .firstDay = *dayFromText("2026-11-22"),
                                .deliveredDay = std::nullopt};
        std::ofstream(session.scheduleFolder() / fileNameFromReminder(reminder)) << content;
    }
    session.startAgent(QStringLiteral("2026-11-21 12:00:00"));
    session.schedule(QByteArray::fromStdString(text), QStringLiteral("2026-11-22")).waitForFinished();

    const qint64 agent = session.agentProcess();
    ASSERT_TRUE(waitUntil(
        [&] {
            const long before = processorTime(agent);
            letPass(700);
            return processorTime(agent) == before;
        },
        60000))
        << "it has read them all, and rests";
    const std::string status = "/proc/" + std::to_string(agent) + "/status";
    const std::string supervisor = "/proc/" + std::to_string(session.supervisor()) + "/status";
    const long wakeUpsBefore = wakeUps(agent) + wakeUps(session.supervisor());
    const long timeBefore = processorTime(agent) + processorTime(session.supervisor());
    letPass(5000);
    const long wakeUpsAfter = wakeUps(agent) + wakeUps(session.supervisor());
    const long timeAfter = processorTime(agent) + processorTime(session.supervisor());
    const long most = numberIn(status, "VmHWM:") + numberIn(supervisor, "VmHWM:");
    std::cout << count << " reminders: " << numberIn(status, "VmRSS:") << " kB, at most " << numberIn(status, "VmHWM:")
              << " kB, and " << numberIn(supervisor, "VmHWM:")
              << " kB of the process that watches over it; in 5 s of waiting " << wakeUpsAfter - wakeUpsBefore
              << " wake-ups and " << timeAfter - timeBefore << " ns of processor time\n";
    EXPECT_LT(most, mostKilobytes);
    EXPECT_EQ(wakeUpsAfter, wakeUpsBefore);
    EXPECT_EQ(timeAfter, timeBefore);
}

}  // namespace
}  // namespace kpx
