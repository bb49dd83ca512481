#include "tests/reminders/session/Neighbours.h"
#include "tests/reminders/session/Session.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

const QStringList plain = {QStringLiteral("body"), QStringLiteral("actions")};
const QString text = QStringLiteral("text");
const QString past = QStringLiteral("2026-11-21");

class Clock : public testing::Test {
protected:
    Clock() { m_daemon.appear(); }

    Session m_session;
    NotificationDaemonDouble m_daemon{m_session.connect(), plain};
};

// That it does not come before is seen where the clock is held.
TEST_F(Clock, ComesAtEight) {
    m_session.startAgent(QStringLiteral("2026-11-21 07:59:55"));
    m_session.schedule("text", QStringLiteral("2026-11-21")).waitForFinished();
    EXPECT_TRUE(waitUntil([&] { return m_daemon.timesShown(text) == 1; }));
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(m_daemon.shown.size(), 1U);
}

// A day in ten seconds. A machine that is busy meanwhile may miss one, but none has two; that none is missed is seen
// where the clock is held.
TEST_F(Clock, ComesAgainEachDay) {
    m_session.startAgent(QStringLiteral("2026-11-21 07:30:00 x8640"));
    m_session.schedule("text", past).waitForFinished();
    constexpr std::size_t times = 3;
    constexpr int patience = 120000;
    ASSERT_TRUE(waitUntil([&] { return m_daemon.shown.size() >= times; }, patience));
    m_session.killAgent();
    m_session.settle();
    EXPECT_EQ(m_daemon.open.size(), 1U) << "yesterday's has gone from the screen";
    ASSERT_EQ(m_session.reminders().size(), 1U);
    const auto lastDay = m_session.reminders().front().deliveredDay;
    ASSERT_TRUE(lastDay);
    const auto days = static_cast<std::size_t>((*lastDay - *dayFromText(past.toStdString())).count()) + 1;
    EXPECT_LE(m_daemon.shown.size(), days);
}

TEST_F(Clock, WhatWasMissedComesOnceAtTheNextStart) {
    m_session.startAgent(QStringLiteral("2026-11-20 12:00:00"));
    m_session.schedule("text", QStringLiteral("2026-11-21")).waitForFinished();
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_TRUE(m_daemon.shown.empty());
    m_session.killAgent();
    for (const char* start : {"2026-11-25 06:00:00", "2026-11-25 07:00:00"}) {
        m_session.startAgent(QString::fromLatin1(start));
        EXPECT_TRUE(m_session.settleAgent());
        EXPECT_EQ(m_daemon.timesShown(text), 1) << start;
        m_session.killAgent();
    }
    // It was that day's showing, though it came early.
    m_session.startAgent(QStringLiteral("2026-11-25 08:00:00"));
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(m_daemon.timesShown(text), 1);
    m_session.killAgent();
    m_session.startAgent(QStringLiteral("2026-11-26 08:00:00"));
    EXPECT_TRUE(waitUntil([&] { return m_daemon.timesShown(text) == 2; }));
}

TEST_F(Clock, AClockThatWasYearsAheadSilencesNothing) {
    m_session.startAgent(QStringLiteral("2035-01-01 12:00:00"));
    m_session.schedule("text", QStringLiteral("2026-11-21"));
    ASSERT_TRUE(waitUntil([&] { return m_daemon.timesShown(text) == 1; }));
    EXPECT_TRUE(m_session.settleAgent());
    m_session.killAgent();
    m_session.startAgent(QStringLiteral("2026-11-25 07:59:58"));
    EXPECT_TRUE(waitUntil([&] { return m_daemon.timesShown(text) == 2; }));
}

}  // namespace
}  // namespace kpx
