#include "tests/reminders/session/Session.h"

#include "reminders/Names.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace kpx {

namespace {

void write(const QString& path, const QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        ADD_FAILURE() << "cannot write " << path.toStdString();
    }
    file.write(text.toUtf8());
}

/// The bus keeps the order of what it is given: when it has answered the sender, the message is with the receiver
/// before the bus answers the receiver. So each round of questions brings a conversation at least one message further.
constexpr int longestConversation = 12;

QString newConnectionName() {
    static int number = 0;
    return QStringLiteral("connection%1").arg(++number);
}

/// Runs the event loop meanwhile; false when an error comes instead.
bool awaitAnswer(const QDBusPendingCall& question) {
    QDBusPendingCallWatcher watcher(question);
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    loop.exec();
    return !watcher.isError();
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition, int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(milliseconds)) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
        letPass(2);
    }
    return true;
}

void letPass(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        ::usleep(200);
    } while (!timer.hasExpired(milliseconds));
}

Session::Session() : m_environment(QProcessEnvironment::systemEnvironment()), m_connection(QString()) {
    const QDir folder(m_folder.path());
    for (const char* name : {"state", "config", "data", "services", "home"}) {
        folder.mkdir(QString::fromLatin1(name));
    }
    m_environment.insert(QStringLiteral("XDG_STATE_HOME"), folder.filePath(QStringLiteral("state")));
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.filePath(QStringLiteral("config")));
    m_environment.insert(QStringLiteral("XDG_DATA_HOME"), folder.filePath(QStringLiteral("data")));
    m_environment.insert(QStringLiteral("HOME"), folder.filePath(QStringLiteral("home")));
    m_environment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
    m_environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    const QString configuration = folder.filePath(QStringLiteral("bus.conf"));
    write(configuration,
          QStringLiteral("<busconfig><type>session</type><listen>unix:dir=%1</listen>"
                         "<servicedir>%1/services</servicedir><policy context='default'>"
                         "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/>"
                         "</policy><limit name='max_replies_per_connection'>50000</limit></busconfig>")
              .arg(m_folder.path()));
    m_bus.setProcessEnvironment(m_environment);
    m_bus.setProcessChannelMode(QProcess::SeparateChannels);
    m_bus.setStandardErrorFile(folder.filePath(QStringLiteral("bus.log")));
    m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                                                QStringLiteral("--config-file=") + configuration});
    EXPECT_TRUE(m_bus.waitForReadyRead()) << "no bus";
    m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
    m_connection = connect();
}

Session::~Session() {
    if (m_agent) {
        m_agent->kill();
        m_agent->waitForFinished();
    }
    for (const QString& name : m_connections) {
        QDBusConnection::disconnectFromBus(name);
    }
    endBus();
}

