#include "reminders/Names.h"
#include "tests/reminders/session/Neighbours.h"
#include "tests/reminders/session/Session.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <limits>
#include <memory>
#include <regex>

namespace kpx {
namespace {

const QString noon = QStringLiteral("2026-11-21 12:00:00");
const QString past = QStringLiteral("2026-11-21");
const QString tag = QStringLiteral("x-dunst-stack-tag");
const QStringList plain = {QStringLiteral("body"), QStringLiteral("actions")};
const QStringList markup = {QStringLiteral("body"), QStringLiteral("actions"), QStringLiteral("body-markup")};

std::string wholeText(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class Agent : public testing::Test {
protected:
    /// The one reminder there is, as its file's name tells it.
    Reminder only() {
        const auto reminders = m_session.reminders();
        EXPECT_EQ(reminders.size(), 1U);
        return reminders.empty() ? Reminder() : reminders.front();
    }
    bool scheduleShown(const QByteArray& text) {
        m_session.schedule(text, past);
        return waitUntil([&] { return !m_daemon.open.empty() && only().phase == Phase::Shown; });
    }

    Session m_session;
    NotificationDaemonDouble m_daemon{m_session.connect(), markup};
    ApplicationDouble m_application{m_session.connect()};
};

TEST_F(Agent, ShowsAReminderAsTheDesktopWantsIt) {
    m_daemon.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("Prescription: <b>A & B</b>\r for patient: Ann\r is due"));
    const auto& shown = m_daemon.shown.front();
    EXPECT_EQ(shown.title.toStdString(), "Prescription 'Next Fill Date' Reminder");
    EXPECT_EQ(shown.body.toStdString(), "Prescription: &lt;b&gt;A &amp; B&lt;/b&gt;\n for patient: Ann\n is due");
    EXPECT_TRUE(shown.icon.contains(theProgram) && shown.icon.endsWith(QStringLiteral(".png")))
        << shown.icon.toStdString();
    ASSERT_EQ(shown.actions.size(), 4) << "the default action and a button";
    EXPECT_EQ(shown.actions.at(0).toStdString(), "default");
    EXPECT_EQ(shown.hints.value(QStringLiteral("desktop-entry")).toString(), theProgram);
    EXPECT_EQ(shown.hints.value(QStringLiteral("urgency")).value<uchar>(), 1);
    EXPECT_FALSE(shown.hints.value(QStringLiteral("sound-name")).toString().isEmpty());
    EXPECT_EQ(shown.timeout, 0) << "it stays until acted upon";
}

TEST_F(Agent, ADismissedOneStaysScheduled) {
    m_daemon.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    m_daemon.dismiss(m_daemon.open.begin()->first);
    EXPECT_TRUE(waitUntil([&] { return only().phase == Phase::Waiting; }));
    EXPECT_EQ(only().deliveredDay, dayFromText("2026-11-21"));
    EXPECT_TRUE(m_application.clicks.empty());
}

TEST_F(Agent, HandsEveryTextOverExactly) {
    m_daemon.appear();
    m_application.appear();
    m_session.startAgent(noon);
    const std::vector<std::string> texts = {
        "Prescription: Lisinopril\r for patient: Ann\r is due",
        "Prescription: <img src='file:///etc/passwd'>&lt;\r\n for patient: \"A\\n\"\r is due",
        "Prescription: \xD7\xA9\xD7\x9C\xE2\x80\xAE\r for patient: \xF0\x9F\x92\x8A\r is due",
        "Prescription: " + std::string(10240, 'n') + "\r for patient: Ann\r is due",
        std::string("Prescription: a\0b\x01\r for patient: \xED\xA0\x80\r is due", 48),
        "",
    };
    std::size_t clicks = 0;
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 60));
        ASSERT_TRUE(scheduleShown(QByteArray::fromStdString(text)));
        m_daemon.click(m_daemon.open.begin()->first, QStringLiteral("default"), QStringLiteral("token-17"));
        ASSERT_TRUE(waitUntil([&] { return m_application.clicks.size() == clicks + 1; }));
        EXPECT_EQ(m_application.clicks.back().text, text);
        EXPECT_EQ(m_application.clicks.back().title, "Prescription 'Next Fill Date' Reminder");
        EXPECT_EQ(m_application.clicks.back().platformData.value(QStringLiteral("activation-token")).toString(),
                  QStringLiteral("token-17"));
        ASSERT_TRUE(waitUntil([&] { return m_session.reminders().empty() && m_daemon.open.empty(); }));
        ++clicks;
    }
}

