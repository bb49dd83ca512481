#include "reminders/ReminderFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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
    }
    ~ReminderFolderTest() override { std::filesystem::remove_all(m_base); }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            result.push_back(entry.path().filename());
        }
        return result;
    }

    std::filesystem::path m_base;
    std::filesystem::path m_path;
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
    const auto folder = ReminderFolder::open(m_path);
    ASSERT_TRUE(folder);
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 40));
        const ReminderContent content{"Title <i>", text, true};
        ASSERT_TRUE(folder->add(m_reminder, content));
        EXPECT_EQ(folder->read(m_reminder), content);
        EXPECT_EQ(folder->load(), std::vector{m_reminder});
        ASSERT_TRUE(folder->remove(m_reminder));
        EXPECT_TRUE(folder->load().empty());
    }
}

TEST_F(ReminderFolderTest, NobodyElseCanRead) {
    const auto folder = ReminderFolder::open(m_path);
    ASSERT_TRUE(folder && folder->add(m_reminder, {"title", "text", false}));
    struct stat status {};
    ASSERT_EQ(::stat((m_path / fileNameFromReminder(m_reminder)).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(::stat(m_path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(ReminderFolderTest, AChangeIsSeenByTheNextRun) {
    Reminder shown = m_reminder;
    shown.deliveredDay = shown.firstDay;
    shown.phase = Phase::Shown;
    shown.notification = 7;
    {
        const auto folder = ReminderFolder::open(m_path);
        ASSERT_TRUE(folder && folder->add(m_reminder, {"title", "text", false}));
        folder->setServer("bus/:1.7");
        ASSERT_TRUE(folder->change(m_reminder, shown));
        EXPECT_FALSE(folder->change(m_reminder, shown)) << "there is no file of that name any more";
    }
    const auto folder = ReminderFolder::open(m_path);
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->load(), std::vector{shown});
    EXPECT_EQ(folder->server(), "bus/:1.7");
    EXPECT_TRUE(ReminderFolder::holdsAny(m_path));
}

TEST_F(ReminderFolderTest, ADamagedFileIsSetAsideWithItsBytes) {
    const auto folder = ReminderFolder::open(m_path);
    ASSERT_TRUE(folder && folder->add(m_reminder, {"title", "text", false}));
    const std::filesystem::path file = m_path / fileNameFromReminder(m_reminder);
    std::ofstream(file, std::ios::trunc) << "rubbish";
    EXPECT_FALSE(folder->read(m_reminder));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(folder->load().empty());
    std::ifstream aside(file.string() + ".damaged");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(aside), {}), "rubbish");
}

TEST_F(ReminderFolderTest, OnlyWhatAnAgentLeftHalfWrittenIsRemoved) {
    const auto folder = ReminderFolder::open(m_path);
    ASSERT_TRUE(folder);
    const std::string halfWritten = ".a1.2026-11-21.never.waiting.0123456789abcdef.tmp";
    std::ofstream(m_path / halfWritten) << "bpl";
    std::ofstream(m_path / "somebody's notes") << "mine";
    EXPECT_TRUE(folder->load().empty());
    EXPECT_FALSE(ReminderFolder::holdsAny(m_path));
    EXPECT_EQ(names().size(), 2U) << "the lock and the notes";
    EXPECT_TRUE(std::filesystem::exists(m_path / "somebody's notes"));
}

TEST_F(ReminderFolderTest, ComesInTheOrderOfScheduling) {
    const auto folder = ReminderFolder::open(m_path);
    ASSERT_TRUE(folder);
    std::vector<Reminder> reminders;
    for (const char* identifier : {"019a03", "019a01", "019a02"}) {
        reminders.push_back(m_reminder);
        reminders.back().identifier = identifier;
        ASSERT_TRUE(folder->add(reminders.back(), {"title", "text", false}));
    }
    EXPECT_EQ(folder->load(), (std::vector{reminders[1], reminders[2], reminders[0]}));
}

TEST_F(ReminderFolderTest, AFileInTheWayIsNoFolder) {
    std::filesystem::create_directories(m_path.parent_path());
    std::ofstream(m_path) << "in the way";
    EXPECT_FALSE(ReminderFolder::open(m_path));
}

}  // namespace
}  // namespace kpx
