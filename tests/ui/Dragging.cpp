#include "tests/ui/Dragging.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <optional>

namespace kpx::test {

namespace {

/// The corner of the screen where the other program's window stands; clear of the program's own.
constexpr QPoint sourcePlace(2100, 1300);
constexpr QSize sourceSize(480, 480);
constexpr int settleMilliseconds = 60;
const QString mouseInside = QStringLiteral("at ");
const QString watchName = QStringLiteral("mouseWatch");

bool isWayland() { return QGuiApplication::platformName() == QLatin1String("wayland"); }

/// The window goes on working while the mouse moves and keys are pressed.
bool act(const QStringList& orders) {
    QProcess process;
    process.start(QStringLiteral("xdotool"), orders);
    const bool ended = QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; });
    QTest::qWait(settleMilliseconds);
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool mouseTo(const QPoint& place) {
    return act({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
}

/// Where no window stands.
QPoint emptyPlace() { return QGuiApplication::primaryScreen()->geometry().bottomRight(); }

/// Asks for the thing's place until it says the same with the mouse at another point of it: what it says may be late,
/// and another window may lie over a part of it.
std::optional<QPoint> agreed(QPoint place, const QSize& size, std::optional<QPoint>& seen) {
    constexpr QPointF points[] = {{0.33, 0.33}, {0.67, 0.67}, {0.33, 0.67}, {0.67, 0.33},
                                  {0.1, 0.1},   {0.9, 0.9},   {0.1, 0.9},   {0.9, 0.1}};
    for (const QPointF& point : points) {
        const QPoint aim = place + QPointF(point.x() * size.width(), point.y() * size.height()).toPoint();
        seen.reset();
        mouseTo(aim);
        if (QTest::qWaitFor([&seen] { return seen.has_value(); }, 700)) {
            if (aim - *seen == place) {
                return place;
            }
            place = aim - *seen;
        }
    }
    return std::nullopt;
}

/// The place on the screen of a thing of that size which says where in itself it sees the mouse: that is moved over the
/// screen in steps no wider than the thing.
std::optional<QPoint> search(const QSize& size, std::optional<QPoint>& seen) {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    for (int y = size.height() / 2; y < screen.height(); y += size.height() * 3 / 4) {
        for (int x = size.width() / 2; x < screen.width(); x += size.width() * 3 / 4) {
            mouseTo(QPoint(x, y));
            const auto place = seen ? agreed(QPoint(x, y) - *seen, size, seen) : std::nullopt;
            if (place) {
                return place;
            }
        }
    }
    return std::nullopt;
}

/// A busy desktop may need a second look.
QPoint found(const QSize& size, std::optional<QPoint>& seen) {
    constexpr int looks = 3;
    std::optional<QPoint> place;
    for (int look = 0; look < looks && !place; ++look) {
        place = search(size, seen);
    }
    return place.value_or(QPoint());
}

/// Of one window, whose child it is: where in it the mouse was seen last, and where it stands on the screen.
class MouseWatch : public QObject {
public:
    explicit MouseWatch(QWindow* window) : QObject(window) { window->installEventFilter(this); }
    std::optional<QPoint> seen;
    std::optional<QPoint> place;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Enter || event->type() == QEvent::MouseMove) {
            seen = static_cast<QSinglePointEvent*>(event)->position().toPoint();
        } else if (event->type() == QEvent::Hide) {
            place.reset();
        }
        return false;
    }
};

/// A Wayland desktop tells no window its place, but places a pop-up as it is asked to beside its window.
QPoint placeOf(const QWidget& window) {
    if (!isWayland()) {
        return window.mapToGlobal(QPoint());
    }
    if (window.windowType() == Qt::Popup) {
        const QWidget& below = *window.parentWidget()->window();
        return placeOf(below) + window.mapToGlobal(QPoint()) - below.mapToGlobal(QPoint());
    }
    QObject* known = window.windowHandle()->findChild<QObject*>(watchName);
    auto* watch = known ? static_cast<MouseWatch*>(known) : new MouseWatch(window.windowHandle());
    if (!watch->place) {
        watch->setObjectName(watchName);
        watch->place = found(window.size(), watch->seen);
    }
    return *watch->place;
}

QPoint placeIn(const QWidget& widget, const QPoint& position) {
    return placeOf(*widget.window()) + widget.mapTo(widget.window(), position);
}

QPoint middle(const QWidget& widget) { return placeIn(widget, widget.rect().center()); }

}  // namespace

