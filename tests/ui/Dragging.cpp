#include "tests/ui/Dragging.h"

#include <QCoreApplication>
#include <QTest>

namespace kpx::test {

namespace {

/// The corner of the screen where the other program's window stands; clear of the program's own.
constexpr QPoint sourcePlace(2500, 1700);
constexpr QPoint emptyPlace(2300, 1700);
constexpr int settleMilliseconds = 60;

/// The window goes on working while the mouse moves.
bool mouse(const QStringList& orders) {
    QProcess process;
    process.start(QStringLiteral("xdotool"), orders);
    const bool ended = QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; });
    QTest::qWait(settleMilliseconds);
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool mouseTo(const QPoint& place) {
    return mouse({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
}

QPoint middle(const QWidget& widget) { return widget.mapToGlobal(widget.rect().center()); }

}  // namespace

Drag::Drag(const QStringList& addresses, const QString& actions) {
    m_source.start(
        QCoreApplication::applicationDirPath() + QStringLiteral("/drag_source"),
        QStringList{QString::number(sourcePlace.x()), QString::number(sourcePlace.y()), actions} + addresses);
    m_ready = line() == QStringLiteral("ready");
    QTest::qWait(settleMilliseconds);
}

Drag::~Drag() {
    m_source.terminate();
    m_source.waitForFinished(5000);
}

QString Drag::line() {
    return QTest::qWaitFor([this] { return m_source.canReadLine(); }) ? QString::fromUtf8(m_source.readLine()).trimmed()
                                                                      : QString();
}

bool Drag::over(const QWidget* target) {
    if (!m_ready) {
        return false;
    }
    if (!m_taken) {
        m_taken = mouseTo(sourcePlace + QPoint(40, 40)) && mouse({QStringLiteral("mousedown"), QStringLiteral("1")}) &&
                  mouseTo(sourcePlace + QPoint(50, 40)) && mouseTo(sourcePlace + QPoint(60, 30));
    }
    const QPoint place = target ? middle(*target) : emptyPlace;
    return m_taken && mouseTo(place - QPoint(3, 3)) && mouseTo(place);
}

QString Drag::drop() {
    m_taken = false;
    return mouse({QStringLiteral("mouseup"), QStringLiteral("1")}) ? line() : QString();
}

bool moveWindow(QWidget& window, const QPoint& place) {
    window.move(place);
    // The toolkit believes at once that it is there; where it really is the mouse tells, put upon a point of it.
    const QPoint point(5, 5);
    return QTest::qWaitFor([&] {
        QProcess process;
        process.start(QStringLiteral("xdotool"),
                      {QStringLiteral("mousemove"), QStringLiteral("--window"), QString::number(window.winId()),
                       QString::number(point.x()), QString::number(point.y()), QStringLiteral("getmouselocation")});
        process.waitForFinished();
        const QPoint there = window.mapToGlobal(point);
        return process.readAllStandardOutput().startsWith(
            QStringLiteral("x:%1 y:%2 ").arg(there.x()).arg(there.y()).toUtf8());
    });
}

bool moveMouseTo(const QWidget& target) { return mouseTo(middle(target)); }

bool clickMouse(const QWidget& target) {
    // A finger stays down for a moment.
    return moveMouseTo(target) && mouse({QStringLiteral("mousedown"), QStringLiteral("1")}) &&
           mouse({QStringLiteral("mouseup"), QStringLiteral("1")});
}

}  // namespace kpx::test
