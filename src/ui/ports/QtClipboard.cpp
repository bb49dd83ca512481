#include "ui/ports/QtClipboard.h"

#include "ui/Conversions.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

namespace kpx {
namespace {

/// A list of addresses may hold lines that are none.
bool isComment(const QByteArray& address) { return address.isEmpty() || address.startsWith('#'); }

}  // namespace

std::string QtClipboard::address() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) {
        return {};
    }
    for (const QUrl& address : data->urls()) {
        const QByteArray encoded = address.toEncoded();
        if (!isComment(encoded)) {
            return encoded.toStdString();
        }
    }
    return utf8(data->text().trimmed().section(QLatin1Char('\n'), 0, 0).trimmed());
}

void QtClipboard::setText(const std::string& plain, const std::string& html) {
    auto* data = new QMimeData;
    data->setText(qstring(plain));
    data->setHtml(qstring(html));
    QGuiApplication::clipboard()->setMimeData(data);
}

}  // namespace kpx