Drag::Drag(const QStringList& addresses, const QString& actions)
    : m_arguments(QStringList{QString::number(sourcePlace.x()), QString::number(sourcePlace.y()), actions} +
                  addresses) {
    start();
}

void Drag::start() {
    m_source.start(QCoreApplication::applicationDirPath() + QStringLiteral("/drag_source"), m_arguments);
    m_ready = line() == QStringLiteral("ready");
    QTest::qWait(settleMilliseconds);
}

void Drag::stop() {
    m_source.terminate();
    m_source.waitForFinished(5000);
}

Drag::~Drag() { stop(); }

QString Drag::line() {
    QString line;
    do {
        if (!QTest::qWaitFor([this] { return m_source.canReadLine(); })) {
            return {};
        }
        line = QString::fromUtf8(m_source.readLine()).trimmed();
    } while (line.startsWith(mouseInside));
    return line;
}

QPoint Drag::sourceAt() {
    if (!isWayland()) {
        return sourcePlace;
    }
    std::optional<QPoint> seen;
    const auto listening = QObject::connect(&m_source, &QProcess::readyRead, [this, &seen] {
        while (m_source.canReadLine()) {
            const QList<QByteArray> words = m_source.readLine().trimmed().split(' ');
            seen = QPoint(words.value(1).toInt(), words.value(2).toInt());
        }
    });
    const QPoint place = found(sourceSize, seen);
    QObject::disconnect(listening);
    return place;
}

bool Drag::over(const QWidget* target) {
    if (!m_ready) {
        return false;
    }
    // Looked for before the drag has the mouse.
    const QPoint place = target ? middle(*target) : emptyPlace();
    if (!m_taken) {
        QPoint source = sourceAt();
        // A desktop that chooses the place may have chosen one over what is aimed at, and another for the next window.
        for (int tries = 0; tries < 5 && QRect(source, sourceSize).contains(place); ++tries) {
            stop();
            start();
            source = sourceAt();
        }
        source += QPoint(40, 40);
        m_taken = mouseTo(source) && act({QStringLiteral("mousedown"), QStringLiteral("1")}) &&
                  mouseTo(source + QPoint(10, 0)) && mouseTo(source + QPoint(20, -10));
    }
    return m_taken && mouseTo(place - QPoint(3, 3)) && mouseTo(place);
}

QString Drag::drop() {
    m_taken = false;
    return act({QStringLiteral("mouseup"), QStringLiteral("1")}) ? line() : QString();
}

QString linked() { return isWayland() ? QStringLiteral("copy") : QStringLiteral("link"); }

bool moveWindow(QWidget& window, const QPoint& place) {
    if (isWayland()) {
        return true;
    }
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

bool moveMouseAway() { return mouseTo(emptyPlace()); }

bool moveMouseTo(const QWidget& target) { return mouseTo(middle(target)); }

bool clickMouse(const QWidget& target) { return clickMouse(target, target.rect().center()); }

bool clickMouse(const QWidget& target, const QPoint& position) {
    // A finger stays down for a moment.
    return mouseTo(placeIn(target, position)) && act({QStringLiteral("mousedown"), QStringLiteral("1")}) &&
           act({QStringLiteral("mouseup"), QStringLiteral("1")});
}

bool pressKeys(const QString& keys) {
    // One after the other, as fingers do: of a chord at once Weston may see the letter before its modifier.
    const QStringList chord = keys.split(QLatin1Char('+'));
    bool pressed = true;
    for (const QString& key : chord) {
        pressed = act({QStringLiteral("keydown"), key}) && pressed;
    }
    for (const QString& key : chord) {
        pressed = act({QStringLiteral("keyup"), key}) && pressed;
    }
    return pressed;
}

}  // namespace kpx::test
