#include "tests/ui/ReminderStory.h"

#include "tests/ui/Guide.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <csignal>

namespace kpx::test {

namespace {

const QString applicationName = QStringLiteral("example.velmora.Velmora");
const QString agentName = QStringLiteral("example.velmora.Velmora.Reminders");
const QString notificationsName = QStringLiteral("org.freedesktop.Notifications");

bool isOnBus(const QString& name) { return QDBusConnection::sessionBus().interface()->isServiceRegistered(name); }

void end(Guide& guide, const QString& name) {
    const QDBusReply<uint> process = QDBusConnection::sessionBus().interface()->servicePid(name);
    guide.require(process.isValid() && ::kill(static_cast<pid_t>(process.value()), SIGTERM) == 0,
                  name + QStringLiteral(" does not run"));
    guide.require(QTest::qWaitFor([&] { return !isOnBus(name); }), name + QStringLiteral(" does not end"));
}

QDir schedule() { return qEnvironmentVariable("XDG_STATE_HOME") + QStringLiteral("/Velmora/reminders"); }
QStringList scheduled() { return schedule().entryList({QStringLiteral("*.*.*.*")}, QDir::Files); }

/// As if the days until the reminder's had passed.
void letItsDayCome(Guide& guide) {
    const QString name = scheduled().constFirst();
    QStringList parts = name.split(QLatin1Char('.'));
    parts[1] = QDate::currentDate().addDays(-1).toString(Qt::ISODate);
    guide.require(schedule().rename(name, parts.join(QLatin1Char('.'))),
                  QStringLiteral("the reminder cannot be moved"));
}

int displayed() {
    QProcess process;
    process.start(QStringLiteral("dunstctl"), {QStringLiteral("count"), QStringLiteral("displayed")});
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed().toInt();
}

constexpr QRect notificationArea(0, 0, 600, 140);

/// The desktop's notification daemon, showing what there is in that area, for as long as this lives.
class NotificationDaemon {
public:
    explicit NotificationDaemon(Guide& guide) {
        QFile settings(m_folder.filePath(QStringLiteral("dunstrc")));
        guide.require(settings.open(QIODevice::WriteOnly), QStringLiteral("no settings for the daemon"));
        settings.write(
            "[global]\norigin = top-left\noffset = 20x20\nwidth = (300, 560)\nheight = 200\nfont = DejaVu Sans 11\n"
            "markup = full\nformat = \"<b>%s</b>\\n%b\"\n");
        settings.close();
        m_process.start(QStringLiteral("dunst"), {QStringLiteral("-conf"), settings.fileName()});
        guide.require(QTest::qWaitFor([] { return isOnBus(notificationsName); }),
                      QStringLiteral("no notification daemon"));
    }
    ~NotificationDaemon() {
        m_process.terminate();
        m_process.waitForFinished();
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

/// The first row of the schedule that is not due yet.
int rowToCome(Guide& guide) {
    const Records& rows = guide.program().delegate().maintDueArrayForTV;
    const Date now = guide.program().ports().clock.now();
    const auto row = std::ranges::find_if(rows, [&](const Record& candidate) {
        const auto next = candidate.date("nextdate");
        return next && now < *next;
    });
    guide.require(row != rows.end(), QStringLiteral("everything is due"));
    return static_cast<int>(row - rows.begin());
}

void rightClickRow(Guide& guide, int row) {
    auto* table = widgetNamed<QTableView>(guide.program().window(), "tableViewTab2");
    table->scrollTo(table->model()->index(row, 0));
    QWindow* window = table->window()->windowHandle();
    const QPoint inTable = table->visualRect(table->model()->index(row, 0)).center();
    const QPoint position = table->viewport()->mapTo(table->window(), inTable);
    QTest::mousePress(window, Qt::RightButton, Qt::NoModifier, position);
    QTest::mouseRelease(window, Qt::RightButton, Qt::NoModifier, position);
}

void setTheReminder(Guide& guide) {
    guide.start();
    guide.selectTab(1);
    guide.click("showBtnTab2");
    rightClickRow(guide, rowToCome(guide));
    auto* menu = guide.program().window().findChild<QMenu*>(QStringLiteral("contextMenuTab2"));
    guide.require(QTest::qWaitFor([menu] { return menu->isVisible(); }), QStringLiteral("the menu does not open"));
    guide.picture(QStringLiteral("50-reminder-menu"));
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions().constLast()).center());
    guide.require(waitForAlert(), QStringLiteral("nothing says that the reminder is set"));
    guide.picture(QStringLiteral("51-reminder-set"));
    guide.answerAlert(0);
    guide.require(scheduled().size() == 1, QStringLiteral("the reminder is not scheduled"));
    guide.selectTab(0);
    guide.close();
}

}  // namespace

void beReminded(Guide& guide) {
    writeSmallHousehold();
    setTheReminder(guide);

    end(guide, agentName);
    letItsDayCome(guide);
    {
        const NotificationDaemon daemon(guide);
        QProcess::startDetached(QCoreApplication::applicationDirPath() + QStringLiteral("/velmora-reminders"), {});
        guide.require(QTest::qWaitFor([] { return displayed() == 1; }, 10000), QStringLiteral("no reminder comes"));
        guide.pictureOfScreen(QStringLiteral("52-reminder"), notificationArea);

        QProcess::execute(QStringLiteral("dunstctl"), {QStringLiteral("action"), QStringLiteral("0")});
        guide.require(QTest::qWaitFor([] { return isOnBus(applicationName) && scheduled().isEmpty(); }, 20000),
                      QStringLiteral("a click on the reminder does not start the program"));
        constexpr int untilTheSplashHasGone = 5500;
        guide.wait(untilTheSplashHasGone);
        guide.pictureOfScreen(QStringLiteral("53-reminder-clicked"));
        end(guide, applicationName);
    }
    end(guide, agentName);
}

}  // namespace kpx::test
