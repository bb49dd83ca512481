#include "ui/ports/QtWebFetch.h"

#include "ui/Conversions.h"

#include <QEventLoop>
#include <QFile>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <unistd.h>

#include <memory>

namespace kpx {

namespace {

/// In bytes. A version is a few characters; whatever else the address may answer is not to fill the memory.
constexpr qint64 longestAnswer = 65536;

/// In bytes. The toolkit gathers what comes before an answer's body without a bound and tells nobody how much that is,
/// so what is bounded is how much more memory the program holds than before. A connection takes some 20 MB.
constexpr qint64 mostMemory = qint64{64} << 20;
constexpr std::chrono::milliseconds betweenLooks{20};

/// What this program holds of the memory, in bytes.
qint64 memoryHeld() {
    QFile pages(QStringLiteral("/proc/self/statm"));
    const QByteArray resident = pages.open(QIODevice::ReadOnly) ? pages.readAll().split(' ').value(1) : QByteArray();
    return resident.toLongLong() * ::sysconf(_SC_PAGESIZE);
}

/// Errors of the connection have numbers below 100; the server's own refusals, such as "not found", above.
bool connectionFailed(QNetworkReply::NetworkError error) { return error > QNetworkReply::NoError && error < 100; }

}  // namespace

QtWebFetch::QtWebFetch(std::chrono::milliseconds timeOut) : m_timeOut(timeOut) {}

std::optional<WebFetch::Response> QtWebFetch::fetch(const std::string& address) {
    const QUrl url(qstring(address), QUrl::StrictMode);
    if (url.scheme() != QStringLiteral("https")) {
        return std::nullopt;
    }
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // As it is: a packed answer may be a thousand times as long when unpacked.
    request.setRawHeader("Accept-Encoding", "identity");
    const std::unique_ptr<QNetworkReply> reply(m_network.get(request));
    reply->setReadBufferSize(longestAnswer);
    QByteArray body;
    QEventLoop loop;
    QTimer wholeRequest;
    wholeRequest.setSingleShot(true);
    const auto takeWhatCame = [&] {
        if (reply->isOpen()) {
            body += reply->read(longestAnswer - body.size());
        }
        if (body.size() == longestAnswer) {
            loop.quit();
        }
    };
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, takeWhatCame);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&wholeRequest, &QTimer::timeout, reply.get(), &QNetworkReply::abort);
    wholeRequest.start(m_timeOut);
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, reply.get(), [&reply, most = memoryHeld() + mostMemory] {
        if (memoryHeld() > most) {
            reply->abort();
        }
    });
    watch.start(betweenLooks);
    if (!reply->isFinished()) {
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    takeWhatCame();
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    // Half an answer, from a connection that broke off, is none. The rest of a longer one does not count.
    const bool isWhole = body.size() == longestAnswer || !connectionFailed(reply->error());
    return status.isValid() && isWhole ? std::optional(Response{status.toInt(), body.toStdString()}) : std::nullopt;
}

}  // namespace kpx
