#include "core/DataFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/AlertBox.h"
#include "ui/views/SheetDialog.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <chrono>
#include <memory>

using namespace kpx;
using namespace kpx::test;

namespace {

/// The files lie there since an hour ago, so that what a test does is another instant.
void ageHousehold() {
    for (const auto& file : std::filesystem::directory_iterator(dataFolder())) {
        std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    }
}

}  // namespace

/// The bar above the tabs, and the sheet of earlier states, by mouse and by keys.
class EarlierStatesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        removeHousehold();
        std::filesystem::remove_all(dataFolder().string() + "-earlier");
        writeSmallHousehold();
        ageHousehold();
    }
    void cleanup() { m_program.reset(); }

    void aDamagedFileIsToldAboveTheTabs() {
        writeFile(dataFolder() / patientFile, "");
        start();
        auto* bar = widget<QWidget>("unreadableBar");
        QVERIFY(bar->isVisible());
        QCOMPARE(bar->findChild<QLabel*>()->text(), QStringLiteral("The list of patients cannot be read."));
        QVERIFY(noAlertShows());
        QTest::mouseClick(widget<QPushButton>("unreadableBarBtn"), Qt::LeftButton);
        QTRY_VERIFY(sheet()->isVisible());
        QTest::keyClick(sheet(), Qt::Key_Escape);
        QTRY_VERIFY(!sheet()->isVisible());
    }

    void nothingIsToldOfSoundFiles() {
        start();
        QVERIFY(!widget<QWidget>("unreadableBar")->isVisible());
    }

    void whatWasDeletedIsBroughtBackByKeys() {
        const std::string before = readFile(dataFolder() / patientFile);
        start();
        m_program->delegate().copyArrayFromDataFile(patientFile);
        QVERIFY(m_program->delegate().writeArray(Records(), patientFile, Replacing::Deletion));
        widget<QAction>("earlierStatesMenuItem")->trigger();
        QTRY_VERIFY(sheet()->isVisible());
        auto* table = widget<QTableView>("tableViewEarlierStates");
        QCOMPARE(table->model()->rowCount(), 1);
        QVERIFY(table->model()->index(0, 6).data().toString().startsWith(QLatin1String("+")));
        const QString when = table->model()->index(0, 0).data().toString();
        QVERIFY(when.contains(QLatin1Char(':')));
        QVERIFY2(table->columnWidth(0) > table->fontMetrics().horizontalAdvance(when) + 12,
                 "the time of day is cut off");
        auto* bringBack = widget<QPushButton>("bringBackBtn");
        QVERIFY(!bringBack->isEnabled());
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Down);
        QTRY_VERIFY(bringBack->isEnabled());

        QTest::mouseClick(bringBack, Qt::LeftButton);
        AlertBox* question = waitForAlert();
        QVERIFY(question);
        QTest::keyClick(question, Qt::Key_Return);
        QTRY_VERIFY(noAlertShows());
        QVERIFY(readFile(dataFolder() / patientFile) != before);

        QTest::mouseClick(bringBack, Qt::LeftButton);
        question = waitForAlert();
        QVERIFY(question);
        QTest::mouseClick(question->buttons().constLast(), Qt::LeftButton);
        QTRY_COMPARE(readFile(dataFolder() / patientFile), before);
        QTest::mouseClick(widget<QPushButton>("closeBtnEarlierStatesSheet"), Qt::LeftButton);
        QTRY_VERIFY(!sheet()->isVisible());
    }

private:
    void start() {
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    template <class Widget>
    Widget* widget(const char* name) {
        return widgetNamed<Widget>(m_program->window(), name);
    }
    SheetDialog* sheet() { return widget<SheetDialog>("theEarlierStatesSheet"); }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(EarlierStatesTest)
#include "EarlierStatesTest.moc"
