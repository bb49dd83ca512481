#include "ui/WindowState.h"

#include "ui/SettingsFile.h"
#include "ui/views/MainWindow.h"
#include "ui/views/RecordTableView.h"

#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>

namespace kpx {

namespace {

const QString geometryKey = QStringLiteral("geometry");

/// This version of the toolkit knows no place for state.
QString stateFolder() {
    const QString set = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base = QDir::isAbsolutePath(set) ? set : QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/Velmora");
}

/// A screen may have gone since, and a damaged state may name any place.
void moveOntoScreen(MainWindow& window) {
    constexpr int frameAbove = 20;
    const QRect place = window.geometry();
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize size = place.size().boundedTo(room.size() - QSize(0, frameAbove)).expandedTo(window.minimumSize());
    const QPoint corner(qMax(room.left(), qMin(place.left(), room.right() + 1 - size.width())),
                        qMax(room.top() + frameAbove, qMin(place.top(), room.bottom() + 1 - size.height())));
    if (!room.contains(place)) {
        window.setGeometry(QRect(corner, size));
    }
}

const QString fileName = QStringLiteral("/window.ini");

}  // namespace

void restoreWindowState(MainWindow& window) {
    const QSettings state(settingsFile(stateFolder() + fileName), QSettings::IniFormat);
    if (window.restoreGeometry(state.value(geometryKey).toByteArray())) {
        moveOntoScreen(window);
    }
    for (RecordTableView* table : window.findChildren<RecordTableView*>()) {
        table->restoreColumns(state.value(table->objectName()).toString());
    }
}

void saveWindowState(MainWindow& window) {
    QDir().mkpath(stateFolder());
    QSettings state(settingsFile(stateFolder() + fileName), QSettings::IniFormat);
    state.setValue(geometryKey, window.saveGeometry());
    for (const RecordTableView* table : window.findChildren<RecordTableView*>()) {
        if (const QString columns = table->savedColumns(); !columns.isEmpty()) {
            state.setValue(table->objectName(), columns);
        }
    }
}

}  // namespace kpx
