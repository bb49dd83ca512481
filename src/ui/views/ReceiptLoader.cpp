#include "ui/views/ReceiptLoader.h"

#include "ui/views/ReceiptImage.h"

namespace kpx {

ReceiptLoader::ReceiptLoader(QObject* parent) : QObject(parent) { m_thread.setMaxThreadCount(1); }

ReceiptLoader::~ReceiptLoader() { cancel(); }

void ReceiptLoader::load(const QString& file, const QSize& largest) {
    cancel();
    const unsigned request = *m_latestRequest;
    m_thread.start([this, file, largest, request, latest = m_latestRequest] {
        if (*latest != request) {
            return;
        }
        const QImage picture = readReceiptImage(file, largest);
        // The pool waits for this job before the object is gone; what is left in its queue goes with it.
        QMetaObject::invokeMethod(
            this,
            [this, picture, request] {
                if (*m_latestRequest == request) {
                    Q_EMIT loaded(picture);
                }
            },
            Qt::QueuedConnection);
    });
}

void ReceiptLoader::cancel() {
    ++*m_latestRequest;
    m_thread.clear();
}

}  // namespace kpx
