#include "tests/ui/Waiting.h"

#include "ui/Application.h"
#include "ui/views/AlertBox.h"
#include "ui/views/RecordTableView.h"

#include <QApplication>
#include <QTest>

#include <cstdint>
#include <fstream>

namespace kpx::test {

namespace {

AlertBox* visibleAlert() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* alert = qobject_cast<AlertBox*>(widget);
        if (alert && alert->isVisible()) {
            return alert;
        }
    }
    return nullptr;
}

}  // namespace

bool waitUntilActive(const QWidget* window) {
    // A window calls itself active when the desktop says so, before the toolkit has given it the keys.
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window->window(); });
}

bool startUp(Application& program) {
    program.show();
    // Many records are read meanwhile, and what the desktop says is heard after that.
    return QTest::qWaitForWindowExposed(&program.window()) &&
           QTest::qWaitFor([&program] { return program.hasStarted(); }) && waitUntilActive(&program.window());
}

std::unique_ptr<Application> startWithoutSplash() {
    auto program = std::make_unique<Application>();
    if (!startUp(*program)) {
        return nullptr;
    }
    program->ports().windows.closeSplash();
    return program;
}

AlertBox* waitForAlert() {
    return QTest::qWaitFor([] { return visibleAlert() && QTest::qWaitForWindowExposed(visibleAlert()); })
               ? visibleAlert()
               : nullptr;
}

bool noAlertShows() {
    QCoreApplication::processEvents();
    return visibleAlert() == nullptr;
}

qint64 OwnTimer::restart() {
    const qint64 passed = elapsed();
    m_start = now();
    return passed;
}

std::chrono::milliseconds OwnTimer::now() {
    using namespace std::chrono;
    std::int64_t ran = 0;
    std::int64_t waitedForItsTurn = 0;
    std::ifstream("/proc/thread-self/schedstat") >> ran >> waitedForItsTurn;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch() - nanoseconds(waitedForItsTurn));
}

void type(QWidget& widget, const QString& text) {
    for (const QChar& character : text) {
        if (character.unicode() < 128) {
            QTest::keyClick(&widget, character.toLatin1());
        } else {
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(character), Qt::NoModifier);
        }
    }
}

void clickRow(QWidget& table, int row, bool twice) {
    auto& view = dynamic_cast<RecordTableView&>(table);
    QPoint position(20, view.viewport()->height() - 4);
    if (row >= 0) {
        const QModelIndex index = view.model()->index(row, 0);
        view.scrollTo(index);
        position = view.visualRect(index).center();
    }
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, position);
    if (twice) {
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }
}

}  // namespace kpx::test
