#include "reminders/ReminderFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace kpx {
namespace {

class ReminderFolderTest : public testing::Test {
protected:
    ReminderFolderTest() {
        char text[] = "/tmp/reminders-XXXXXX";
        m_base = ::mkdtemp(text);
        m_path = m_base / "state/Velmora/reminders";
        m_folder = ReminderFolder(m_path);
    }
    ~ReminderFolderTest() override { std::filesystem::remove_all(m_base); }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            result.push_back(entry.path().filename());
        }
        return result;
    }

    std::string contentOf(const std::string& name) const {
        std::ifstream file(m_path / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::vector<Reminder> loaded() const {
        const auto reminders = m_folder.load();
        EXPECT_TRUE(reminders);
        return reminders.value_or(std::vector<Reminder>());
    }
    static Reminder inPhase(Reminder reminder, Phase phase, std::uint32_t notification = 0) {
        reminder.deliveredDay = reminder.firstDay;
        reminder.phase = phase;
        reminder.notification = notification;
        return reminder;
    }

    std::filesystem::path m_base;
    std::filesystem::path m_path;
    ReminderFolder m_folder{{}};
    const Reminder m_reminder{.identifier = "a1", .firstDay = *dayFromText("2026-11-21"), .deliveredDay = std::nullopt};
};

TEST_F(ReminderFolderTest, ReadsBackExactlyWhatWasAdded) {
    const std::vector<std::string> texts = {
        "Prescription: Lisinopril\r for patient: Ann\r is due",
        "",
        "<b>&amp;</b>\n\r\n\"'",
        std::string("nul \0 within", 12),
        "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D \xE2\x80\xAE override",
        std::string(10240, 'x'),
    };
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 40));
        const ReminderContent content{"Title <i>", text, true};
        ASSERT_TRUE(m_folder.add(m_reminder, content));
        EXPECT_EQ(m_folder.read(m_reminder).content, content);
        EXPECT_EQ(loaded(), std::vector{m_reminder});
        ASSERT_TRUE(m_folder.remove(m_reminder));
        EXPECT_TRUE(loaded().empty());
    }
}

TEST_F(ReminderFolderTest, WhatCannotBeReadNowIsNotTakenForGone) {
    const LocalTime now{m_reminder.firstDay, std::chrono::hours(12)};
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    ASSERT_TRUE(m_folder.setStandingLead(3, now));
    std::filesystem::rename(m_path, m_base / "elsewhere");
    std::ofstream(m_path) << "in the way";
    EXPECT_FALSE(m_folder.withdraw(m_reminder.identifier));
    EXPECT_FALSE(m_folder.add(m_reminder, {"title", "text"}));
    EXPECT_FALSE(m_folder.setStandingLead(std::nullopt, now));
    EXPECT_FALSE(m_folder.setStandingLead(7, now));
    std::filesystem::remove(m_path);
    EXPECT_TRUE(m_folder.withdraw(m_reminder.identifier)) << "a folder that is not there holds nothing";
    std::filesystem::rename(m_base / "elsewhere", m_path);
    EXPECT_EQ(loaded().size(), 2U);
    EXPECT_EQ(m_folder.standingLead(), 3);
}