TEST_F(Agent, TheButtonIsAClickToo) {
    m_daemon.appear();
    m_application.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    m_daemon.click(m_daemon.open.begin()->first, m_daemon.shown.front().actions.at(2));
    EXPECT_TRUE(waitUntil([&] { return m_application.clicks.size() == 1 && m_session.reminders().empty(); }));
}

TEST_F(Agent, WhatOthersShowIsNotItsOwn) {
    m_daemon.appear();
    m_application.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    m_daemon.click(m_daemon.open.begin()->first + 1);
    m_daemon.dismiss(m_daemon.open.begin()->first + 1);
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(only().phase, Phase::Shown);
    EXPECT_TRUE(m_application.clicks.empty());
}

TEST_F(Agent, AServerThatSaysOddThingsEndsNothing) {
    m_daemon.appear();
    m_application.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    const qint64 process = m_session.agentProcess();
    const uint number = m_daemon.open.begin()->first;
    const QString action = QStringLiteral("default");
    const QVariantList rows[] = {{},
                                 {number},
                                 {action},
                                 {action, number},
                                 {number, QVariantMap{{action, number}}},
                                 {QVariantMap{{action, number}}, action},
                                 {QVariant::fromValue(QList<uint>{number}), action},
                                 {number, QStringList{action}},
                                 {QVariantList{number}, QVariantList{action}},
                                 {int(number), action}};
    for (const QVariantList& row : rows) {
        for (const char* signal : {"ActivationToken", "ActionInvoked", "NotificationClosed"}) {
            m_daemon.sendOdd(QLatin1String(signal), row);
        }
        EXPECT_TRUE(m_session.settleAgent());
        EXPECT_EQ(m_session.agentProcess(), process) << "it is the same one still";
    }
    EXPECT_EQ(only().phase, Phase::Shown);
    m_daemon.click(number);
    EXPECT_TRUE(waitUntil([&] { return m_application.clicks.size() == 1; }));
}

TEST_F(Agent, TwoOfTheSameTextAreTwo) {
    m_daemon.appear();
    m_session.startAgent(noon);
    m_session.schedule("text", past);
    m_session.schedule("text", past);
    ASSERT_TRUE(waitUntil([&] { return m_daemon.open.size() == 2; }));
    m_session.call(QStringLiteral("RemoveScheduled"), {QString(), QByteArray("text")});
    ASSERT_TRUE(waitUntil([&] { return m_session.reminders().size() == 1; }));
    m_session.call(QStringLiteral("RemoveScheduled"), {QString(), QByteArray("other")}).waitForFinished();
    EXPECT_EQ(m_session.reminders().size(), 1U);
}

TEST_F(Agent, AServerThatComesLateGetsWhatIsDue) {
    m_session.startAgent(noon);
    m_session.schedule("text", past).waitForFinished();
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_FALSE(only().deliveredDay);
    m_daemon.appear();
    EXPECT_TRUE(waitUntil([&] { return m_daemon.timesShown(QStringLiteral("text")) == 1; }));
}

TEST_F(Agent, AServerThatComesJustWhenOneIsLookedForIsUsed) {
    m_session.startAgent(noon);
    for (int round = 0; round < 100; ++round) {
        const QString text = QString::number(round);
        m_session.schedule(text.toUtf8(), past).waitForFinished();  // the agent looks for a server right after this
        m_daemon.appear();
        ASSERT_TRUE(waitUntil([&] { return m_daemon.timesShown(text) == 1; })) << "round " << round;
        m_daemon.disappear();
    }
}

