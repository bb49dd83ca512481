#include "reminders/Names.h"
#include "tests/reminders/session/Neighbours.h"
#include "tests/reminders/session/Session.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

/// With a notification daemon as people run it, started by the bus when it is first needed.
class Dunst : public testing::Test {
protected:
    Dunst() { m_session.install(QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/usr/bin/dunst")); }

    int displayed() {
        return m_session.run(QStringLiteral("dunstctl"), {QStringLiteral("count"), QStringLiteral("displayed")})
            .toInt();
    }
    void closeIt() { m_session.run(QStringLiteral("dunstctl"), {QStringLiteral("close")}); }
    void clickIt() { m_session.run(QStringLiteral("dunstctl"), {QStringLiteral("action"), QStringLiteral("0")}); }
    /// All that was ever shown and closed, as the daemon tells it.
    QString history() { return m_session.run(QStringLiteral("dunstctl"), {QStringLiteral("history")}); }
    bool isPhase(Phase phase) {
        const auto reminders = m_session.reminders();
        return reminders.size() == 1 && reminders.front().phase == phase;
    }

    Session m_session;
    ApplicationDouble m_application{m_session.connect()};
};

TEST_F(Dunst, DaysPassUntilTheClick) {
    const std::string text = "Prescription: Lisinopril\r for patient: Ann\r is due";
    m_application.appear();
    m_session.startAgent(QStringLiteral("2026-11-21 07:59:55"));
    m_session.schedule(QByteArray::fromStdString(text), QStringLiteral("2026-11-21")).waitForFinished();
    EXPECT_TRUE(isPhase(Phase::Waiting));
    ASSERT_TRUE(waitUntil([&] { return isPhase(Phase::Shown); }));
    EXPECT_EQ(displayed(), 1);
    closeIt();
    ASSERT_TRUE(waitUntil([&] { return isPhase(Phase::Waiting) && displayed() == 0; }));
    m_session.killAgent();

    m_session.startAgent(QStringLiteral("2026-11-22 07:59:55"));
    EXPECT_EQ(displayed(), 0);
    ASSERT_TRUE(waitUntil([&] { return isPhase(Phase::Shown); }));
    EXPECT_EQ(displayed(), 1);
    EXPECT_TRUE(m_application.clicks.empty());
    clickIt();
    ASSERT_TRUE(waitUntil([&] { return m_application.clicks.size() == 1; }));
    EXPECT_EQ(m_application.clicks.front().text, text);
    ASSERT_TRUE(waitUntil([&] { return m_session.reminders().empty() && displayed() == 0; }));
    m_session.killAgent();

    m_session.startAgent(QStringLiteral("2026-11-23 09:00:00"));
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(displayed(), 0);
}

TEST_F(Dunst, HostileTextIsShownPlainlyAndReadBackExactly) {
    m_application.appear();
    m_session.startAgent(QStringLiteral("2026-11-21 12:00:00"));
    const std::vector<std::string> texts = {
        "Prescription: <b>bold</b> &amp; <img src='x'>\r for patient: <i>\r is due",
        "Prescription: \xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D\xE2\x80\xAE\r for patient: \xD8\xB9\r is due",
        "Prescription: " + std::string(10240, 'n') + "\n\r\n\r for patient: Ann\r is due",
    };
    std::size_t clicks = 0;
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 60));
        m_session.schedule(QByteArray::fromStdString(text), QStringLiteral("2026-11-21")).waitForFinished();
        ASSERT_TRUE(waitUntil([&] { return isPhase(Phase::Shown); }));
        EXPECT_EQ(displayed(), 1);
        clickIt();
        ASSERT_TRUE(waitUntil([&] { return m_application.clicks.size() == clicks + 1; }));
        EXPECT_EQ(m_application.clicks.back().text, text);
        ASSERT_TRUE(waitUntil([&] { return m_session.reminders().empty(); }));
        ++clicks;
    }
    // The daemon's own message is markup with its letters escaped: nothing was taken for a tag.
    EXPECT_TRUE(history().contains(QStringLiteral("&lt;b&gt;bold&lt;/b&gt; &amp;amp; &lt;img")))
        << history().left(3000).toStdString();
}

TEST_F(Dunst, ADaemonThatIsKilledShowsNothingTwice) {
    m_session.startAgent(QStringLiteral("2026-11-21 12:00:00"));
    m_session.schedule("first", QStringLiteral("2026-11-21")).waitForFinished();
    ASSERT_TRUE(waitUntil([&] { return isPhase(Phase::Shown); }));
    m_session.killOwner(QStringLiteral("org.freedesktop.Notifications"));
    ASSERT_TRUE(waitUntil([&] { return isPhase(Phase::Waiting); }));
    m_session.schedule("second", QStringLiteral("2026-11-21")).waitForFinished();
    ASSERT_TRUE(waitUntil([&] { return displayed() == 1; }));
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(displayed(), 1);
}

}  // namespace
}  // namespace kpx
