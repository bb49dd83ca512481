// velmora_tour FOLDER: leads through the real window on a virtual display, in light and dark, at 100 % and
// at 200 %, and leaves a picture of every stop in the folder. Ends with 0 when every step could be done.
// Writes to the data folder of its surroundings: only for throw-away ones.

#include "tests/ui/Guide.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/MadeReceipts.h"
#include "tests/ui/ReminderStory.h"
#include "tests/ui/Story.h"

#include <QApplication>
#include <QComboBox>
#include <QDebug>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>

#include <cstdlib>

namespace {

using kpx::test::Guide;

/// Someone who has kept the history for a year opens the program.
void openOnHistory(Guide& guide) {
    kpx::test::writeSmallHousehold();
    guide.start(true);
    guide.picture(QStringLiteral("01-splash"));
    guide.program().ports().windows.closeSplash();
    guide.picture(QStringLiteral("02-history"));
}

void lookAtLongNames(Guide& guide) {
    guide.choose("patientPopTab1", QStringLiteral("Bartholomew Christopher Featherstonehaugh-Holloway"));
    guide.choose("drugPopTab1", QStringLiteral("Amoxicillin/Clavulanic acid oral suspension 457 mg/5 mL"));
    guide.setSize(960, 500);
    guide.picture(QStringLiteral("03-long-names-smallest-window"));
    guide.setSize(1200, 800);
}

void loadARow(Guide& guide) {
    guide.doubleClickRow("tableViewTab1", 2);
    guide.picture(QStringLiteral("04-row-loaded"));
}

void openPopUpAndCalendar(Guide& guide) {
    kpx::MainWindow& window = guide.program().window();
    auto* combo = window.findChild<QComboBox*>(QStringLiteral("drugPopTab1"));
    combo->showPopup();
    guide.picture(QStringLiteral("05-pop-up"));
    combo->hidePopup();
    guide.click("popOverTriggerTab1DispenseDate");
    guide.picture(QStringLiteral("06-calendar"));
    guide.pressKey(Qt::Key_Escape);
}

void filter(Guide& guide) {
    guide.click("filterBtnTab1");
    guide.picture(QStringLiteral("07-filter-sheet"));
    guide.click("fromDateFilterCalIcon");
    guide.picture(QStringLiteral("08-calendar-above-sheet"));
    guide.pressKey(Qt::Key_Escape);
    guide.pressKey(Qt::Key_Escape);
}

void visitOtherTabs(Guide& guide) {
    guide.selectTab(1);
    guide.picture(QStringLiteral("09-schedule"));
    guide.click("showBtnTab2");
    guide.picture(QStringLiteral("10-schedule-shown"));
    guide.selectTab(2);
    guide.click("showBtnTab3");
    guide.picture(QStringLiteral("11-costs"));
    guide.selectTab(3);
    guide.picture(QStringLiteral("12-reports"));
    guide.selectTab(0);
}

void openListSheets(Guide& guide) {
    const struct {
        const char* popUp;
        QString title;
        QString picture;
    } lists[] = {{"patientPopTab1", QStringLiteral("Maintain Patients…"), QStringLiteral("13-patients")},
                 {"drugPopTab1", QStringLiteral("Maintain Drugs…"), QStringLiteral("14-drugs")},
                 {"pharmacyPopTab1", QStringLiteral("Maintain Pharmacies…"), QStringLiteral("15-pharmacies")},
                 {"prescriberPopTab1", QStringLiteral("Maintain Prescribers…"), QStringLiteral("16-prescribers")}};
    for (const auto& list : lists) {
        guide.choose(list.popUp, list.title);
        guide.picture(list.picture);
        guide.pressKey(Qt::Key_Escape);
    }
}

/// Add with an empty form: the alert says what is missing.
void meetAnAlert(Guide& guide) {
    guide.click("addBtnTab1");
    guide.picture(QStringLiteral("17-alert"));
    guide.answerAlert(0);
    guide.close();
}

/// A receipt is kept with its fill, and looked at again.
void keepAReceipt(Guide& guide) {
    kpx::test::writeSmallHousehold();
    const QString receipt = kpx::test::writeTillReceipt(QStringLiteral("Lisinopril in spring.pdf"));
    guide.start();
    guide.doubleClickRow("tableViewTab1", 4);
    kpx::KPXAppDelegate& delegate = guide.program().delegate();
    delegate.draggingEntered(delegate.outlets.dropButton, receipt.toStdString());
    guide.picture(QStringLiteral("21-receipt-hovers"));
    delegate.performDragOperation(delegate.outlets.dropButton, receipt.toStdString());
    delegate.concludeDragOperation(delegate.outlets.dropButton);
    guide.wait(500);
    guide.picture(QStringLiteral("22-receipt"));
    guide.pressKey(Qt::Key_Escape);
    guide.close();
}

/// The first start of all: nothing there yet, and the other tabs say so.
void startEmpty(Guide& guide) {
    kpx::test::removeHousehold();
    guide.start();
    guide.picture(QStringLiteral("18-empty-household"));
    guide.selectTab(1);
    guide.picture(QStringLiteral("19-empty-schedule-alert"));
    guide.answerAlert(0);
    guide.picture(QStringLiteral("20-gated-tab"));
    guide.selectTab(0);
    guide.close();
}

constexpr void (*chapters[])(Guide&) = {openOnHistory,
                                        lookAtLongNames,
                                        loadARow,
                                        openPopUpAndCalendar,
                                        filter,
                                        visitOtherTabs,
                                        openListSheets,
                                        meetAnAlert,
                                        keepAReceipt,
                                        startEmpty,
                                        kpx::test::liveAWholeStory,
                                        kpx::test::printAllReports,
                                        kpx::test::beReminded};

int takeTour(int argc, char** argv, const QString& folder, const QString& suffix) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setQuitOnLastWindowClosed(false);
    Guide guide(folder, suffix);
    for (const auto chapter : chapters) {
        chapter(guide);
    }
    return EXIT_SUCCESS;
}

