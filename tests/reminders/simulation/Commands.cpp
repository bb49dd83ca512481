#include "tests/reminders/simulation/Commands.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>

#include <unistd.h>

#include <cstdio>
#include <utility>

namespace kpx {

Commands::Commands(std::function<void(const QStringList& words)> run)
    : m_run(std::move(run)), m_input(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&m_input, &QSocketNotifier::activated, this, [this] { read(); });
}

void Commands::read() {
    char bytes[4096];
    const ssize_t length = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (length <= 0) {
        return QCoreApplication::quit();
    }
    m_unread.append(bytes, static_cast<qsizetype>(length));
    // A command runs the event loop; the next one waits for it.
    m_input.setEnabled(false);
    for (qsizetype end = m_unread.indexOf('\n'); end >= 0; end = m_unread.indexOf('\n')) {
        const QString line = QString::fromUtf8(m_unread.left(end));
        m_unread.remove(0, end + 1);
        const QStringList words = line.split(QLatin1Char('\t'));
        m_run(words);
        if (words.first() != QStringLiteral("kill")) {  // whose steps are those of what comes next
            settle();
        }
        tell(QStringLiteral("done"));
    }
    m_input.setEnabled(true);
}

void Commands::tell(const QString& line) {
    std::fputs(qPrintable(line + QLatin1Char('\n')), stdout);
    std::fflush(stdout);
}

void settle() {
    constexpr int longestChain = 4;
    constexpr int patience = 5000;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QString server = QStringLiteral("org.freedesktop.Notifications");
    for (int round = 0; round < longestChain; ++round) {
        const bool isThere = bus.interface()->isServiceRegistered(server);
        QDBusMessage question = QDBusMessage::createMethodCall(
            isThere ? server : QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
        QEventLoop loop;
        QDBusPendingCallWatcher watcher(bus.asyncCall(question, patience));
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        loop.exec();
        QCoreApplication::processEvents();
    }
}

}  // namespace kpx
