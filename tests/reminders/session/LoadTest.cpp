#include "plist/PropertyList.h"
#include "tests/reminders/session/Session.h"
#include "values/Record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>

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

/// Whether each thread waits for something, and none for its turn.
bool isWaiting(qint64 process) {
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        std::ifstream stream(task.path() / "status");
        const std::string status(std::istreambuf_iterator<char>(stream), {});
        if (status.find("State:\tS") == std::string::npos) {
            return false;
        }
    }
    return true;
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
            constexpr int longerThanItLetsABurstRest = 700;
            const long before = processorTime(agent);
            letPass(longerThanItLetsABurstRest);
            return isWaiting(agent) && processorTime(agent) == before;
        },
        60000))
        << "it has read them all, and rests";
    const std::string status = "/proc/" + std::to_string(agent) + "/status";
    const std::string supervisor = "/proc/" + std::to_string(session.supervisor()) + "/status";
    // Who changes the machine's time or its /etc wakes it, so the quietest of a few spans counts.
    long fewest = std::numeric_limits<long>::max();
    long least = std::numeric_limits<long>::max();
    for (int span = 0; span < 3 && fewest > 0; ++span) {
        const long wakeUpsBefore = wakeUps(agent) + wakeUps(session.supervisor());
        const long timeBefore = processorTime(agent) + processorTime(session.supervisor());
        letPass(5000);
        fewest = std::min(fewest, wakeUps(agent) + wakeUps(session.supervisor()) - wakeUpsBefore);
        least = std::min(least, processorTime(agent) + processorTime(session.supervisor()) - timeBefore);
    }
    const long most = numberIn(status, "VmHWM:") + numberIn(supervisor, "VmHWM:");
    std::cout << count << " reminders: " << numberIn(status, "VmRSS:") << " kB, at most " << numberIn(status, "VmHWM:")
              << " kB, and " << numberIn(supervisor, "VmHWM:")
              << " kB of the process that watches over it; in 5 s of waiting " << fewest << " wake-ups and " << least
              << " ns of processor time\n";
    EXPECT_LT(most, mostKilobytes);
    EXPECT_EQ(fewest, 0);
    EXPECT_EQ(least, 0);
}

}  // namespace
}  // namespace kpx
