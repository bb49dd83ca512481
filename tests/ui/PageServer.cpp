// page_server CERTIFICATE KEY: a small web server on loopback, over TLS and without, on ports of its own, which it
// prints in this order. Answers
//   /text/TEXT       200 with the text, percent-encoded in the address
//   /status/NUMBER   that status, with the body "9.9"
//   /slow/SECONDS    200, and only after that time the body "9.9"
//   /cut             200, and breaks off before the body is whole
//   /long/NUMBER     200, with a body of so many characters "9"
//   /endless         200, with a body that never ends
//   /endless-line    200, with a header that never ends
//   /endless-lines   200, with headers that never end
//   /moved/ADDRESS   on to that address, percent-encoded
//   /unprotected     200, with the number of requests that came without TLS

#include <QCoreApplication>
#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextStream>
#include <QTimer>
#include <QUrl>

namespace {

void send(QTcpSocket& socket, int status, const QByteArray& body, qsizetype length) {
    socket.write("HTTP/1.1 " + QByteArray::number(status) + " Answer\r\nContent-Type: text/plain\r\nContent-Length: " +
                 QByteArray::number(length) + "\r\nConnection: close\r\n\r\n" + body);
    socket.disconnectFromHost();
}

int unprotectedRequests = 0;

constexpr int pieceLength = 65536;

void sendForEver(QTcpSocket& socket, const QByteArray& beginning, const QByteArray& piece) {
    socket.write("HTTP/1.1 200 Answer\r\nContent-Type: text/plain\r\nConnection: close\r\n" + beginning);
    auto* timer = new QTimer(&socket);
    QObject::connect(timer, &QTimer::timeout, &socket, [&socket, piece] {
        constexpr int ahead = 1 << 20;
        if (socket.bytesToWrite() < ahead) {
            socket.write(piece);
        }
    });
    timer->start(1);
}

void answer(QTcpSocket& socket) {
    unprotectedRequests += qobject_cast<QSslSocket*>(&socket) ? 0 : 1;
    const QByteArray path = socket.readLine().split(' ').value(1);
    const QByteArray argument = path.mid(path.lastIndexOf('/') + 1);
    const QByteArray newVersion = "9.9";
    if (path.startsWith("/text/")) {
        const QByteArray text = QByteArray::fromPercentEncoding(argument);
        send(socket, 200, text, text.size());
    } else if (path.startsWith("/status/")) {
        send(socket, argument.toInt(), newVersion, newVersion.size());
    } else if (path.startsWith("/slow/")) {
        QTimer::singleShot(argument.toInt() * 1000, &socket,
                           [&socket, newVersion] { send(socket, 200, newVersion, newVersion.size()); });
    } else if (path.startsWith("/long/")) {
        send(socket, 200, QByteArray(argument.toInt(), '9'), argument.toInt());
    } else if (path == "/endless") {
        sendForEver(socket, "\r\n", QByteArray(pieceLength, '9'));
    } else if (path == "/endless-line") {
        sendForEver(socket, "Version: ", QByteArray(pieceLength, '9'));
    } else if (path == "/endless-lines") {
        sendForEver(socket, "", QByteArray("Version: 9.9\r\n").repeated(pieceLength / 14));
    } else if (path.startsWith("/moved/")) {
        socket.write("HTTP/1.1 302 Moved\r\nContent-Length: 0\r\nConnection: close\r\nLocation: " +
                     QByteArray::fromPercentEncoding(argument) + "\r\n\r\n");
        socket.disconnectFromHost();
    } else if (path == "/unprotected") {
        const QByteArray count = QByteArray::number(unprotectedRequests);
        send(socket, 200, count, count.size());
    } else {
        send(socket, 200, newVersion, 1000);
    }
}

void serve(QTcpServer& server) {
    while (QTcpSocket* socket = server.nextPendingConnection()) {
        const auto answerOnce = [socket] {
            if (socket->canReadLine()) {
                socket->disconnect(SIGNAL(readyRead()));
                answer(*socket);
            }
        };
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, answerOnce);
        answerOnce();
    }
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList files = QCoreApplication::arguments();
    QSslConfiguration configuration;
    configuration.setLocalCertificate(QSslCertificate(contentOf(files.value(1))));
    configuration.setPrivateKey(QSslKey(contentOf(files.value(2)), QSsl::Ec));
    QSslServer protectedServer;
    protectedServer.setSslConfiguration(configuration);
    QTcpServer server;
    if (!protectedServer.listen(QHostAddress::LocalHost) || !server.listen(QHostAddress::LocalHost)) {
        return 1;
    }
    for (QTcpServer* each : {static_cast<QTcpServer*>(&protectedServer), &server}) {
        QObject::connect(each, &QTcpServer::pendingConnectionAvailable, each, [each] { serve(*each); });
    }
    QTextStream(stdout) << protectedServer.serverPort() << ' ' << server.serverPort() << Qt::endl;
    return QCoreApplication::exec();
}
