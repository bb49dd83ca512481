#include "ui/views/MenuBarKey.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QShortcut>

namespace kpx {

void openMenuBarByKey(QMainWindow& window) {
    // The toolkit knows the key by itself on other desktops only.
    QObject::connect(new QShortcut(Qt::Key_F10, &window), &QShortcut::activated, &window,
                     [&window] { window.menuBar()->setActiveAction(window.menuBar()->actions().constFirst()); });
}

}  // namespace kpx
