#include "tests/reminders/simulation/Simulation.h"

namespace kpx {

Part::Part(const QProcessEnvironment& environment, const QString& program, const QStringList& arguments) {
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(program, arguments);
    m_process.waitForStarted();
}

Part::~Part() { kill(); }

void Part::kill() {
    m_process.kill();
    m_process.waitForFinished();
}

void Part::listen(const std::function<void(const QStringList& words)>& told) {
    while (m_process.canReadLine()) {
        QString line = QString::fromUtf8(m_process.readLine());
        line.chop(1);
        told(line.split(QLatin1Char('\t')));
    }
}

bool Part::give(const QString& command, const std::function<void(const QStringList& words)>& told) {
    m_process.write(command.toUtf8() + '\n');
    bool isDone = false;
    const auto hear = [&](const QStringList& words) {
        if (words.first() == QStringLiteral("done")) {
            isDone = true;
        } else {
            told(words);
        }
    };
    constexpr int patience = 60000;
    waitUntil(
        [&] {
            listen(hear);
            return isDone || m_process.state() == QProcess::NotRunning;
        },
        patience);
    listen(hear);
    return isDone;
}

}  // namespace kpx
