#include "ui/ports/QtClipboard.h"

#include "ui/Conversions.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

namespace kpx {

std::string QtClipboard::address() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) {
        return {};
    }
    if (const QList<QUrl> addresses = data->urls(); !addresses.isEmpty()) {
        return addresses.constFirst().toEncoded().toStdString();
    }
    return utf8(data->text().section(QLatin1Char('\n'), 0, 0).trimmed());
}

void QtClipboard::setText(const std::string& plain, const std::string& html) {
    auto* data = new QMimeData;
    data->setText(qstring(plain));
    data->setHtml(qstring(html));
    QGuiApplication::clipboard()->setMimeData(data);
}

}  // namespace kpx