TEST_F(Agent, AServerThatRestartsShowsNothingTwice) {
    m_daemon.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    m_daemon.disappear();
    ASSERT_TRUE(waitUntil([&] { return only().phase == Phase::Waiting; }));
    NotificationDaemonDouble next(m_session.connect(), plain);
    next.appear();
    m_session.schedule("another", past);
    ASSERT_TRUE(waitUntil([&] { return next.timesShown(QStringLiteral("another")) == 1; }));
    EXPECT_EQ(next.timesShown(QStringLiteral("text")), 0);
    // The first one's number, given again by the second to another notification.
    next.dismiss(1);
    EXPECT_TRUE(waitUntil([&] { return m_session.reminders().size() == 2; }));
}

TEST_F(Agent, WhatAServerTookAndNeverShowedGoesToTheNext) {
    m_daemon.appear();
    m_daemon.isSilent = true;
    m_session.startAgent(noon);
    m_session.schedule("text", past);
    ASSERT_TRUE(waitUntil([&] { return m_daemon.silentlyTaken == 1; }));
    m_daemon.disappear();
    NotificationDaemonDouble next(m_session.connect(), plain);
    next.appear();
    EXPECT_TRUE(waitUntil([&] { return next.timesShown(QStringLiteral("text")) == 1; }));
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(next.shown.size(), 1U);
}

TEST_F(Agent, AClickIsKeptUntilTheProgramHasWithdrawnIt) {
    m_session.setAgentApart();
    m_daemon.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    const auto number = m_daemon.open.begin()->first;
    m_daemon.click(number);
    ASSERT_TRUE(waitUntil([&] { return only().phase == Phase::Clicked && m_daemon.open.empty(); }));
    m_session.killAgent();
    m_session.startAgent(noon);
    m_application.appear();
    EXPECT_TRUE(waitUntil([&] { return m_application.clicks.size() == 1 && m_session.reminders().empty(); }));
}

TEST_F(Agent, AClickOnWhatAnEarlierRunShowed) {
    m_daemon.appear();
    m_application.appear();
    m_session.startAgent(noon);
    ASSERT_TRUE(scheduleShown("text"));
    m_session.killAgent();
    m_session.startAgent(noon);
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_EQ(m_daemon.timesShown(QStringLiteral("text")), 1);
    m_daemon.click(m_daemon.open.begin()->first);
    EXPECT_TRUE(waitUntil([&] { return m_application.clicks.size() == 1 && m_session.reminders().empty(); }));
}

