#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"
#include "ui/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <memory>

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
        m_program.reset();
        m_instance.reset();
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
        QCOMPARE(scheduled().size(), 0);
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

private:
    UserNotification schedule(const std::string& patient, const std::string& drug,
                              const QDateTime& time = QDateTime::currentDateTime().addDays(-1)) {
        UserNotification notification;
        notification.title = "Prescription 'Next Fill Date' Reminder";
        notification.informativeText = "Prescription: " + drug + "\r for patient: " + patient + "\r is due";
        notification.deliveryDate = Date::fromSecondsSince1970(static_cast<double>(time.toSecsSinceEpoch()));
        notification.repeatsDaily = true;
        notification.defaultSound = true;
        m_program->ports().notifications.scheduleNotification(notification);
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
