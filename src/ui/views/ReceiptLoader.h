#pragma once

#include "decoding/PageStream.h"

#include <QImage>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <memory>

namespace kpx {

/// Has receipts read by the decoder, a process of its own: a foreign file can neither hold up the window nor
/// harm it. Nothing here waits.
class ReceiptLoader : public QObject {
    Q_OBJECT

public:
    explicit ReceiptLoader(QObject* parent);
    ~ReceiptLoader() override;

    /// Takes the place of what was asked for before. Answered by the signals below, all of them later.
    void load(const DecodingRequest& request);
    /// Nothing asked for before will be told any more.
    void cancel();

Q_SIGNALS:
    void outlineCame(const kpx::DocumentOutline& outline);
    void pageCame(int index, const QImage& picture);
    /// The last word on a request. Shown only where at least one page came; where some came before a page that
    /// cannot be shown, those are shown and no more.
    void finished(kpx::DecodingResult result);

private:
    void readAnswer();
    void processEnded(int exitCode, QProcess::ExitStatus status);
    void end(DecodingResult result);

    struct Ended {
        void operator()(QProcess* process) const;
    };
    std::unique_ptr<QProcess, Ended> m_process;
    /// Of the request that counts; those who listen may end it in the midst of reading.
    std::shared_ptr<PageStreamReader> m_answer;
    QTimer m_patience;
    int m_pagesCame = 0;
};

}  // namespace kpx
