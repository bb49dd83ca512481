#include "ui/views/ReceiptLoader.h"

#include <QCoreApplication>

#include <chrono>

namespace kpx {

namespace {

/// The decoder limits its own processor time. This is for one that waits for ever, as for a folder on a network,
/// and long enough for a busy machine.
constexpr std::chrono::seconds patience{60};

QImage imageOf(PixelSize size, std::string_view pixels) {
    const auto* bytes = reinterpret_cast<const uchar*>(pixels.data());
    return QImage(bytes, size.width, size.height, size.width * bytesOfPixel, QImage::Format_RGB32).copy();
}

DecodingResult resultOf(int exitCode, QProcess::ExitStatus status) {
    if (status == QProcess::NormalExit && exitCode == static_cast<int>(DecodingResult::NotFound)) {
        return DecodingResult::NotFound;
    }
    return status == QProcess::NormalExit && exitCode == 0 ? DecodingResult::Shown : DecodingResult::CannotBeShown;
}

}  // namespace

void ReceiptLoader::Ended::operator()(QProcess* process) const {
    // Its destructor would wait for the process, so it goes after the process and not before.
    process->disconnect();
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            process->deleteLater();
        }
    });
    process->kill();
}

ReceiptLoader::ReceiptLoader(QObject* parent) : QObject(parent) {
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { end(DecodingResult::CannotBeShown); });
}

ReceiptLoader::~ReceiptLoader() = default;

void ReceiptLoader::load(const DecodingRequest& request) {
    cancel();
    m_pagesCame = 0;
    m_answer = std::make_shared<PageStreamReader>(request);
    m_answer->outlineCame = [this, answer = m_answer.get()](const DocumentOutline& outline) {
        if (m_answer.get() == answer) {
            Q_EMIT outlineCame(outline);
        }
    };
    m_answer->pageCame = [this, answer = m_answer.get()](int index, PixelSize size, std::string_view pixels) {
        if (m_answer.get() == answer) {
            ++m_pagesCame;
            Q_EMIT pageCame(index, imageOf(size, pixels));
        }
    };
    m_process.reset(new QProcess);
    // What its readers have to say about foreign files is nobody's business here.
    m_process->setStandardErrorFile(QProcess::nullDevice());
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &ReceiptLoader::readAnswer);
    connect(m_process.get(), &QProcess::finished, this, &ReceiptLoader::processEnded);
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            end(DecodingResult::CannotBeShown);
        }
    });
    m_patience.start(patience);
    m_process->start(QCoreApplication::applicationDirPath() + QStringLiteral("/velmora-decoder"), QStringList());
    if (m_process) {
        m_process->write(QByteArray::fromStdString(textFromRequest(request)));
        m_process->closeWriteChannel();
    }
}

void ReceiptLoader::cancel() {
    m_patience.stop();
    m_process.reset();
    m_answer.reset();
}

void ReceiptLoader::readAnswer() {
    const QByteArray bytes = m_process->readAllStandardOutput();
    const auto answer = m_answer;
    const bool isSound = answer->append({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (!isSound && m_answer == answer) {
        end(DecodingResult::CannotBeShown);
    }
}

void ReceiptLoader::processEnded(int exitCode, QProcess::ExitStatus status) {
    const auto answer = m_answer;
    readAnswer();
    if (m_answer == answer) {
        end(resultOf(exitCode, status));
    }
}

void ReceiptLoader::end(DecodingResult result) {
    const bool isWhole = m_answer->isComplete() && m_pagesCame > 0;
    cancel();
    Q_EMIT finished(result == DecodingResult::Shown && !isWhole ? DecodingResult::CannotBeShown : result);
}

}  // namespace kpx
