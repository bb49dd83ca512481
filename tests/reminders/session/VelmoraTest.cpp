#include "agent/Agent.h"
#include "tests/reminders/session/HeldClock.h"
#include "tests/reminders/session/Session.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

const std::string text = "Prescription: Lisinopril\r for patient: Ann\r is due";

/// The whole way, with the window program itself and a notification daemon on a screen.
class Velmora : public testing::Test {
protected:
    Velmora() { m_session.install(QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/usr/bin/dunst")); }

    void showReminder() {
        m_session.schedule(QByteArray::fromStdString(text), QStringLiteral("2026-11-21")).waitForFinished();
        ASSERT_TRUE(waitUntil([&] {
            const auto reminders = m_session.reminders();
            return reminders.size() == 1 && reminders.front().phase == Phase::Shown;
        }));
    }
    void clickIt() { m_session.run(QStringLiteral("dunstctl"), {QStringLiteral("action"), QStringLiteral("0")}); }
    bool isRunning() { return m_session.isOnBus(theProgram); }
    QString windows() {
        return m_session.run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                         QStringLiteral("--class"), QStringLiteral("velmora")});
    }
    void end() {
        m_session.killOwner(theProgram);
        EXPECT_TRUE(waitUntil([&] { return !isRunning(); }));
    }

    Session m_session;
};

TEST_F(Velmora, IsStartedByTheClickThroughTheBus) {
    m_session.install(theProgram, QStringLiteral(PROGRAM_FOLDER "/velmora"));
    m_session.startAgent(QStringLiteral("2026-11-21 12:00:00"));
    showReminder();
    EXPECT_FALSE(isRunning());
    clickIt();
    ASSERT_TRUE(waitUntil([&] { return isRunning(); }));
    EXPECT_TRUE(waitUntil([&] { return m_session.reminders().empty(); })) << "the program has withdrawn it";
    EXPECT_TRUE(waitUntil([&] { return !windows().isEmpty(); }));
    end();
}

TEST_F(Velmora, IsStartedByTheClickFromTheBuildTree) {
    m_session.startAgent(QStringLiteral("2026-11-21 12:00:00"));
    showReminder();
    clickIt();
    ASSERT_TRUE(waitUntil([&] { return isRunning(); }));
    EXPECT_TRUE(waitUntil([&] { return m_session.reminders().empty(); }));
    end();
}

TEST_F(Velmora, RunningAlreadyItTakesTheClick) {
    const auto program = m_session.start(QStringLiteral(PROGRAM_FOLDER "/velmora"));
    ASSERT_TRUE(waitUntil([&] { return isRunning() && !windows().isEmpty(); }));
    m_session.startAgent(QStringLiteral("2026-11-21 12:00:00"));
    showReminder();
    clickIt();
    EXPECT_TRUE(waitUntil([&] { return m_session.reminders().empty(); }));
    EXPECT_EQ(program->state(), QProcess::Running);
    end();
}

TEST_F(Velmora, ASecondStartRaisesTheFirst) {
    const auto first = m_session.start(QStringLiteral(PROGRAM_FOLDER "/velmora"));
    ASSERT_TRUE(waitUntil([&] { return isRunning() && !windows().isEmpty(); }));
    const auto second = m_session.start(QStringLiteral(PROGRAM_FOLDER "/velmora"));
    EXPECT_TRUE(second->waitForFinished(20000));
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(first->state(), QProcess::Running);
    end();
}

// No notification server at all: the program itself shows the reminder, and its button is the click.
TEST(VelmoraAlone, ShowsTheReminderInAWindow) {
    using namespace std::chrono_literals;
    Session session;
    session.install(theProgram, QStringLiteral(PROGRAM_FOLDER "/velmora"));
    const ReminderFolder folder(session.scheduleFolder());
    const LocalDay day = *dayFromText("2026-11-21");
    ASSERT_TRUE(folder.add({.identifier = "a1", .firstDay = day, .deliveredDay = std::nullopt}, {"title", text, true}));
    HeldClock clock({day, 8h});
    Agent agent(session.connect(), folder, clock, {}, [] { return Region("en_US", "UTC"); });
    const auto window = [&] {
        return session.run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                       QStringLiteral("--name"), QStringLiteral("^Reminder$")});
    };
    for (int minute = 0; minute < 4; ++minute) {  // at the start and after the first and the third are the three tries
        session.settle();
        clock.pass(1min);
    }
    ASSERT_TRUE(waitUntil([&] { return session.isOnBus(theProgram); }));
    ASSERT_TRUE(waitUntil([&] { return !window().isEmpty(); }));
    ASSERT_TRUE(waitUntil([&] { return folder.find("a1")->deliveredDay == day; })) << "the day is done";
    session.run(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), QStringLiteral("--sync"), window(),
                                            QStringLiteral("key"), QStringLiteral("Return")});
    EXPECT_TRUE(waitUntil([&] { return session.reminders().empty(); })) << "Show is the click";
    EXPECT_TRUE(window().isEmpty());
    session.killOwner(theProgram);
}

}  // namespace
}  // namespace kpx