// Killed between the record and the server's answer: nobody can say whether it is on the screen.
TEST_F(Agent, APostingThatWasCutOffIsMadeUpForWhereItCannotShowTwice) {
    struct Row {
        const char* what;
        QStringList capabilities;
        std::size_t shown;
    };
    const std::vector<Row> rows = {{"a server that replaces by tag", plain + QStringList(tag), 1},
                                   {"another", plain, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Session session;
        NotificationDaemonDouble daemon(session.connect(), row.capabilities);
        daemon.appear();
        session.setKilledBefore(QStringLiteral("Notify"));
        session.startAgent(noon);
        session.schedule("text", past);
        ASSERT_TRUE(waitUntil([&] { return session.agent().state() == QProcess::NotRunning; }));
        session.killAgent();
        ASSERT_EQ(session.reminders().size(), 1U);
        ASSERT_EQ(session.reminders().front().phase, Phase::Posting);
        session.setKilledBefore({});
        session.startAgent(noon);
        ASSERT_TRUE(waitUntil([&] { return session.reminders().front().phase != Phase::Posting; }));
        EXPECT_TRUE(session.settleAgent());
        EXPECT_EQ(daemon.shown.size(), row.shown);
        EXPECT_EQ(session.reminders().front().deliveredDay, dayFromText("2026-11-21"));
    }
}

TEST_F(Agent, ADamagedFileStopsNoOtherReminder) {
    m_session.startAgent(noon);
    m_session.schedule("damaged", past).waitForFinished();
    const std::string name = fileNameFromReminder(only());
    std::ofstream(m_session.scheduleFolder() / name, std::ios::trunc) << "rubbish";
    m_session.schedule("whole", past).waitForFinished();
    m_daemon.appear();
    EXPECT_TRUE(waitUntil([&] { return m_daemon.timesShown(QStringLiteral("whole")) == 1; }));
    EXPECT_EQ(m_daemon.shown.size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(m_session.scheduleFolder() / (name + ".damaged")));
}

TEST_F(Agent, WhatIsNoDayIsRefused) {
    m_session.startAgent(noon);
    auto reply = m_session.schedule("text", QStringLiteral("2026-11-31"));
    reply.waitForFinished();
    EXPECT_TRUE(reply.isError());
    EXPECT_TRUE(m_session.reminders().empty());
}

TEST_F(Agent, ThereIsOne) {
    m_session.startAgent(noon);
    auto second = m_session.start(QStringLiteral(AGENT_PROGRAM), {}, noon);
    EXPECT_TRUE(second->waitForFinished(10000));
    EXPECT_EQ(second->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second->exitCode(), 0);
}

TEST_F(Agent, StartedAtLoginWithNothingToDoItEnds) {
    auto agent = m_session.start(QStringLiteral(AGENT_PROGRAM), {QStringLiteral("--if-any")}, noon);
    EXPECT_TRUE(agent->waitForFinished(10000));
    EXPECT_EQ(agent->exitCode(), 0);
    m_session.startAgent(noon);
    m_session.schedule("text", past).waitForFinished();
    m_session.killAgent();
    agent = m_session.start(QStringLiteral(AGENT_PROGRAM), {QStringLiteral("--if-any")}, noon);
    EXPECT_TRUE(waitUntil([&] { return m_session.isOnBus(theAgent); }));
    agent->terminate();
    EXPECT_TRUE(agent->waitForFinished(10000));
}

TEST_F(Agent, EndsWithItsBus) {
    m_session.startAgent(noon);
    // Once it answers, it waits in its event loop: a bus that dies under a blocking call of the start is a matter of
    // the toolkit's.
    EXPECT_TRUE(waitUntil([&] {
        auto reply = m_session.schedule("text", past);
        reply.waitForFinished();
        return !reply.isError();
    }));
    m_session.endBus();
    EXPECT_TRUE(m_session.agent().waitForFinished(10000));
}

TEST_F(Agent, IsStartedAgainAfterACrash) {
    m_daemon.appear();
    m_session.startAgent(noon);
    const qint64 process = m_session.agentProcess();
    ASSERT_EQ(::kill(static_cast<pid_t>(process), SIGSEGV), 0);
    EXPECT_TRUE(waitUntil([&] { return m_session.agentProcess() != process && m_session.isOnBus(theAgent); }));
    EXPECT_TRUE(scheduleShown("text"));
}

/// A second session of the user whose agent waits for the first one's to end.
class TwoSessions : public Agent {
protected:
    void SetUp() override {
        m_daemon.appear();
        m_otherDaemon.appear();
        m_session.startAgent(noon);
        ASSERT_TRUE(scheduleShown("text"));
    }
    /// On the day after.
    void startOther() {
        const QString state = QStringLiteral("XDG_STATE_HOME=%1/state");
        m_otherAgent = m_other.start(
            QStringLiteral("/usr/bin/env"),
            {state.arg(QString::fromStdString(m_session.folder().string())), QStringLiteral(AGENT_PROGRAM)},
            QStringLiteral("2026-11-22 12:00:00"));
        ASSERT_TRUE(waitUntil([&] { return m_other.isOnBus(theAgent); }));
    }
    void endOther() {
        m_otherAgent->terminate();
        m_otherAgent->waitForFinished();
    }

    Session m_other;
    NotificationDaemonDouble m_otherDaemon{m_other.connect(), plain};
    std::unique_ptr<QProcess> m_otherAgent;
};

TEST_F(TwoSessions, OneDeliversTheOtherWaitsAndAnswersItsCallers) {
    startOther();
    auto answer = m_other.schedule("another", QStringLiteral("2026-11-22"));
    ASSERT_TRUE(waitUntil([&] { return answer.isFinished(); }, 5000)) << "a caller is kept waiting";
    EXPECT_TRUE(m_session.isScheduled(answer.value()));
    EXPECT_TRUE(m_other.settleAgent());
    EXPECT_TRUE(m_otherDaemon.shown.empty());
    endOther();
}

// A busy machine makes it later than it is, never earlier: the quickest of a few counts.
TEST_F(TwoSessions, TheOtherTakesOverWithinASecond) {
    constexpr int attempts = 4;
    qint64 quickest = std::numeric_limits<qint64>::max();
    for (int attempt = 0; attempt < attempts && quickest >= 1000; ++attempt) {
        startOther();
        auto answer = m_other.schedule(QByteArray::number(attempt), QStringLiteral("2026-11-22"));
        answer.waitForFinished();
        EXPECT_TRUE(m_other.settleAgent());
        QElapsedTimer sinceTheEnd;
        sinceTheEnd.start();
        m_session.killAgent();
        ASSERT_TRUE(waitUntil([&] { return m_otherDaemon.timesShown(QString::number(attempt)) == 1; }));
        quickest = std::min(quickest, sinceTheEnd.elapsed());
        endOther();
        m_session.startAgent(noon);
    }
    EXPECT_LT(quickest, 1000);
    EXPECT_EQ(m_otherDaemon.timesShown(QStringLiteral("text")), 1) << "and what was due before is not forgotten";
}

TEST_F(Agent, TheAutostartEntryIsWrittenOnceOnly) {
    m_session.startAgent(noon);
    EXPECT_FALSE(std::filesystem::exists(m_session.autostartFile()));
    m_session.schedule("text", past);
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(m_session.scheduleFolder() / "autostart"); }));
    ASSERT_TRUE(std::filesystem::exists(m_session.autostartFile()));
    std::filesystem::remove(m_session.autostartFile());
    m_session.schedule("text", past).waitForFinished();
    m_session.killAgent();
    m_session.startAgent(noon);
    m_session.schedule("text", past).waitForFinished();
    EXPECT_TRUE(m_session.settleAgent());
    EXPECT_FALSE(std::filesystem::exists(m_session.autostartFile()));
}