void Session::install(const QString& name, const QString& command) {
    write(m_folder.filePath(QStringLiteral("services/") + name + QStringLiteral(".service")),
          QStringLiteral("[D-BUS Service]\nName=%1\nExec=/usr/bin/env DBUS_SESSION_BUS_ADDRESS=%2 %3\n")
              .arg(name, m_address, command));
    m_connection.call(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig")));
}

QDBusConnection Session::connect() {
    m_connections.push_back(newConnectionName());
    return QDBusConnection::connectToBus(m_address, m_connections.back());
}

void Session::askTheBus() {
    for (const QString& name : m_connections) {
        awaitAnswer(QDBusConnection(name).asyncCall(QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"))));
        QCoreApplication::processEvents();
    }
}

void Session::settle() {
    for (int round = 0; round < longestConversation; ++round) {
        askTheBus();
    }
}

bool Session::settleAgent() {
    bool isAnswering = true;
    for (int round = 0; isAnswering && round < longestConversation; ++round) {
        askTheBus();
        isAnswering = awaitAnswer(call(QStringLiteral("Wake"), {}));
    }
    askTheBus();
    return isAnswering;
}

std::unique_ptr<QProcess> Session::start(const QString& program, const QStringList& arguments, const QString& time) {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = m_environment;
    if (!time.isEmpty()) {
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(FAKETIME_LIBRARY));
        environment.insert(QStringLiteral("FAKETIME"), QStringLiteral("@") + time);
        environment.insert(QStringLiteral("DONT_FAKE_MONOTONIC"), QStringLiteral("1"));
    }
    if (m_killedAtStep > 0 || !m_killedBefore.isEmpty()) {
        const QString preloaded = environment.value(QStringLiteral("LD_PRELOAD"));
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(KILL_AT_STEP_LIBRARY ":") + preloaded);
        environment.insert(QStringLiteral("KILL_AT_STEP"), QString::number(m_killedAtStep));
        environment.insert(QStringLiteral("KILL_BEFORE"), m_killedBefore);
    }
    process->setProcessEnvironment(environment);
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->start(program, arguments);
    EXPECT_TRUE(process->waitForStarted()) << program.toStdString();
    return process;
}

void Session::setAgentApart() {
    const QString apart = m_folder.filePath(QStringLiteral("velmora-reminders"));
    ASSERT_TRUE(QFile::copy(m_agentProgram, apart));
    m_agentProgram = apart;
}

void Session::beginAgent(const QString& time) { m_agent = start(m_agentProgram, {}, time); }

void Session::startAgent(const QString& time) {
    beginAgent(time);
    ASSERT_TRUE(waitUntil([this] { return isOnBus(theAgent); }));
}

void Session::killAgent() {
    const qint64 worker = agentProcess();
    if (m_agent->state() != QProcess::NotRunning) {
        ASSERT_EQ(::kill(static_cast<pid_t>(supervisor()), SIGKILL), 0);
    }
    if (worker != 0) {
        ::kill(static_cast<pid_t>(worker), SIGKILL);
    }
    m_agent->waitForFinished();
    ASSERT_TRUE(waitUntil([this] { return !isOnBus(theAgent); }));
}

bool Session::isOnBus(const QString& name) { return m_connection.interface()->isServiceRegistered(name); }

void Session::killOwner(const QString& name) {
    const QDBusReply<uint> reply = m_connection.interface()->servicePid(name);
    ASSERT_TRUE(reply.isValid()) << "nobody owns " << name.toStdString();
    ::kill(static_cast<pid_t>(reply.value()), SIGKILL);
}

qint64 Session::agentProcess() {
    const QDBusReply<uint> reply = m_connection.interface()->servicePid(theAgent);
    return reply.isValid() ? reply.value() : 0;
}

void Session::endBus() {
    m_bus.kill();
    m_bus.waitForFinished();
}

QDBusPendingReply<> Session::call(const QString& method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(theAgent, theAgentPath, theAgent, method);
    message.setArguments(arguments);
    return m_connection.asyncCall(message);
}

QDBusPendingReply<QString> Session::schedule(const QByteArray& text, const QString& day) {
    return call(QStringLiteral("Schedule"),
                {QString(), QByteArray("Prescription 'Next Fill Date' Reminder"), text, day, true});
}

QString Session::run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

std::filesystem::path Session::autostartFile() const {
    return folder() / "config/autostart" / (theAgent.toStdString() + ".desktop");
}

std::vector<Reminder> Session::reminders() const {
    std::vector<Reminder> result;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(scheduleFolder(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (const auto reminder = reminderFromFileName(entry->path().filename().string())) {
            result.push_back(*reminder);
        }
    }
    return result;
}

bool Session::isScheduled(const QString& identifier) const {
    const auto all = reminders();
    return std::ranges::find(all, identifier.toStdString(), &Reminder::identifier) != all.end();
}

bool Session::isAllDelivered() const {
    const auto all = reminders();
    return std::ranges::all_of(all, [](const Reminder& reminder) { return reminder.deliveredDay.has_value(); });
}

}  // namespace kpx
