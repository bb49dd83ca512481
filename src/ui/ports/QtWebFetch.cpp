#include "ui/ports/QtWebFetch.h"

#include "ui/Conversions.h"

#include <QEventLoop>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <memory>

namespace kpx {

std::optional<WebFetch::Response> QtWebFetch::fetch(const std::string& address) {
    constexpr int timeOutInMilliseconds = 15000;
    const std::unique_ptr<QNetworkReply> reply(m_network.get(QNetworkRequest(QUrl(qstring(address)))));
    QEventLoop loop;
    QTimer wholeRequest;
    wholeRequest.setSingleShot(true);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&wholeRequest, &QTimer::timeout, reply.get(), &QNetworkReply::abort);
    wholeRequest.start(timeOutInMilliseconds);
    if (!reply->isFinished()) {
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid() || reply->error() == QNetworkReply::OperationCanceledError) {
        return std::nullopt;
    }
    return Response{status.toInt(), reply->readAll().toStdString()};
}

}  // namespace kpx
