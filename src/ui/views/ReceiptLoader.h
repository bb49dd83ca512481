#pragma once

#include <QImage>
#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <memory>

namespace kpx {

/// Reads receipts' pictures on a thread of its own, so that a large one does not hold up the window.
class ReceiptLoader : public QObject {
    Q_OBJECT

public:
    explicit ReceiptLoader(QObject* parent);
    ~ReceiptLoader() override;

    /// Takes the place of what was asked for before. `largest` is in pixels.
    void load(const QString& file, const QSize& largest);
    /// Nothing asked for before will be told any more.
    void cancel();

Q_SIGNALS:
    /// Later, on the thread of this object; a null picture when the file cannot be read.
    void loaded(const QImage& picture);

private:
    std::shared_ptr<std::atomic<unsigned>> m_latestRequest = std::make_shared<std::atomic<unsigned>>(0);
    QThreadPool m_thread;
};

}  // namespace kpx
