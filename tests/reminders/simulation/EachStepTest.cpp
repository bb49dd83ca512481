#include "reminders/ReminderFolder.h"
#include "tests/reminders/simulation/Simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace kpx {
namespace {

const QString day = QStringLiteral("2026-11-21");
const QString beforeNoon = QStringLiteral("43000");
const QStringList capabilities = {QStringLiteral("body"), QStringLiteral("actions"),
                                  QStringLiteral("x-dunst-stack-tag")};

/// Something a program does, done again and again: killed one step later each time, until one gets through.
class EachStep : public testing::Test {
protected:
    EachStep() {
        // What is started in their name never comes to the bus: calls wait for the next one that the test starts.
        m_session.install(theProgram, QStringLiteral("/bin/sleep 60"));
        m_session.install(theAgent, QStringLiteral("/bin/sleep 60"));
        startServer();
    }

    void startServer() {
        if (m_server) {
            m_server->disappear();
        }
        m_server = std::make_unique<NotificationDaemonDouble>(m_session.connect(), capabilities);
        m_server->appear();
    }
    void startProgram() {
        m_program = std::make_unique<Part>(m_session.environment(), QStringLiteral(SIMULATED_PROGRAM), QStringList());
        ASSERT_TRUE(waitUntil([&] { return m_session.isOnBus(theProgram); }));
    }
    void startAgent() {
        m_agent = std::make_unique<Part>(m_session.environment(), QStringLiteral(AGENT_PROGRAM),
                                         QStringList{day, beforeNoon});
        ASSERT_TRUE(waitUntil([&] { return m_session.isOnBus(theAgent); }));
    }
    void end(std::unique_ptr<Part>& part, const QString& name) {
        part.reset();
        ASSERT_TRUE(waitUntil([&] { return !m_session.isOnBus(name); }));
    }
    /// Gives the command to the part, which is killed at that step of it. True when it was not.
    bool give(Part& part, int step, const QString& command) {
        const auto hear = [&](const QStringList& words) { m_told.push_back(words.join(QLatin1Char(' '))); };
        return part.give(QStringLiteral("kill\t%1").arg(step), hear) && part.give(command, hear) &&
               part.give(QStringLiteral("kill\t0"), hear);
    }
    /// Whether it lives to answer the command. What it did before has left it by then, and its steps are counted.
    bool isAnswering(Part& part, const QString& command) {
        return part.give(command, [&](const QStringList& words) { m_told.push_back(words.join(QLatin1Char(' '))); });
    }
    void passAgent() {
        // What waits for the files to come to rest comes within a second of its clock.
        EXPECT_TRUE(m_agent->give(QStringLiteral("pass\t2"), [](const QStringList&) {}));
    }
    void hearProgram() {
        m_program->listen([&](const QStringList& words) { m_told.push_back(words.join(QLatin1Char(' '))); });
    }
    /// What the program told of the reminder: "promised" or "opened".
    bool isTold(const char* what, const QString& text) {
        return std::ranges::find(m_told, QLatin1String(what) + QLatin1Char(' ') + text) != m_told.end();
    }
    std::vector<std::string> textsOnDisk() const {
        std::vector<std::string> texts;
        for (const Reminder& reminder : m_folder.load().value_or(std::vector<Reminder>())) {
            const FoundContent found = m_folder.read(reminder);
            EXPECT_NE(found.state, FoundContent::State::Damaged) << fileNameFromReminder(reminder);
            if (found.state == FoundContent::State::Whole) {  // else an agent has just changed its state
                texts.push_back(found.content.text);
            }
        }
        return texts;
    }
    bool isOnDisk(const QString& text) const { return std::ranges::count(textsOnDisk(), text.toStdString()) == 1; }
    bool isShown() const {
        const auto reminders = m_session.reminders();
        return !reminders.empty() && reminders.front().phase == Phase::Shown;
    }
    static QString textOf(int step) { return QStringLiteral("text %1").arg(step); }
    static QString schedule(const QString& text) { return QStringLiteral("schedule\t%1\t%2").arg(text, day); }