/// One run per look, each a process of its own: the scale of the screen is fixed when a program starts.
int takeAllTours(int argc, char** argv, const QString& folder) {
    const QCoreApplication application(argc, argv);
    QDir().mkpath(folder);
    QProcess portal;
    portal.start(QCoreApplication::applicationDirPath() + QStringLiteral("/settings_portal"), QStringList());
    for (const QString& appearance : {QStringLiteral("light"), QStringLiteral("dark")}) {
        portal.write(appearance.toUtf8() + '\n');
        portal.waitForReadyRead(5000);
        if (portal.readLine().trimmed() != appearance.toUtf8()) {
            qCritical() << "The desktop's settings do not answer.";
            return EXIT_FAILURE;
        }
        for (const QString& scale : {QStringLiteral("1"), QStringLiteral("2")}) {
            QProcess tour;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
            tour.setProcessEnvironment(environment);
            tour.setProcessChannelMode(QProcess::ForwardedChannels);
            const QString suffix = QStringLiteral("-%1-%2").arg(
                appearance, scale == QStringLiteral("1") ? QStringLiteral("100") : QStringLiteral("200"));
            tour.start(QCoreApplication::applicationFilePath(), {folder, suffix});
            constexpr int longest = 120000;
            if (!tour.waitForFinished(longest) || tour.exitStatus() != QProcess::NormalExit || tour.exitCode() != 0) {
                qCritical().noquote() << "The tour ended early:" << suffix;
                return EXIT_FAILURE;
            }
        }
    }
    portal.closeWriteChannel();
    portal.waitForFinished(5000);
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2) {
        return takeAllTours(argc, argv, QString::fromLocal8Bit(argv[1]));
    }
    if (argc == 3) {
        return takeTour(argc, argv, QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    }
    qCritical("usage: velmora_tour FOLDER");
    return 2;
}
