#include "ui/WindowState.h"

#include "ui/SettingsFile.h"
#include "ui/views/MainWindow.h"
#include "ui/views/RecordTableView.h"

#include <QDir>
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

const QString fileName = QStringLiteral("/window.ini");

}  // namespace

void restoreWindowState(MainWindow& window) {
    const QSettings state(settingsFile(stateFolder() + fileName), QSettings::IniFormat);
    window.restoreGeometry(state.value(geometryKey).toByteArray());
    for (RecordTableView* table : window.findChildren<RecordTableView*>()) {
        table->restoreColumns(state.value(table->objectName()).toByteArray());
    }
}

void saveWindowState(MainWindow& window) {
    QDir().mkpath(stateFolder());
    QSettings state(settingsFile(stateFolder() + fileName), QSettings::IniFormat);
    state.setValue(geometryKey, window.saveGeometry());
    for (const RecordTableView* table : window.findChildren<RecordTableView*>()) {
        if (const QByteArray columns = table->savedColumns(); !columns.isEmpty()) {
            state.setValue(table->objectName(), columns);
        }
    }
}

}  // namespace kpx
