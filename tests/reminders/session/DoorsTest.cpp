#include "reminders/Names.h"
#include "tests/reminders/session/Session.h"

#include <gtest/gtest.h>

#include <csignal>

namespace kpx {
namespace {

const QString program = QStringLiteral(PROGRAM_FOLDER "/velmora");

/// What other programs on the session's bus can do to the window program.
class Doors : public testing::Test {
protected:
    ~Doors() override {
        for (const auto& started : m_started) {
            started->kill();
            started->waitForFinished();
        }
    }

    QProcess& start() {
        m_started.push_back(m_session.start(program));
        return *m_started.back();
    }
    bool isRunning() { return m_session.isOnBus(theProgram); }
    qsizetype windows() {
        const QString found =
            m_session.run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                      QStringLiteral("--class"), QStringLiteral("velmora")});
        return found.isEmpty() ? 0 : found.split(QLatin1Char('\n')).size();
    }
    /// What the desktop's own tool for such calls says to the action with these parameters.
    QString activate(const QString& action, const QString& parameters) {
        return m_session.run(
            QStringLiteral("sh"),
            {QStringLiteral("-c"),
             QStringLiteral("gdbus call --session --dest %1 --object-path %2 --method "
                            "org.freedesktop.Application.ActivateAction \"$0\" \"$1\" '@a{sv} {}' 2>&1")
                 .arg(theProgram, QString::fromLatin1(applicationPath)),
             action, parameters});
    }

    Session m_session;
    std::vector<std::unique_ptr<QProcess>> m_started;
};

TEST_F(Doors, OddPayloadsAreAnsweredWithAnError) {
    const QProcess& running = start();
    ASSERT_TRUE(waitUntil([&] { return isRunning() && windows() > 0; }));
    const char* const parameters[] = {
        "@av []",
        "[<@ai [1,2]>]",
        "[<(1,'a')>]",
        "[<@a{ss} {'identifier':'a','title':'b','text':'c'}>]",
        "[<@a{si} {'identifier':1}>]",
        "[<@a(ss) [('a','b')]>]",
        "[<@aa{sv} [{}]>]",
        "[<@a{sv} {}>]",
        "[<{'identifier':<'a'>}>]",
        "[<{'identifier':<'a'>,'title':<'b'>,'text':<'c'>}>]",
        "[<{'identifier':<@ay [97]>,'title':<@ay [97]>,'text':<@ay [97]>}>]",
        "[<{'identifier':<'a'>,'title':<@ai [97]>,'text':<@ay [97]>}>]",
        "[<{'identifier':<(1,2)>,'title':<@ay [97]>,'text':<@ay [97]>}>]",
        "[<<<{'identifier':<'a'>}>>>]",
        "[<1>, <2>]",
        "[<'a'>]",
        "[<@o '/a'>]",
        "[<@g 'a{sv}'>]",
        "[<@as ['a']>]",
        "[<@av [<1>]>]",
        "[<@ay [1,2]>]",
        "[<@a{us} {1:'a'}>]",
        "[<{'identifier':<'a'>,'title':<@ay [97]>,'text':<@ay [97]>}>, <1>]",
    };
    for (const char* row : parameters) {
        SCOPED_TRACE(row);
        const QString answer = activate(QStringLiteral("reminder"), QString::fromLatin1(row));
        EXPECT_TRUE(answer.contains(QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"))) << answer.toStdString();
    }
    const QString reminder = QStringLiteral("[<{'identifier':<'a'>,'title':<@ay [97]>,'text':<@ay [97]>,'new':<1>}>]");
    EXPECT_TRUE(activate(QStringLiteral("remind"), reminder)
                    .contains(QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs")));
    EXPECT_EQ(activate(QStringLiteral("reminder"), reminder), QStringLiteral("()"));
    EXPECT_EQ(running.state(), QProcess::Running);
}

TEST_F(Doors, AStartGoesOnBesideOneThatDoesNotAnswer) {
    const QProcess& first = start();
    ASSERT_TRUE(waitUntil([&] { return isRunning() && windows() > 0; }));
    const qsizetype before = windows();
    ASSERT_EQ(::kill(static_cast<pid_t>(first.processId()), SIGSTOP), 0);
    start();
    EXPECT_TRUE(waitUntil([&] { return windows() > before; }))
        << "it says something, whatever the folder's lock decides";
    ::kill(static_cast<pid_t>(first.processId()), SIGCONT);
}

TEST_F(Doors, AStartGoesOnBesideAnotherKindOfProgram) {
    QDBusConnection other = m_session.connect();
    ASSERT_TRUE(other.registerService(theProgram));
    const QProcess& started = start();
    EXPECT_TRUE(waitUntil([&] { return windows() > 0; }));
    EXPECT_EQ(started.state(), QProcess::Running);
}

}  // namespace
}  // namespace kpx
