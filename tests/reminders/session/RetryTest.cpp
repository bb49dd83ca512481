#include "agent/Agent.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "tests/reminders/session/HeldClock.h"
#include "tests/reminders/session/Neighbours.h"
#include "tests/reminders/session/Session.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>

namespace kpx {
namespace {

using namespace std::chrono_literals;

const QStringList plain = {QStringLiteral("body"), QStringLiteral("actions")};
const QString text = QStringLiteral("text");
const LocalDay day = *dayFromText("2026-11-21");

/// The agent within this process, with the time in the test's hands.
class Retry : public testing::Test {
protected:
    Retry() {
        EXPECT_TRUE(
            m_folder.add({.identifier = "a1", .firstDay = day, .deliveredDay = std::nullopt}, {"title", "text", true}));
    }
    void startAgent() {
        m_agent = std::make_unique<Agent>(m_session.connect(), m_folder, m_clock, RefillSources{m_data, {}},
                                          [] { return Region("en_US", "UTC"); });
        settle();
    }
    void settle() { m_session.settle(); }
    /// What becomes due on the way has its answer before time goes on.
    void pass(std::chrono::seconds time) {
        bool isDone = false;
        while (!isDone) {
            time -= m_clock.passToNext(time);
            isDone = !m_clock.doNext() && time == 0s;
            settle();
        }
    }
    Reminder only() { return m_folder.load().value_or(std::vector<Reminder>(1)).front(); }

