#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>

#include <functional>

namespace kpx {

/// Lines from the simulation, one after the other; each is answered with a line when all it caused is over.
class Commands : public QObject {
public:
    /// `run` gets the words of a line, which are separated by tabs. The end of the input ends the program.
    explicit Commands(std::function<void(const QStringList& words)> run);

    static void tell(const QString& line);

private:
    void read();

    std::function<void(const QStringList& words)> m_run;
    QSocketNotifier m_input;
    QByteArray m_unread;
};

/// Lets everything that is on its way over the bus arrive, and what it causes: as many questions as the longest
/// chain of messages there is are put to the notification server, or to the bus where there is none, and answered.
void settle();

}  // namespace kpx