TEST_F(Agent, AHiddenAutostartEntryStaysHidden) {
    std::filesystem::create_directories(m_session.autostartFile().parent_path());
    std::ofstream(m_session.autostartFile()) << "[Desktop Entry]\nHidden=true\n";
    m_session.startAgent(noon);
    m_session.schedule("text", past);
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(m_session.scheduleFolder() / "autostart"); }));
    EXPECT_EQ(wholeText(m_session.autostartFile()), "[Desktop Entry]\nHidden=true\n");
}

TEST_F(Agent, AnAutostartEntryNamesAnAgentThatIsThere) {
    m_session.startAgent(noon);
    m_session.schedule("text", past);
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(m_session.scheduleFolder() / "autostart"); }));
    const std::string entry = wholeText(m_session.autostartFile());
    const auto calling = [&](const std::string& asString, const std::string& inQuotes) {
        const std::string tried = std::regex_replace(entry, std::regex("TryExec=.*"), "TryExec=" + asString);
        return std::regex_replace(tried, std::regex("\nExec=\"[^\"]*\""), "\nExec=\"" + inQuotes + "\"") +
               "Hidden=true\n";
    };
    const auto naming = [&](const std::string& program) { return calling(program, program); };
    const std::string other = (m_session.folder() / "velmora-reminders").string();
    std::ofstream(other) << "of another version";
    const std::string ofTheUsersOwn = "[Desktop Entry]\nTryExec=/gone/velmora-reminders\nExec=mine\n";
    const std::vector<std::pair<std::string, std::string>> rows = {
        {naming("/gone with its checkout/velmora-reminders"), entry + "Hidden=true\n"},
        {calling(R"(/gone\\/velmora-reminders)", R"(/gone\\\\/velmora-reminders)"), entry + "Hidden=true\n"},
        {naming(other), naming(other)},
        {naming("/gone/of-the-users-own"), naming("/gone/of-the-users-own")},
        {ofTheUsersOwn, ofTheUsersOwn},
    };
    for (const auto& [before, after] : rows) {
        SCOPED_TRACE(before);
        std::ofstream(m_session.autostartFile()) << before;
        m_session.schedule(QByteArray::fromStdString(before.substr(0, 80)), past).waitForFinished();
        EXPECT_TRUE(m_session.settleAgent());
        EXPECT_EQ(wholeText(m_session.autostartFile()), after);
    }
}

}  // namespace
}  // namespace kpx
