#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/SingleInstance.h"
#include "ui/ports/QtUserNotificationCenter.h"

#include <QAction>
#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <utility>

using namespace kpx;
using namespace kpx::test;

/// A reminder's way from the program to the agent, to the desktop, and by a click back to the program.
class ReminderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        // The session's bus knows nothing of the display, so it could not start the daemon.
        m_daemon.setProcessChannelMode(QProcess::ForwardedChannels);
        m_daemon.start(QStringLiteral("dunst"));
        const auto* bus = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY(bus->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications")));
    }
    void cleanupTestCase() {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    void init() {
        writeSmallHousehold();
        m_instance = std::make_unique<SingleInstance>();
        QVERIFY(m_instance->claim());
        m_program = std::make_unique<Application>();
        m_instance->activated = [this] { m_program->raise(); };
        m_instance->reminderClicked = [this](const UserNotification& reminder) { m_program->open(reminder); };
    }
    void cleanup() {
        // The next case begins with nothing scheduled.
        auto& notifications = m_program->ports().notifications;
        for (const UserNotification& left : notifications.scheduledNotifications()) {
            notifications.removeScheduledNotification(left);
        }
        QTRY_COMPARE(scheduled().size(), 0);
        m_program.reset();
        m_instance.reset();
    }

    void aTokenOfAnyLengthLeavesProgramsToBeStarted() {
        const QString key = QStringLiteral("desktop-startup-id");
        constexpr const char* variable = "DESKTOP_STARTUP_ID";
        m_instance->Activate({{key, QStringLiteral("a token")}});
        QCOMPARE(qEnvironmentVariable(variable), QStringLiteral("a token"));
        m_instance->Activate({{key, QString(200'000, QLatin1Char('x'))}});
        QCOMPARE(QProcess::execute(QStringLiteral("true")), 0);
        qunsetenv(variable);
    }

    void aClickShowsThePrescription() {
        QVERIFY(startUp(*m_program));
        outlets().theTabView.selectTab(0);
        schedule("Ann Holloway", "Vitamin D3 drops");
        QTRY_COMPARE(scheduled().size(), 1);
        QTRY_COMPARE(displayed(), 1);
        m_program->window().showMinimized();
        click();
        QTRY_COMPARE(outlets().theTabView.selectedTab(), 1);
        QCOMPARE(outlets().patientPopTab2.titleOfSelectedItem(), PopUpButton::Item("Ann Holloway"));
        QCOMPARE(outlets().drugNamePopTab2.titleOfSelectedItem(), PopUpButton::Item("Vitamin D3 drops"));
        QTRY_COMPARE(scheduled().size(), 0);
        QTRY_COMPARE(displayed(), 0);
        QTRY_VERIFY(!m_program->window().isMinimized());
    }

    void aClickThatStartsTheProgramIsPartOfTheStart() {
        schedule("Ann Holloway", "Lisinopril 10 mg");
        QTRY_COMPARE(displayed(), 1);
        click();
        QTRY_COMPARE(displayed(), 0);
        QVERIFY(startUp(*m_program));
        QTRY_COMPARE(outlets().theTabView.selectedTab(), 1);
        QTRY_COMPARE(outlets().drugNamePopTab2.titleOfSelectedItem(), PopUpButton::Item("Lisinopril 10 mg"));
        QTRY_COMPARE(scheduled().size(), 0);
    }

    void whoseNamesAreGoneLeavesNoSelection() {
        QVERIFY(startUp(*m_program));
        schedule("Nobody", "Nothing");
        QTRY_COMPARE(displayed(), 1);
        click();
        QVERIFY(waitForAlert());
        QCOMPARE(outlets().patientPopTab2.indexOfSelectedItem(), -1);
        QTRY_COMPARE(scheduled().size(), 0);
    }

    void withdrawsByItsTextAlone() {
        QVERIFY(startUp(*m_program));
        const UserNotification notification = schedule("Ann Holloway", "Vitamin D3 drops");
        QTRY_COMPARE(displayed(), 1);
        m_program->ports().notifications.removeDeliveredNotification(notification);
        QTRY_COMPARE(displayed(), 0);
        QCOMPARE(scheduled().size(), 1);
        m_program->ports().notifications.removeScheduledNotification(notification);
        QTRY_COMPARE(scheduled().size(), 0);
    }

    void comesOnItsDay() {
        QVERIFY(startUp(*m_program));
        const QDateTime day(QDate::currentDate().addDays(3), QTime(8, 0));
        schedule("Ann Holloway", "Vitamin D3 drops", day);
        const QStringList names = scheduled();
        QCOMPARE(names.size(), 1);
        QVERIFY2(names.front().contains(QStringLiteral(".%1.never.").arg(day.date().toString(Qt::ISODate))),
                 qPrintable(names.front()));
    }

    void isSeenInTheSheetAndRemovedThere() {
        QVERIFY(startUp(*m_program));
        schedule("Ann Holloway", "Vitamin D3 drops", QDateTime::currentDateTime().addDays(3));
        schedule("Ann Holloway", "Lisinopril 10 mg", QDateTime::currentDateTime().addDays(2));
        named<QAction>("scheduledRemindersMenuItem")->trigger();
        auto* table = named<QTableView>("tableViewReminders");
        QTRY_VERIFY(table->isVisible());
        QCOMPARE(table->model()->rowCount(), 2);
        QCOMPARE(table->model()->index(0, 1).data().toString(), QStringLiteral("Lisinopril 10 mg"));
        auto* remove = named<QPushButton>("removeReminderBtn");
        QVERIFY(!remove->isEnabled());
        clickRow(*table, 1);
        QTRY_VERIFY(remove->isEnabled());
        QTest::mouseClick(remove, Qt::LeftButton);
        QTRY_COMPARE(table->model()->rowCount(), 1);
        QTRY_COMPARE(scheduled().size(), 1);
        QVERIFY(!remove->isEnabled());
        QTest::keyClick(table, Qt::Key_Escape);
        QTRY_VERIFY(!table->isVisible());
        m_program->ports().notifications.removeScheduledNotification(
            m_program->ports().notifications.scheduledNotifications().front());
        QTRY_COMPARE(scheduled().size(), 0);
    }

    void theMenuOfEveryRefillMarksWhatIsKept() {
        QVERIFY(startUp(*m_program));
        auto* menu = named<QMenu>("standingReminder");
        QCOMPARE(menu->actions().size(), 4);
        QVERIFY(menu->actions().at(0)->isChecked());
        menu->actions().at(2)->trigger();
        QVERIFY(menu->actions().at(2)->isChecked() && !menu->actions().at(0)->isChecked());
        QCOMPARE(scheduled().filter(QStringLiteral("standing.")).size(), 1);
        m_program.reset();
        m_program = std::make_unique<Application>();
        QVERIFY(startUp(*m_program));
        menu = named<QMenu>("standingReminder");
        QVERIFY(menu->actions().at(2)->isChecked());
        menu->actions().at(0)->trigger();
        QTRY_COMPARE(scheduled().size(), 0);
    }

    void whatTheFolderDoesNotTakeIsTriedAgain() {
        QVERIFY(startUp(*m_program));
        const QTemporaryDir base;
        const std::filesystem::path folder = base.filePath(QStringLiteral("reminders")).toStdString();
        const ReminderFolder reminders(folder);
        QtUserNotificationCenter centre(
            [] {
                return Environment{Date(), Region("en_US", "UTC")};
            },
            folder, std::chrono::milliseconds(50));
        putInTheWay(folder);
        const UserNotification due = reminder("Ann Holloway", "Vitamin D3 drops", QDateTime::currentDateTime());
        centre.scheduleNotification(due);
        centre.setStandingLead(7);
        // It is promised, and known to the sheet and to the agent, which keeps it in a folder of its own here.
        QCOMPARE(centre.scheduledNotifications().size(), 1U);
        QCOMPARE(centre.standingLead(), 7);
        QTRY_COMPARE(scheduled().size(), 1);
        std::filesystem::remove(folder);
        QTRY_COMPARE(reminders.load().value_or(std::vector<Reminder>()).size(), 2U);
        QCOMPARE(reminders.standingLead(), 7);
        QVERIFY(
            scheduled().front().startsWith(QString::fromStdString(centre.scheduledNotifications().front().identifier)));

        const UserNotification kept = centre.scheduledNotifications().front();
        std::filesystem::rename(folder, folder.string() + "-away");
        putInTheWay(folder);
        centre.removeScheduledNotification(kept);
        centre.setStandingLead(std::nullopt);
        QCOMPARE(centre.standingLead(), std::nullopt);
        std::filesystem::remove(folder);
        std::filesystem::rename(folder.string() + "-away", folder);
        QTRY_COMPARE(reminders.load().value_or(std::vector<Reminder>(1)).size(), 0U);
    }

    void whatNoDiskHoldsYetIsWithdrawnByItsTextToo() {
        const QTemporaryDir base;
        const std::filesystem::path folder = base.filePath(QStringLiteral("reminders")).toStdString();
        QtUserNotificationCenter centre(
            [] {
                return Environment{Date(), Region("en_US", "UTC")};
            },
            folder, std::chrono::hours(1));
        putInTheWay(folder);
        const UserNotification due = reminder("Ann Holloway", "Vitamin D3 drops", QDateTime::currentDateTime());
        centre.scheduleNotification(due);
        QTRY_COMPARE(scheduled().size(), 1);
        centre.removeScheduledNotification(due);
        QCOMPARE(centre.scheduledNotifications().size(), 0U);
        QTRY_COMPARE(scheduled().size(), 0);
    }

    void aDesktopWithoutNotificationsGetsAWindow() {
        QVERIFY(startUp(*m_program));
        UserNotification reminder;
        reminder.identifier = "a1";
        reminder.title = "Prescription 'Next Fill Date' Reminder";
        reminder.informativeText = "Prescription: <b>Vitamin D3 drops</b>\r for patient: Ann Holloway\r is due";
        for (const bool isShow : {false, true}) {
            outlets().theTabView.selectTab(0);
            m_program->showReminder(reminder);
            auto* window = reminderWindow();
            QVERIFY(window);
            QVERIFY(window->windowFlags() & Qt::WindowStaysOnTopHint);
            QCOMPARE(window->accessibleName(), QStringLiteral("Prescription 'Next Fill Date' Reminder"));
            QCOMPARE(window->findChild<QLabel*>(QStringLiteral("reminderText"))->text(),
                     QStringLiteral("Prescription: <b>Vitamin D3 drops</b>\nfor patient: Ann Holloway\nis due"));
            auto* button = window->findChild<QPushButton*>(isShow ? QStringLiteral("showReminderBtn")
                                                                  : QStringLiteral("laterReminderBtn"));
            QTest::mouseClick(button, Qt::LeftButton);
            QTRY_VERIFY(!reminderWindow());
            QCOMPARE(outlets().theTabView.selectedTab(), isShow ? 1 : 0);
        }
        QVERIFY(waitForAlert());  // there is no such drug
    }

    void itsWindowIsNeverLargerThanTheScreen() {
        QVERIFY(startUp(*m_program));
        const QScreen* screen = QGuiApplication::primaryScreen();
        UserNotification reminder;
        reminder.title = "Prescription 'Next Fill Date' Reminder";
        for (const auto& [name, isLong] :
             {std::pair(std::string("Vitamin D3 drops"), false), std::pair(std::string(20000, 'n'), true)}) {
            reminder.informativeText = "Prescription: " + name + "\r for patient: Ann Holloway\r is due";
            m_program->showReminder(reminder);
            auto* window = reminderWindow();
            QVERIFY(window);
            QVERIFY(QTest::qWaitForWindowExposed(window));
            QVERIFY(window->width() <= screen->availableSize().width() / 2);
            QVERIFY(window->height() <= screen->availableSize().height());
            const auto* area = window->findChild<QScrollArea*>(QStringLiteral("reminderScroll"));
            QCOMPARE(area->verticalScrollBar()->maximum() > 0, isLong);
            QVERIFY(window->findChild<QLabel*>(QStringLiteral("reminderText"))->width() <= area->viewport()->width());
            QVERIFY(window->accessibleDescription().contains(QString::fromStdString(name)));
            window->close();
            QTRY_VERIFY(!reminderWindow());
        }
    }

private:
    template <class Wanted>
    Wanted* named(const char* name) {
        return m_program->window().findChild<Wanted*>(QLatin1String(name));
    }
    static QWidget* reminderWindow() {
        const auto windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(windows, [](const QWidget* window) {
            return window->objectName() == QLatin1String("theReminderWindow") && window->isVisible();
        });
        return found == windows.end() ? nullptr : *found;
    }
    static void putInTheWay(const std::filesystem::path& path) { std::ofstream(path) << "in the way"; }
    UserNotification schedule(const std::string& patient, const std::string& drug,
                              const QDateTime& time = QDateTime::currentDateTime().addDays(-1)) {
        const UserNotification notification = reminder(patient, drug, time);
        m_program->ports().notifications.scheduleNotification(notification);
        return notification;
    }
    static UserNotification reminder(const std::string& patient, const std::string& drug, const QDateTime& time) {
        UserNotification notification;
        notification.title = "Prescription 'Next Fill Date' Reminder";
        notification.informativeText = "Prescription: " + drug + "\r for patient: " + patient + "\r is due";
        notification.deliveryDate = Date::fromSecondsSince1970(static_cast<double>(time.toSecsSinceEpoch()));
        notification.repeatsDaily = true;
        notification.defaultSound = true;
        return notification;
    }
    Outlets& outlets() { return m_program->delegate().outlets; }
    /// The files of the agent's folder that are reminders.
    static QStringList scheduled() {
        const QDir folder(qEnvironmentVariable("XDG_STATE_HOME") + QStringLiteral("/Velmora/reminders"));
        return folder.entryList({QStringLiteral("*.*.*.*")}, QDir::Files);
    }
    static int displayed() {
        QProcess process;
        process.start(QStringLiteral("dunstctl"), {QStringLiteral("count"), QStringLiteral("displayed")});
        process.waitForFinished();
        return process.readAllStandardOutput().trimmed().toInt();
    }
    static void click() {
        QProcess::execute(QStringLiteral("dunstctl"), {QStringLiteral("action"), QStringLiteral("0")});
    }

    QProcess m_daemon;
    std::unique_ptr<SingleInstance> m_instance;
    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(ReminderTest)
#include "ReminderTest.moc"
