#include "ui/ports/QtWebFetch.h"

#include "ui/Conversions.h"

#include <QEventLoop>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <memory>

namespace kpx {

namespace {

/// Errors of the connection have numbers below 100; the server's own refusals, such as "not found", above.
bool connectionFailed(QNetworkReply::NetworkError error) { return error > QNetworkReply::NoError && error < 100; }

}  // namespace

QtWebFetch::QtWebFetch(std::chrono::milliseconds timeOut) : m_timeOut(timeOut) {}

std::optional<WebFetch::Response> QtWebFetch::fetch(const std::string& address) {
    const std::unique_ptr<QNetworkReply> reply(m_network.get(QNetworkRequest(QUrl(qstring(address)))));
    QEventLoop loop;
    QTimer wholeRequest;
    wholeRequest.setSingleShot(true);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&wholeRequest, &QTimer::timeout, reply.get(), &QNetworkReply::abort);
    wholeRequest.start(m_timeOut);
    if (!reply->isFinished()) {
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    // Half an answer, from a connection that broke off, is none.
    if (!status.isValid() || connectionFailed(reply->error())) {
        return std::nullopt;
    }
    return Response{status.toInt(), reply->readAll().toStdString()};
}

}  // namespace kpx