    Session m_session;
    NotificationDaemonDouble m_daemon{m_session.connect(), plain};
    ApplicationDouble m_application{m_session.connect()};
    HeldClock m_clock{{day, 7h + 59min + 59s}};
    ReminderFolder m_folder{m_session.scheduleFolder()};
    std::filesystem::path m_data = m_session.folder() / "data" / dataFolderName;
    std::unique_ptr<Agent> m_agent;
};

TEST_F(Retry, ARefusalIsFollowedByOneTwoFiveTenAndFifteenMinutes) {
    m_daemon.appear();
    m_daemon.isRefusing = true;
    startAgent();
    EXPECT_EQ(m_daemon.refused, 0);
    pass(1s);
    ASSERT_EQ(m_daemon.refused, 1);
    int refused = 1;
    for (const auto pause : {1min, 2min, 5min, 10min, 15min, 15min}) {
        pass(pause - 1s);
        EXPECT_EQ(m_daemon.refused, refused) << pause.count();
        pass(1s);
        EXPECT_EQ(m_daemon.refused, ++refused) << pause.count();
    }
    EXPECT_EQ(only().deliveredDay, std::nullopt);
    m_daemon.isRefusing = false;
    pass(15min);
    EXPECT_EQ(m_daemon.timesShown(text), 1);
    EXPECT_EQ(only().deliveredDay, day);
    pass(3h);
    EXPECT_EQ(m_daemon.shown.size(), 1U);
    EXPECT_TRUE(m_application.windows.empty());
}

TEST_F(Retry, WhenTheDayIsOverTheNextEightBringsTheNext) {
    m_daemon.appear();
    m_daemon.isRefusing = true;
    startAgent();
    pass(1s + 15h + 59min);
    ASSERT_GT(m_daemon.refused, 60) << "four an hour";
    const int refused = m_daemon.refused;
    m_daemon.isRefusing = false;
    pass(1min + 7h + 59min);
    EXPECT_EQ(m_daemon.refused, refused);
    EXPECT_TRUE(m_daemon.shown.empty()) << "nobody is woken at night";
    pass(1min);
    EXPECT_EQ(m_daemon.timesShown(text), 1);
}

TEST_F(Retry, NoAnswerWithinHalfAMinuteIsARefusal) {
    m_daemon.appear();
    m_daemon.isSilent = true;
    startAgent();
    pass(1s);
    ASSERT_EQ(m_daemon.silentlyTaken, 1);
    pass(30s);
    EXPECT_EQ(only().deliveredDay, std::nullopt);
    m_daemon.isSilent = false;
    pass(60s);
    EXPECT_EQ(m_daemon.timesShown(text), 1);
    EXPECT_EQ(only().phase, Phase::Shown);
}

TEST_F(Retry, TheButtonSpeaksTheUsersLanguage) {
    const std::filesystem::path table = m_session.folder() / "resources/de.lproj/Localizable.strings";
    std::filesystem::create_directories(table.parent_path());
    std::ofstream(table) << "\"Show\" = \"Zeigen\";";
    m_daemon.appear();
    m_agent = std::make_unique<Agent>(m_session.connect(), m_folder, m_clock,
                                      RefillSources{.dataFolder = {}, .resources = m_session.folder() / "resources"},
                                      [] { return Region("de_DE", "UTC"); });
    settle();
    pass(1s);
    ASSERT_EQ(m_daemon.shown.size(), 1U);
    EXPECT_EQ(m_daemon.shown.front().actions.at(1), QStringLiteral("Zeigen"));
}

TEST_F(Retry, TextsAreReadFromTheRightWhereTheLanguageHasSome) {
    const std::filesystem::path table = m_session.folder() / "resources/he.lproj/Localizable.strings";
    m_daemon.appear();
    m_agent = std::make_unique<Agent>(m_session.connect(), m_folder, m_clock,
                                      RefillSources{.dataFolder = {}, .resources = m_session.folder() / "resources"},
                                      [] { return Region("he_IL", "UTC"); });
    settle();
    pass(1s);
    ASSERT_EQ(m_daemon.shown.size(), 1U);
    EXPECT_EQ(m_daemon.shown.back().body, QStringLiteral("text")) << "it is English";
    std::filesystem::create_directories(table.parent_path());
    std::ofstream(table) << "\"Show\" = \"הצג\";";
    pass(24h);
    ASSERT_EQ(m_daemon.shown.size(), 2U);
    EXPECT_EQ(m_daemon.shown.back().body, QStringLiteral("\u200Ftext"));
}

TEST_F(Retry, AServerThatComesGetsItAtOnce) {
    startAgent();
    pass(1s + 30min);
    EXPECT_EQ(only().deliveredDay, std::nullopt);
    m_daemon.appear();
    EXPECT_TRUE(waitUntil([&] { return m_daemon.timesShown(text) == 1; }));
}

TEST_F(Retry, WithoutAnyServerTheProgramShowsItAtTheThirdTry) {
    m_application.appear();
    startAgent();
    pass(1s);
    pass(1min);
    EXPECT_TRUE(m_application.windows.empty());
    pass(2min);
    ASSERT_EQ(m_application.windows.size(), 1U);
    EXPECT_EQ(m_application.windows.front().text, "text");
    EXPECT_EQ(m_application.windows.front().title, "title");
    EXPECT_EQ(only().deliveredDay, day);
    m_daemon.appear();
    settle();
    EXPECT_TRUE(m_daemon.shown.empty()) << "once that window stands, the day is done";
    m_daemon.disappear();
    pass(23h + 57min);
    pass(3min);
    EXPECT_EQ(m_application.windows.size(), 2U) << "tomorrow it comes again";
}

TEST_F(Retry, WhatCannotBeReadForAMomentIsReadAgain) {
    m_daemon.appear();
    const auto file = m_session.scheduleFolder() / fileNameFromReminder(only());
    std::filesystem::rename(file, m_session.folder() / "elsewhere");
    std::filesystem::create_symlink(file, file);
    startAgent();
    pass(1s);
    EXPECT_TRUE(m_daemon.shown.empty());
    std::filesystem::rename(m_session.folder() / "elsewhere", file);
    pass(1min);
    EXPECT_EQ(m_daemon.timesShown(text), 1);
}

TEST_F(Retry, AHistoryThatCannotBeReadForAMomentIsReadAgain) {
    m_daemon.appear();
    ASSERT_TRUE(m_folder.remove(only()));
    ASSERT_TRUE(m_folder.setStandingLead(3, {day, 7h}));
    const auto history = m_data / prescriptionHistoryFile;
    makeDataFolder(m_data);
    std::filesystem::create_directory(history);
    startAgent();
    pass(1s);
    EXPECT_TRUE(m_daemon.shown.empty());
    std::filesystem::remove(history);
    ASSERT_TRUE(writeArray(Records{Record{{MHPatientKey, "Ann"},
                                          {MHDrugKey, "Lisinopril"},
                                          {MHDispenseDateKey, "20261101"},
                                          {MHDaysSupplyKey, std::int64_t(20)},
                                          {MHRefillsRemainKey, std::int64_t(2)},
                                          {MHExpireDateKey, "20301231"}}},
                           m_data, prescriptionHistoryFile));
    pass(1min);
    ASSERT_EQ(m_daemon.shown.size(), 1U);
    EXPECT_EQ(m_daemon.shown.front().title.toStdString(), "Refills to order");
    EXPECT_EQ(m_daemon.shown.front().body.toStdString(), "Lisinopril for Ann: Nov 21, 2 refills left");
}

TEST_F(Retry, ADamagedHistoryIsSilent) {
    m_daemon.appear();
    ASSERT_TRUE(m_folder.remove(only()));
    ASSERT_TRUE(m_folder.setStandingLead(3, {day, 7h}));
    makeDataFolder(m_data);
    std::ofstream(m_data / prescriptionHistoryFile) << "rubbish";
    startAgent();
    pass(1h);
    EXPECT_TRUE(m_daemon.shown.empty());
    EXPECT_EQ(only().deliveredDay, day);
    std::ifstream file(m_data / prescriptionHistoryFile);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "rubbish");
}

TEST_F(Retry, WhatTheDiskDoesNotTakeIsDeliveredFromMemoryAndWrittenLater) {
    m_daemon.appear();
    std::filesystem::remove_all(m_session.scheduleFolder());
    std::ofstream(m_session.scheduleFolder()) << "in the way";
    startAgent();
    EXPECT_EQ(m_agent->Schedule(QStringLiteral("b2"), "title", "held", QStringLiteral("2026-11-21"), true),
              QStringLiteral("b2"));
    settle();
    pass(1s);
    EXPECT_EQ(m_daemon.timesShown(QStringLiteral("held")), 1);
    std::filesystem::remove(m_session.scheduleFolder());
    pass(1min);
    ASSERT_EQ(m_session.reminders().size(), 1U);
    EXPECT_EQ(only().identifier, "b2");
    EXPECT_EQ(only().deliveredDay, day);
    pass(23h + 59min);
    EXPECT_EQ(m_daemon.timesShown(QStringLiteral("held")), 2) << "the next day";
}

TEST_F(Retry, WhatOnlyMemoryHoldsCanBeTakenBack) {
    m_daemon.appear();
    std::filesystem::remove_all(m_session.scheduleFolder());
    std::ofstream(m_session.scheduleFolder()) << "in the way";
    startAgent();
    m_agent->Schedule(QStringLiteral("b2"), "title", "held", QStringLiteral("2026-11-21"), true);
    std::filesystem::remove(m_session.scheduleFolder());
    m_agent->RemoveScheduled(QStringLiteral("b2"), {});
    pass(2h);
    EXPECT_EQ(m_daemon.timesShown(QStringLiteral("held")), 0);
    EXPECT_TRUE(m_session.reminders().empty());
}

TEST_F(Retry, ADiskFullForHoursCostsOneTryAMinute) {
    m_daemon.appear();
    std::filesystem::remove_all(m_session.scheduleFolder());
    std::ofstream(m_session.scheduleFolder()) << "in the way";
    startAgent();
    for (int time = 0; time < 20; ++time) {
        m_agent->Schedule(QStringLiteral("b2"), "title", "held", QStringLiteral("2026-11-21"), true);
        pass(1min);
    }
    EXPECT_LE(m_clock.callsToCome(), 4U);
}

TEST_F(Retry, TheClockMayBeSetAsOneLikes) {
    m_daemon.appear();
    startAgent();
    pass(1s);
    ASSERT_EQ(m_daemon.timesShown(text), 1);
    m_clock.set({day, 6h});
    pass(4h);
    EXPECT_EQ(m_daemon.timesShown(text), 1) << "set back, and eight again";
    m_clock.set({day - std::chrono::days(1), 22h});
    pass(11h);
    EXPECT_EQ(m_daemon.timesShown(text), 1) << "flown west";
    m_clock.set({day + std::chrono::days(1), 8h});
    settle();
    EXPECT_EQ(m_daemon.timesShown(text), 2);
    m_clock.set({day + std::chrono::days(40), 9h});
    settle();
    EXPECT_EQ(m_daemon.timesShown(text), 3) << "forty days missed come once";
    m_clock.set({day + std::chrono::days(2), 7h});
    pass(1h);
    EXPECT_EQ(m_daemon.timesShown(text), 4) << "a clock that was wrong silences nothing";
}

}  // namespace
}  // namespace kpx