TEST_F(ReminderFolderTest, NobodyElseCanRead) {
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    struct stat status {};
    ASSERT_EQ(::stat((m_path / fileNameFromReminder(m_reminder)).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(::stat(m_path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(ReminderFolderTest, AChangeIsSeenByTheNextRun) {
    const Reminder shown = inPhase(m_reminder, Phase::Shown, 7);
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    m_folder.setServer("bus/:1.7");
    ASSERT_TRUE(m_folder.change(m_reminder, shown));
    EXPECT_FALSE(m_folder.change(m_reminder, shown)) << "there is no file of that name any more";
    const ReminderFolder next(m_path);
    EXPECT_EQ(next.load(), std::optional(std::vector{shown}));
    EXPECT_EQ(next.server(), "bus/:1.7");
}

TEST_F(ReminderFolderTest, WhatIsAddedTwiceIsThereOnce) {
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    const Reminder shown = inPhase(m_reminder, Phase::Shown, 7);
    ASSERT_TRUE(m_folder.change(m_reminder, shown));
    EXPECT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    EXPECT_EQ(loaded(), std::vector{shown});
}

// Only what stands on the screen needs somebody to take it off.
TEST_F(ReminderFolderTest, IsWithdrawnInWhateverState) {
    ASSERT_TRUE(m_folder.withdraw("a1")) << "there is none";
    for (const Phase phase : {Phase::Waiting, Phase::Posting, Phase::Clicked}) {
        ASSERT_TRUE(m_folder.add(inPhase(m_reminder, phase), {"title", "text"}));
        ASSERT_TRUE(m_folder.withdraw("a1"));
        EXPECT_TRUE(loaded().empty());
    }
    ASSERT_TRUE(m_folder.add(inPhase(m_reminder, Phase::Shown, 7), {"title", "text"}));
    ASSERT_TRUE(m_folder.withdraw("a1"));
    EXPECT_EQ(loaded(), std::vector{inPhase(m_reminder, Phase::Withdrawn, 7)});
    EXPECT_TRUE(m_folder.withdraw("a1"));
    EXPECT_EQ(m_folder.findByText("text"), std::nullopt);
}

TEST_F(ReminderFolderTest, IsFoundByItsTextADeliveredOneFirst) {
    Reminder later = inPhase(m_reminder, Phase::Waiting);
    later.identifier = "b2";
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    EXPECT_EQ(m_folder.findByText("text"), m_reminder);
    ASSERT_TRUE(m_folder.add(later, {"title", "text"}));
    EXPECT_EQ(m_folder.findByText("text"), later);
    EXPECT_EQ(m_folder.findByText("other"), std::nullopt);
}

TEST_F(ReminderFolderTest, TheStandingReminderKeepsItsLead) {
    const LocalTime morning{m_reminder.firstDay, std::chrono::hours(7)};
    const LocalTime noon{m_reminder.firstDay, std::chrono::hours(12)};
    EXPECT_EQ(m_folder.standingLead(), std::nullopt);
    ASSERT_TRUE(m_folder.setStandingLead(3, morning));
    EXPECT_EQ(m_folder.standingLead(), 3);
    EXPECT_EQ(loaded().front().firstDay, m_reminder.firstDay) << "its eight o'clock is to come";
    const Reminder shown = inPhase(loaded().front(), Phase::Shown, 7);
    ASSERT_TRUE(m_folder.change(loaded().front(), shown));
    ASSERT_TRUE(m_folder.setStandingLead(7, noon));
    EXPECT_EQ(m_folder.standingLead(), 7);
    EXPECT_EQ(loaded(), std::vector{shown}) << "what was named is not named again";
    ASSERT_TRUE(m_folder.setStandingLead(std::nullopt, noon));
    EXPECT_EQ(m_folder.standingLead(), std::nullopt);
    ASSERT_TRUE(m_folder.setStandingLead(0, noon));
    EXPECT_EQ(m_folder.standingLead(), 0);
    EXPECT_EQ(loaded().front().firstDay, m_reminder.firstDay + std::chrono::days(1));
}

TEST_F(ReminderFolderTest, ADamagedFileIsSetAsideWithItsBytes) {
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    const std::string name = fileNameFromReminder(m_reminder);
    std::ofstream(m_path / name, std::ios::trunc) << "rubbish";
    EXPECT_EQ(m_folder.read(m_reminder).state, FoundContent::State::Damaged);
    EXPECT_TRUE(loaded().empty());
    EXPECT_EQ(contentOf(name + ".damaged"), "rubbish");
    EXPECT_EQ(m_folder.read(m_reminder).state, FoundContent::State::Gone);
}

// A link to itself cannot be opened by anybody, not even by the user who may everything.
TEST_F(ReminderFolderTest, AFileThatCannotBeReadNowIsReadAgain) {
    ASSERT_TRUE(m_folder.add(m_reminder, {"title", "text"}));
    const std::filesystem::path file = m_path / fileNameFromReminder(m_reminder);
    std::filesystem::rename(file, m_path / "elsewhere");
    std::filesystem::create_symlink(file, file);
    EXPECT_EQ(m_folder.read(m_reminder).state, FoundContent::State::Unreadable);
    std::filesystem::rename(m_path / "elsewhere", file);
    EXPECT_EQ(m_folder.read(m_reminder).content.text, "text");
}

TEST_F(ReminderFolderTest, OnlyWhatAWriterLeftHalfWrittenIsRemoved) {
    ASSERT_TRUE(m_folder.make());
    const std::string halfWritten = ".a1.2026-11-21.never.waiting.0123456789abcdef.tmp";
    const std::string beingWritten = ".b2.2026-11-21.never.waiting.0123456789abcdef.tmp";
    std::ofstream(m_path / halfWritten) << "bpl";
    std::ofstream(m_path / beingWritten) << "bpl";
    std::ofstream(m_path / "somebody's notes") << "mine";
    const FileDescriptor writer(::open((m_path / beingWritten).c_str(), O_RDONLY));
    ASSERT_EQ(::flock(writer.get(), LOCK_EX | LOCK_NB), 0);
    m_folder.removeLeftovers();
    EXPECT_TRUE(loaded().empty());
    auto left = names();
    std::ranges::sort(left);
    EXPECT_EQ(left, (std::vector<std::string>{beingWritten, "somebody's notes"}));
}

TEST_F(ReminderFolderTest, ComesInTheOrderOfScheduling) {
    std::vector<Reminder> reminders;
    for (const char* identifier : {"019a03", "019a01", "019a02"}) {
        reminders.push_back(m_reminder);
        reminders.back().identifier = identifier;
        ASSERT_TRUE(m_folder.add(reminders.back(), {"title", "text"}));
    }
    EXPECT_EQ(loaded(), (std::vector{reminders[1], reminders[2], reminders[0]}));
    EXPECT_LT(newReminderIdentifier().substr(0, 12), "fff");
    EXPECT_NE(newReminderIdentifier(), newReminderIdentifier());
}

TEST_F(ReminderFolderTest, AFileInTheWayIsNoFolder) {
    std::filesystem::create_directories(m_path.parent_path());
    std::ofstream(m_path) << "in the way";
    EXPECT_FALSE(m_folder.make());
    EXPECT_FALSE(m_folder.add(m_reminder, {"title", "text"}));
    EXPECT_EQ(m_folder.load(), std::nullopt);
    DeliveryLock lock;
    EXPECT_EQ(lock.tryToGet(m_path), DeliveryLock::Outcome::Impossible);
    std::filesystem::remove(m_path);
    EXPECT_TRUE(loaded().empty()) << "a missing folder is an empty one";
}

TEST_F(ReminderFolderTest, WaitsForNoPipeAndReadsNoFolder) {
    ASSERT_TRUE(m_folder.make());
    ASSERT_EQ(::mkfifo((m_path / fileNameFromReminder(m_reminder)).c_str(), S_IRWXU), 0);
    std::filesystem::create_directory(m_path / "server");
    EXPECT_EQ(m_folder.read(m_reminder).state, FoundContent::State::Unreadable);
    EXPECT_EQ(m_folder.server(), "");
}

TEST_F(ReminderFolderTest, OneDelivers) {
    ASSERT_TRUE(m_folder.make());
    DeliveryLock second;
    {
        DeliveryLock first;
        EXPECT_EQ(first.tryToGet(m_path), DeliveryLock::Outcome::Held);
        EXPECT_EQ(first.tryToGet(m_path), DeliveryLock::Outcome::Held);
        EXPECT_EQ(second.tryToGet(m_path), DeliveryLock::Outcome::TakenByAnother);
    }
    DeliveryLock::waitUntilFree(m_path);
    EXPECT_EQ(second.tryToGet(m_path), DeliveryLock::Outcome::Held);
}

}  // namespace
}  // namespace kpx
