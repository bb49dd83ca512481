// velmora_manual FOLDER: leaves the pictures of the manual in FOLDER/<language>.lproj/KPXHelp/, in each language that
// the program's resources have a manual in. Writes to the data folder of its surroundings: only for throw-away ones.

#include "tests/ui/Guide.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/MadeReceipts.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QLocale>
#include <QMenu>
#include <QScreen>
#include <QTableView>

#include <cstdlib>

namespace {

using kpx::test::Guide;

/// As small as the forms are comfortable in: the pages show the pictures unscaled.
constexpr int width = 1000;
constexpr int height = 660;

template <class Widget>
Widget& find(Guide& guide, const char* name) {
    auto* widget = guide.program().window().findChild<Widget*>(QLatin1String(name));
    guide.require(widget, QStringLiteral("there is no ") + QLatin1String(name));
    return *widget;
}

QRect onScreen(const QWidget& widget) { return {widget.mapToGlobal(QPoint()), widget.size()}; }

void pictureTheWindow(Guide& guide, const char* name) {
    guide.pictureOf(guide.program().window(), QLatin1String(name));
}

void pictureTheReceipt(Guide& guide) {
    kpx::KPXAppDelegate& delegate = guide.program().delegate();
    const std::string receipt = kpx::test::writeTillReceipt(QStringLiteral("Lisinopril.pdf")).toStdString();
    guide.doubleClickRow("tableViewTab1", 4);
    delegate.draggingEntered(delegate.outlets.dropButton, receipt);
    delegate.performDragOperation(delegate.outlets.dropButton, receipt);
    delegate.concludeDragOperation(delegate.outlets.dropButton);
    constexpr int untilThePageIsDrawn = 900;
    guide.wait(untilThePageIsDrawn);
    constexpr int margin = 12;
    const QRect shown = onScreen(find<QWidget>(guide, "receiptPopover")) |
                        onScreen(find<QWidget>(guide, "dropButton")) | onScreen(find<QWidget>(guide, "labelSection3")) |
                        onScreen(find<QWidget>(guide, "labelEveryIntervalTab1"));
    guide.pictureOfScreen(QStringLiteral("receipt"), shown.adjusted(-margin, -margin, margin, margin));
    guide.pressKey(Qt::Key_Escape);
}

void pictureTheRemindersMenu(Guide& guide) {
    auto& table = find<QTableView>(guide, "tableViewTab2");
    const kpx::Date now = guide.program().ports().clock.now();
    const kpx::Records& rows = guide.program().delegate().maintDueArrayForTV;
    const auto toCome = std::ranges::find_if(rows, [&](const kpx::Record& row) {
        const auto next = row.date("nextdate");
        return next && now < *next;
    });
    guide.require(toCome != rows.end(), QStringLiteral("everything is due"));
    const int row = static_cast<int>(toCome - rows.begin());
    const QPoint place = table.visualRect(table.model()->index(row, 1)).center();
    QContextMenuEvent wish(QContextMenuEvent::Mouse, place, table.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(table.viewport(), &wish);
    guide.wait(300);
    constexpr int downToTheMenu = 310;
    guide.pictureOfScreen(QStringLiteral("reminder"),
                          {onScreen(find<QWidget>(guide, "theTabView")).topLeft(), QSize(width, downToTheMenu)});
    find<QMenu>(guide, "contextMenuTab2").close();
}

void takePictures(const QString& folder) {
    QDir().mkpath(folder);
    QWidget desktop(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    desktop.setPalette(QColor(0xC8D0D0));
    desktop.setGeometry(QGuiApplication::primaryScreen()->geometry());
    desktop.show();
    desktop.lower();
    kpx::test::writeSmallHousehold();
    Guide guide(folder, QString());
    guide.start();
    guide.setSize(width, height);
    guide.doubleClickRow("tableViewTab1", 2);
    pictureTheWindow(guide, "history");
    guide.selectTab(1);
    guide.click("showBtnTab2");
    pictureTheWindow(guide, "schedule");
    pictureTheRemindersMenu(guide);
    guide.selectTab(2);
    guide.click("showBtnTab3");
    pictureTheWindow(guide, "costs");
    guide.selectTab(3);
    pictureTheWindow(guide, "reports");
    guide.selectTab(0);
    pictureTheReceipt(guide);
    guide.close();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        qCritical("usage: velmora_manual FOLDER");
        return 2;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QDir resources(QString::fromStdString(kpx::QtBundle().resources().string()));
    for (const QString& language : resources.entryList({QStringLiteral("*.lproj")}, QDir::Dirs)) {
        if (!resources.exists(language + QStringLiteral("/KPXHelp/KPXHelp.htm"))) {
            continue;
        }
        const QString code = language.section(QLatin1Char('.'), 0, 0);
        qputenv("LC_ALL", QLocale(code).name().toUtf8() + ".UTF-8");
        qputenv("LANGUAGE", code.toUtf8());
        takePictures(QString::fromLocal8Bit(argv[1]) + QLatin1Char('/') + language + QStringLiteral("/KPXHelp"));
    }
    return EXIT_SUCCESS;
}
