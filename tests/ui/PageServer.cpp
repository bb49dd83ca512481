// page_server: a small HTTP server on a port of its own on loopback, which it prints. Answers
//   /text/TEXT       200 with the text, percent-encoded in the address
//   /status/NUMBER   that status, with the body "9.9"
//   /slow/SECONDS    200, and only after that time the body "9.9"
//   /cut             200, and breaks off before the body is whole

#include <QCoreApplication>
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

void answer(QTcpSocket& socket) {
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
    } else {
        send(socket, 200, newVersion, 1000);
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost)) {
        return 1;
    }
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server] {
        QTcpSocket* socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            if (socket->canReadLine()) {
                answer(*socket);
            }
        });
    });
    QTextStream(stdout) << server.serverPort() << Qt::endl;
    return QCoreApplication::exec();
}
