#include "ui/HandedOverReminder.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServer>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QEventLoop>
#include <QStringList>
#include <QVariantMap>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

/// What a program may send, made up as the bytes say: values of every shape that the bus knows.
class Payload {
public:
    Payload(const std::uint8_t* data, std::size_t size) : m_bytes(data, data + size) {}

    QVariantList parameters() {
        QVariantList list;
        for (unsigned count = next() % 4; count > 0; --count) {
            list << value(0);
        }
        return list;
    }

private:
    std::uint8_t next() { return m_position < m_bytes.size() ? m_bytes[m_position++] : 0; }
    QByteArray bytes() {
        QByteArray result;
        for (unsigned count = next() % 16; count > 0; --count) {
            result += static_cast<char>(next());
        }
        return result;
    }
    QString text() { return QString::fromLatin1(bytes()).remove(QChar(0)); }
    QString key() {
        constexpr const char* known[] = {"identifier", "title", "text"};
        const unsigned which = next() % 4;
        return which < 3 ? QString::fromLatin1(known[which]) : text();
    }
    QVariantMap map(int depth) {
        QVariantMap result;
        for (unsigned count = next() % 5; count > 0; --count) {
            const QString entry = key();
            result.insert(entry, value(depth + 1));
        }
        return result;
    }
    /// a{ss}, a{si}, a(ss), (iay), ai, and an array of maps.
    QVariant argument(int depth) {
        QDBusArgument result;
        const unsigned kind = next() % 6;
        const unsigned count = next() % 4;
        if (kind < 2) {
            result.beginMap(QMetaType::fromType<QString>(),
                            kind == 0 ? QMetaType::fromType<QString>() : QMetaType::fromType<int>());
            for (unsigned index = 0; index < count; ++index) {
                result.beginMapEntry();
                result << key();
                kind == 0 ? result << text() : result << static_cast<int>(next());
                result.endMapEntry();
            }
            result.endMap();
        } else if (kind == 2) {
            result.beginStructure();
            result << text() << QStringList(text());
            result.endStructure();
        } else if (kind == 3) {
            result.beginStructure();
            result << static_cast<int>(next()) << bytes();
            result.endStructure();
        } else if (kind == 4) {
            result.beginArray(QMetaType::fromType<int>());
            for (unsigned index = 0; index < count; ++index) {
                result << static_cast<int>(next());
            }
            result.endArray();
        } else {
            result.beginArray(QMetaType::fromType<QVariantMap>());
            for (unsigned index = 0; index < count; ++index) {
                result << map(depth + 1);
            }
            result.endArray();
        }
        return QVariant::fromValue(result);
    }
    QVariant value(int depth) {
        constexpr int deepest = 6;
        switch (next() % (depth < deepest ? 12 : 7)) {
            case 0:
                return static_cast<int>(next());
            case 1:
                return text();
            case 2:
                return bytes();
            case 3:
                return next() % 2 == 0;
            case 4:
                return next() / 3.0;
            case 5:
                return QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a")));
            case 6:
                return QVariant::fromValue(QDBusSignature(QStringLiteral("a{sv}")));
            case 7:
                return QStringList({text(), text()});
            case 8:
                return QVariantList({value(depth + 1), value(depth + 1)});
            case 9:
                return map(depth);
            case 10:
                return QVariant::fromValue(QDBusVariant(value(depth + 1)));
            default:
                return argument(depth);
        }
    }

    std::vector<std::uint8_t> m_bytes;
    std::size_t m_position = 0;
};

}  // namespace

/// The receiving end of a connection: the program's own reading, of what really came over a socket.
class Receiver : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "fuzz.Receiver")

public Q_SLOTS:
    void ActivateAction(const QString&, const QVariantList& parameters, const QVariantMap&) {
        static_cast<void>(kpx::handedOverReminder(parameters));
    }
};

namespace {

struct Connection {
    Connection() : server(QStringLiteral("unix:tmpdir=/tmp")) {
        QObject::connect(&server, &QDBusServer::newConnection, &server, [this](QDBusConnection connection) {
            connection.registerObject(QStringLiteral("/"), &receiver, QDBusConnection::ExportAllSlots);
            accepted.push_back(connection);
        });
        client = QDBusConnection::connectToPeer(server.address(), QStringLiteral("client"));
        while (accepted.empty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    QDBusServer server;
    Receiver receiver;
    QDBusConnection client{QString()};
    std::vector<QDBusConnection> accepted;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    static Connection connection;
    QDBusMessage message = QDBusMessage::createMethodCall(
        QString(), QStringLiteral("/"), QStringLiteral("fuzz.Receiver"), QStringLiteral("ActivateAction"));
    message << QStringLiteral("reminder") << Payload(data, size).parameters() << QVariantMap();
    const QDBusPendingCallWatcher answer(connection.client.asyncCall(message));
    QEventLoop loop;
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!answer.isFinished()) {
        loop.exec();
    }
    if (!connection.client.isConnected()) {
        std::abort();
    }
    return 0;
}

#include "bus_payloads.moc"