    static constexpr int mostSteps = 100;
    Session m_session;
    ReminderFolder m_folder{m_session.scheduleFolder()};
    std::unique_ptr<NotificationDaemonDouble> m_server;
    std::unique_ptr<Part> m_program;
    std::unique_ptr<Part> m_agent;
    std::vector<QString> m_told;
};

TEST_F(EachStep, WhatTheProgramPromisedIsThereAndShownOnce) {
    startAgent();
    int step = 0;
    for (bool isThrough = false; !isThrough; ++step) {
        ASSERT_LT(step, mostSteps);
        startProgram();
        const QString text = textOf(step);
        isThrough = give(*m_program, step + 1, schedule(text));
        if (isTold("promised", text)) {
            EXPECT_TRUE(isOnDisk(text)) << "promised and killed at step " << step + 1;
        }
        end(m_program, theProgram);
    }
    EXPECT_GT(step, 4);
    EXPECT_TRUE(isTold("promised", textOf(step - 1)));
    end(m_agent, theAgent);
    startAgent();
    passAgent();
    const std::vector<std::string> texts = textsOnDisk();
    EXPECT_TRUE(waitUntil([&] { return m_server->open.size() == texts.size(); }));
    for (const std::string& text : texts) {
        EXPECT_EQ(m_server->timesShown(QString::fromStdString(text)), 1) << text;
    }
}

TEST_F(EachStep, WhatTheProgramWithdrawsIsThereOrGone) {
    startProgram();
    int step = 0;
    for (bool isThrough = false; !isThrough; ++step) {
        ASSERT_LT(step, mostSteps);
        const QString text = textOf(step);
        ASSERT_TRUE(give(*m_program, 0, schedule(text)));
        isThrough = give(*m_program, step + 1, QStringLiteral("remove\t") + text);
        if (!isThrough) {
            end(m_program, theProgram);
            startProgram();
            ASSERT_TRUE(give(*m_program, 0, QStringLiteral("remove\t") + text));
        }
        EXPECT_TRUE(textsOnDisk().empty());
    }
    EXPECT_GT(step, 2);
}

TEST_F(EachStep, TheStandingReminderIsOnOrOff) {
    int step = 0;
    for (bool isThrough = false; !isThrough; ++step) {
        ASSERT_LT(step, mostSteps);
        ASSERT_TRUE(m_folder.setStandingLead(std::nullopt, {}));
        startProgram();
        isThrough = give(*m_program, step + 1, QStringLiteral("standing\t3"));
        const auto lead = m_folder.standingLead();
        EXPECT_TRUE(isThrough ? lead == 3 : !lead || lead == 3);
        end(m_program, theProgram);
        startProgram();
        ASSERT_TRUE(give(*m_program, 0, QStringLiteral("standing\t7")));
        EXPECT_EQ(m_folder.standingLead(), 7);
        EXPECT_EQ(m_session.reminders().size(), 1U);
        end(m_program, theProgram);
    }
    EXPECT_GT(step, 4);
}

TEST_F(EachStep, AClickOutlivesTheProgramThatWasTold) {
    startAgent();
    int step = 0;
    int killedWhileWithdrawing = 0;
    for (bool isThrough = false; !isThrough; ++step) {
        ASSERT_LT(step, mostSteps);
        const QString text = textOf(step);
        startProgram();
        ASSERT_TRUE(give(*m_program, 0, schedule(text)));
        ASSERT_TRUE(waitUntil([&] {
            passAgent();
            return m_server->numberOf(text) != 0;
        }));
        ASSERT_TRUE(m_program->give(QStringLiteral("kill\t%1").arg(step + 1), [](const QStringList&) {}));
        m_server->click(m_server->numberOf(text));
        isThrough = waitUntil([&] { return !m_program->isRunning() || m_session.reminders().empty(); }) &&
                    isAnswering(*m_program, QStringLiteral("day\t") + day);
        if (!isThrough) {
            hearProgram();
            end(m_program, theProgram);
            killedWhileWithdrawing += isTold("opened", text) ? 1 : 0;
            startProgram();
        }
        EXPECT_TRUE(waitUntil([&] {
            passAgent();
            hearProgram();
            return m_session.reminders().empty() && m_server->open.empty();
        })) << "killed at step "
            << step + 1;
        EXPECT_TRUE(isTold("opened", text)) << "killed at step " << step + 1;
        end(m_program, theProgram);
    }
    EXPECT_GT(step, 3);
    EXPECT_GT(killedWhileWithdrawing, 0);
}

TEST_F(EachStep, AClickOutlivesTheAgentThatTookIt) {
    startProgram();
    int step = 0;
    int comeAgain = 0;
    for (bool isThrough = false; !isThrough; ++step) {
        ASSERT_LT(step, mostSteps);
        const QString text = textOf(step);
        startAgent();
        ASSERT_TRUE(give(*m_program, 0, schedule(text)));
        ASSERT_TRUE(waitUntil([&] {
            passAgent();
            return m_server->numberOf(text) != 0;
        }));
        ASSERT_TRUE(m_agent->give(QStringLiteral("kill\t%1").arg(step + 1), [](const QStringList&) {}));
        m_server->click(m_server->numberOf(text));
        isThrough = waitUntil([&] { return !m_agent->isRunning() || m_session.reminders().empty(); }) &&
                    isAnswering(*m_agent, QStringLiteral("pass\t1"));
        const auto left = m_session.reminders();
        const bool isUnheard = !left.empty() && left.front().phase == Phase::Shown;
        end(m_agent, theAgent);
        startAgent();
        if (isUnheard) {
            // Nothing is lost with the click: the reminder is still there, and the notification clickable.
            ++comeAgain;
            passAgent();
            ASSERT_NE(m_server->numberOf(text), 0U);
            m_server->click(m_server->numberOf(text));
        }
        EXPECT_TRUE(waitUntil([&] {
            passAgent();
            hearProgram();
            return isTold("opened", text) && m_session.reminders().empty();
        })) << "killed at step "
            << step + 1;
        startServer();  // where a kill came before the call to close it, the clicked notification still stands
        end(m_agent, theAgent);
    }
    EXPECT_GT(step, 4);
    EXPECT_LE(comeAgain, 3) << "recorded before anything else is done";
}

TEST_F(EachStep, AServerThatEndsIsFollowedByOneThatShows) {
    int step = 0;
    for (bool isThrough = false; !isThrough; ++step) {
        ASSERT_LT(step, mostSteps);
        const QString text = textOf(step);
        startAgent();
        startProgram();
        m_server->endAtStep(step + 1);
        ASSERT_TRUE(give(*m_program, 0, schedule(text)));
        ASSERT_TRUE(waitUntil([&] {
            passAgent();
            return m_server->hasEnded() || isShown();
        }));
        isThrough = !m_server->hasEnded();
        if (!isThrough) {
            startServer();
            passAgent();
        }
        EXPECT_TRUE(waitUntil([&] { return m_server->numberOf(text) != 0 && isShown(); })) << "step " << step + 1;
        EXPECT_EQ(m_server->open.size(), 1U) << "step " << step + 1;
        ASSERT_TRUE(give(*m_program, 0, QStringLiteral("remove\t") + text));
        passAgent();
        EXPECT_TRUE(waitUntil([&] { return m_server->open.empty(); }));
        end(m_program, theProgram);
        end(m_agent, theAgent);
    }
    EXPECT_GE(step, 3);
}

}  // namespace
}  // namespace kpx
