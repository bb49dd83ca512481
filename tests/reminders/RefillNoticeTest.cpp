#include "reminders/RefillNotice.h"

#include "core/DataFiles.h"
#include "core/Keys.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// The next fill date of the one prescription is 21 November.
class RefillNoticeTest : public testing::Test {
protected:
    RefillNoticeTest() {
        makeDataFolder(sources.dataFolder);
        const Record fill{{MHPatientKey, "Ann"},
                          {MHDrugKey, "Lisinopril"},
                          {MHDispenseDateKey, "20261101"},
                          {MHDaysSupplyKey, std::int64_t(20)},
                          {MHRefillsRemainKey, std::int64_t(2)},
                          {MHExpireDateKey, "20301231"}};
        EXPECT_TRUE(writeArray(Records{fill}, sources.dataFolder, prescriptionHistoryFile));
    }

    RefillNotice notice(const Reminder& standing, LocalTime now) const {
        return refillNotice(standing, 0, reminders, now, sources, Region("en_US", "UTC"));
    }
    static Reminder standing(const char* deliveredDay = nullptr) {
        return {.identifier = std::string(standingIdentifier),
                .firstDay = *dayFromText("2026-11-21"),
                .deliveredDay = deliveredDay ? dayFromText(deliveredDay) : std::nullopt};
    }

    const TemporaryFolder folder;
    const RefillSources sources{folder.path() / "data", {}};
    const ReminderFolder reminders{folder.path() / "state"};
    const fs::path history = sources.dataFolder / prescriptionHistoryFile;
    const LocalTime onItsDay{*dayFromText("2026-11-21"), 8h};
};

TEST_F(RefillNoticeTest, SpeaksOfTheDaysThatItHasNotSpokenOf) {
    struct Row {
        const char* what;
        const char* delivered;
        const char* day;
        std::chrono::seconds time;
        bool speaks;
    };
    const std::vector<Row> rows = {
        {"its first time", nullptr, "2026-11-21", 8h, true},
        {"before eight it is still the day before", nullptr, "2026-11-21", 8h - 1s, false},
        {"after the day before", "2026-11-20", "2026-11-21", 20h, true},
        {"once a day", "2026-11-21", "2026-11-21", 20h, false},
        {"a day that was missed", "2026-11-20", "2026-11-22", 8h, true},
        {"not what was said", "2026-11-21", "2026-11-22", 8h, false},
        {"a clock put back", "2026-11-25", "2026-11-21", 8h, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const RefillNotice said = notice(standing(row.delivered), {*dayFromText(row.day), row.time});
        EXPECT_TRUE(said.isKnown);
        EXPECT_EQ(said.refills.has_value(), row.speaks);
        EXPECT_EQ(said.refills && said.refills->text.find("Lisinopril") != std::string::npos, row.speaks);
    }
}

TEST_F(RefillNoticeTest, LeavesOutWhatHasAReminderThatComes) {
    struct Row {
        const char* what;
        Reminder reminder;
        std::string text;
        bool speaks;
    };
    const std::string own = "Prescription: Lisinopril\r for patient: Ann\r is due";
    const LocalDay day = onItsDay.day;
    const std::vector<Row> rows = {
        {"its own", {.identifier = "a1", .firstDay = day, .deliveredDay = std::nullopt}, own, false},
        {"its own, a day late",
         {.identifier = "a1", .firstDay = day + std::chrono::days(1), .deliveredDay = std::nullopt},
         own,
         true},
        {"another's",
         {.identifier = "a1", .firstDay = day, .deliveredDay = std::nullopt},
         "Prescription: Aspirin\r for patient: Ann\r is due",
         true},
        {"no prescription's", {.identifier = "a1", .firstDay = day, .deliveredDay = std::nullopt}, "text", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ASSERT_TRUE(reminders.add(row.reminder, {"title", row.text}));
        EXPECT_EQ(notice(standing(), onItsDay).refills.has_value(), row.speaks);
        ASSERT_TRUE(reminders.withdraw("a1"));
    }
}

TEST_F(RefillNoticeTest, SaysNothingOfWhatIsDamagedOrMissing) {
    writeFile(history, "rubbish");
    EXPECT_TRUE(notice(standing(), onItsDay).isKnown);
    EXPECT_FALSE(notice(standing(), onItsDay).refills);
    fs::remove(history);
    EXPECT_TRUE(notice(standing(), onItsDay).isKnown);
    EXPECT_FALSE(notice(standing(), onItsDay).refills);
    fs::remove_all(sources.dataFolder);
    EXPECT_TRUE(notice(standing(), onItsDay).isKnown);
    EXPECT_FALSE(notice(standing(), onItsDay).refills);
    EXPECT_FALSE(fs::exists(sources.dataFolder)) << "nor is it made";
}

TEST_F(RefillNoticeTest, DoesNotKnowWhatCannotBeRead) {
    fs::remove(history);
    fs::create_symlink(history.filename(), history);
    EXPECT_FALSE(notice(standing(), onItsDay).isKnown);
    EXPECT_FALSE(notice(standing(), onItsDay).refills);
}

}  // namespace
}  // namespace kpx::test
