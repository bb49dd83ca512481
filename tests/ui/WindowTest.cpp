#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/views/AlertBox.h"
#include "ui/views/DWKButtonHover.h"
#include "ui/views/FindField.h"
#include "ui/views/FirstStepsView.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/RecordTableView.h"
#include "ui/views/SheetDialog.h"
#include "ui/views/SplashWindow.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <sys/stat.h>

#include <functional>
#include <memory>

using namespace kpx;
using namespace kpx::test;

/// Start, tabs, sheets, popovers and the end, in the real window.
class WindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_program.reset(); }

    void withoutAHistoryTheOtherTabsAreGated() {
        removeHousehold();
        start();
        QVERIFY(noAlertShows());
        for (int index = 1; index <= 3; ++index) {
            clickTab(index);
            AlertBox* box = waitForAlert();
            QVERIFY(box);
            QCOMPARE(box->text(), QStringLiteral("Warning: No Prescription History Data Found"));
            QTest::keyClick(box, Qt::Key_Return);
            QTRY_VERIFY(noAlertShows());
        }
        for (const char* name : {"showBtnTab2", "showBtnTab3", "printBtnTab4"}) {
            QVERIFY2(!find<QPushButton>(name)->isEnabled(), name);
        }
    }

    void aNewHouseholdIsLedToItsFirstFill() {
        removeHousehold();
        start();
        auto* steps = find<FirstStepsView>("firstSteps");
        QVERIFY(steps->isVisible() && !find<QTableView>("tableViewTab1")->isVisible());
        QVERIFY(!find<QPushButton>("firstFillBtn")->isEnabled());
        addByStep("firstPatientBtn", "patientNamepatientSheet", "addBtnpatientSheet");
        QVERIFY(find<StepMark>("labelFirstPatient")->isDone() && !find<StepMark>("labelFirstDrug")->isDone());
        QCOMPARE(find<StepMark>("labelFirstPatient")->accessibleName(), QStringLiteral("Done: A patient"));
        addByStep("firstDrugBtn", "drugNameDrugSheet", "addBtnDrugSheet");
        addByStep("firstPrescriberBtn", "prescriberNamePrescriberSheet", "addBtnPrescriberSheet");
        addByStep("firstPharmacyBtn", "pharmacyNamepharmacySheet", "addBtnpharmacySheet");
        // There are no rows to look through: the field would stand there once there are.
        QTest::keyClick(find<QWidget>("rxNumberTab1"), Qt::Key_F, Qt::ControlModifier);
        // The button unfolds the form that it leads to.
        QTest::mouseClick(find<QAbstractButton>("foldFormBtn"), Qt::LeftButton);
        QTest::mouseClick(find<QPushButton>("firstFillBtn"), Qt::LeftButton);
        QTRY_VERIFY(find<QWidget>("rxNumberTab1")->hasFocus());
        type(*find<QWidget>("rxNumberTab1"), QStringLiteral("4417203"));
        type(*find<QWidget>("daysSupply"), QStringLiteral("30"));
        type(*find<QWidget>("initialRefillsTab1"), QStringLiteral("1"));
        QTest::mouseClick(find<QPushButton>("addBtnTab1"), Qt::LeftButton);
        QTRY_VERIFY(!steps->isVisible() && find<QTableView>("tableViewTab1")->isVisible());
        QCOMPARE(find<QTableView>("tableViewTab1")->model()->rowCount(), 1);
        QVERIFY(find<QTableView>("tableViewTab1")->findChild<FindField*>()->isHidden());
    }

    void theFormFoldsToItsHeadingsUntilARowIsLoaded() {
        writeSmallHousehold();
        start();
        auto* form = find<QWidget>("entryCard");
        auto* rows = find<RecordTableView>("tableViewTab1");
        const int heightOfForm = form->height();
        QTest::mouseClick(find<QAbstractButton>("foldFormBtn"), Qt::LeftButton);
        QTRY_VERIFY(form->height() <= find<QWidget>("foldFormBtn")->height() + 32);
        QVERIFY(!find<QWidget>("rxNumberTab1")->isVisible());
        QTest::mouseDClick(rows->viewport(), Qt::LeftButton, {}, rows->visualRect(rows->model()->index(0, 0)).center());
        QTRY_COMPARE(form->height(), heightOfForm);
        QVERIFY(find<QWidget>("rxNumberTab1")->isVisible());
        QCOMPARE(rows->currentIndex().row(), 0);
    }

    void withAHistoryTheTabsAreOpenAndCounted() {
        writeSmallHousehold();
        start();
        QCOMPARE(find<QLabel>("contentCount")->text(), QStringLiteral("Display Count: 11"));
        clickTab(1);
        QVERIFY(noAlertShows());
        QVERIFY(find<QPushButton>("showBtnTab2")->isEnabled());
    }

    void f10LeadsToTheMenuBar() {
        writeSmallHousehold();
        start();
        QTest::keyClick(find<QWidget>("rxNumberTab1"), Qt::Key_F10);
        QTRY_VERIFY(find<QWidget>("menuFile")->isVisible());
        QTest::keyClick(find<QWidget>("menuFile"), Qt::Key_Escape);
        QTRY_VERIFY(!find<QWidget>("menuFile")->isVisible());
    }

    void theSplashTakesNoKeysFromTheWindow() {
        writeSmallHousehold();
        m_program = std::make_unique<Application>();
        QVERIFY(startUp(*m_program));
        MainWindow& window = m_program->window();
        auto* splash = window.findChild<SplashWindow*>();
        QTRY_VERIFY(splash->isVisible());
        QVERIFY(!splash->isWindow());
        const QPoint off = splash->geometry().center() - window.rect().center();
        QVERIFY(off.manhattanLength() <= 2);
        QCOMPARE(QApplication::activeWindow(), &window);
        QTest::mouseClick(splash, Qt::LeftButton);
        QVERIFY(!splash->isVisible());
    }

    void aTabIsLaidOutWhenItIsFirstSeen() {
        writeSmallHousehold();
        start();
        const auto page = [this](int tab) {
            return qobject_cast<QScrollArea*>(find<QTabWidget>("theTabView")->widget(tab))->widget();
        };
        QVERIFY(page(0) && !page(1) && !page(2) && !page(3));
        clickTab(2);
        QVERIFY(page(2) && page(2)->isVisible() && page(2)->isAncestorOf(find<QPushButton>("showBtnTab3")));
        QVERIFY(!page(3));
    }

    void theFirstControlOfTheFormHasTheFocusAtStart() {
        writeSmallHousehold();
        start();
        QTRY_VERIFY(QApplication::activeWindow() == &m_program->window());
        QTRY_VERIFY(find<QWidget>("patientPopTab1")->hasFocus());
        QTest::keyClick(&m_program->window(), Qt::Key_2, Qt::ControlModifier);
        QTRY_VERIFY(find<QWidget>("patientPopTab2")->hasFocus());
    }

    void returnPressesTheButtonWithTheFocus() {
        writeSmallHousehold();
        start();
        QVERIFY(QTest::qWaitForWindowActive(&m_program->window()));
        auto* field = find<QLineEdit>("rxNumberTab1");
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(noAlertShows());
        auto* fold = find<QAbstractButton>("foldFormBtn");
        fold->setFocus();
        QTest::keyClick(fold, Qt::Key_Return);
        QVERIFY(!field->isVisible());
        QTest::keyClick(fold, Qt::Key_Enter);
        QVERIFY(field->isVisible());
        auto* filter = find<QPushButton>("filterBtnTab1");
        filter->setFocus();
        QTest::keyClick(filter, Qt::Key_Return);
        QTRY_VERIFY(find<SheetDialog>("theFilterSheetTab1")->isVisible());
    }

    void everyWindowFitsTheScreen() {
        writeSmallHousehold();
        start();
        QTest::mouseClick(find<QPushButton>("showPrintTableListBtn"), Qt::LeftButton);
        const auto fits = [](QWidget* window) {
            window->show();
            const QSize room = window->screen()->availableSize();
            QVERIFY2(window->height() + 20 <= room.height() && window->width() <= room.width(),
                     qPrintable(window->objectName()));
        };
        fits(&m_program->window());
        fits(&*m_program->ports().preview.windows().front());
        for (SheetDialog* sheet : m_program->window().findChildren<SheetDialog*>()) {
            fits(sheet);
            sheet->endSheet();
        }
        find<QWidget>("findReceiptBtn")->show();
        fits(find<PopoverFrame>("receiptPopover"));
    }

    void aLongTextTakesNoMoreRoomThanThereIs() {
        writeSmallHousehold();
        start();
        MainWindow& window = m_program->window();
        window.resize(window.minimumSize());
        QTRY_COMPARE(window.width(), window.minimumWidth());
        const int before = find<QPushButton>("showPrintTableListBtn")->mapTo(&window, QPoint()).x();
        for (Label* label : {&m_program->delegate().outlets.filterText, &m_program->delegate().outlets.statusText}) {
            label->setText(std::string(4000, 'w') + " is not found.");
            auto* shown = find<QLabel>(label->name().c_str());
            QCoreApplication::processEvents();
            QVERIFY(shown->width() < window.width());
            QCOMPARE(shown->text().size(), 4014);
            // A file's name may be of several lines.
            const int height = shown->height();
            label->setText(std::string(200, '\n') + " is not found.");
            QCoreApplication::processEvents();
            QCOMPARE(shown->height(), height);
            QCOMPARE(window.size(), window.minimumSize());
        }
        QCOMPARE(window.width(), window.minimumWidth());
        QCOMPARE(find<QPushButton>("showPrintTableListBtn")->mapTo(&window, QPoint()).x(), before);
    }

    void startsWithTenThousandFills() {
        writeLargeHousehold(10000);
        const OwnTimer timer;
        start();
        QCOMPARE(find<QLabel>("contentCount")->text(), QStringLiteral("Display Count: 10000"));
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

    void returnLeavesASheetOpenAndEscapeClosesIt() {
        writeSmallHousehold();
        start();
        QTest::mouseClick(find<QPushButton>("filterBtnTab1"), Qt::LeftButton);
        auto* sheet = find<SheetDialog>("theFilterSheetTab1");
        QTRY_VERIFY(sheet->isVisible());
        QVERIFY(waitUntilActive(sheet));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheet->isVisible());
        QTest::keyClick(sheet, Qt::Key_Escape);
        QTRY_VERIFY(!sheet->isVisible());
        QVERIFY(!m_program->delegate().outlets.theFilterSheetTab1.isOpen());
    }

    void aSheetOpensOnItsFirstFieldEachTime() {
        writeSmallHousehold();
        start();
        auto* sheet = find<SheetDialog>("theFilterSheetTab1");
        for (int time = 0; time < 2; ++time) {
            QTest::mouseClick(find<QPushButton>("filterBtnTab1"), Qt::LeftButton);
            QTRY_VERIFY(sheet->isVisible());
            QVERIFY(waitUntilActive(sheet));
            QTRY_VERIFY(find<QWidget>("patientPopForShowTab1")->hasFocus());
            find<QWidget>("closeBtnFilterSheet")->setFocus();
            QTest::keyClick(sheet, Qt::Key_Escape);
            QTRY_VERIFY(!sheet->isVisible());
        }
    }

    void anAddedEntryMakesRoomForTheNextOne() {
        writeSmallHousehold();
        start();
        m_program->delegate().outlets.drugPopTab1.userChoose(m_program->delegate().outlets.drugPopTab1.numberOfItems() -
                                                             1);
        auto* sheet = find<SheetDialog>("theDrugSheet");
        QTRY_VERIFY(sheet->isVisible());
        QVERIFY(waitUntilActive(sheet));
        type(*find<QLineEdit>("drugNameDrugSheet"), QStringLiteral("Aspirin"));
        find<QWidget>("drugDescDrugSheet")->setFocus();
        type(*find<QLineEdit>("drugDescDrugSheet"), QStringLiteral("Against pain"));
        QTest::mouseClick(find<QPushButton>("addBtnDrugSheet"), Qt::LeftButton);
        QTRY_VERIFY(find<QWidget>("drugNameDrugSheet")->hasFocus());
        QVERIFY(find<QLineEdit>("drugDescDrugSheet")->text().isEmpty());
        QTest::keyClick(sheet, Qt::Key_Escape);
    }

    void eachListShowsAllItsColumns() {
        writeSmallHousehold();
        start();
        for (const char* list : {"Drug", "patient", "pharmacy", "Prescriber"}) {
            const QByteArray name(list);
            auto* sheet = find<SheetDialog>(("the" + name + "Sheet").constData());
            QVERIFY2(sheet, list);
            sheet->open();
            QTRY_VERIFY(sheet->isVisible());
            QVERIFY(waitUntilActive(sheet));
            auto* table = find<QTableView>(("tableView" + name + "Sheet").constData());
            QTRY_VERIFY2(table->horizontalScrollBar()->maximum() == 0, list);
            sheet->endSheet();
        }
    }

    void toolTipsAppearAfterThreeSeconds() {
        writeSmallHousehold();
        start();
        QCOMPARE(qApp->style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay), 3000);
    }

    void theWheelSelectsNoTab() {
        writeSmallHousehold();
        start();
        auto* tabs = find<QTabWidget>("theTabView")->tabBar();
        const QPointF middle = tabs->tabRect(0).center();
        QWheelEvent wheel(middle, tabs->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(tabs, &wheel);
        QCOMPARE(tabs->currentIndex(), 0);
    }

    void theCalendarSetsTheDayAndKeepsTheTime() {
        writeSmallHousehold();
        start();
        DateField& field = m_program->delegate().outlets.expirationDateTab1;
        const Date before = field.date();
        QTest::mouseClick(find<DWKButtonHover>("popOverTriggerTab1ExpirationDate"), Qt::LeftButton);
        auto* popover = find<PopoverFrame>("thePopOver");
        QTRY_VERIFY(popover->isVisible());
        auto* calendar = find<QCalendarWidget>("theDatePicker");
        calendar->setFocus();
        auto* days = calendar->findChild<QWidget*>(QStringLiteral("qt_calendar_calendarview"));
        QTest::keyClick(days, Qt::Key_Right);
        QTRY_VERIFY(field.date() != before);
        const double hours = field.date().secondsSince(before) / 3600;
        QVERIFY2(std::abs(hours - 24) < 1.01, qPrintable(QString::number(hours)));
        QTest::keyClick(days, Qt::Key_Escape);
        QTRY_VERIFY(!popover->isVisible());
        QVERIFY(!m_program->delegate().outlets.thePopOver.isOpen());
    }

    void theCalendarOpensAboveASheet() {
        writeSmallHousehold();
        start();
        QTest::mouseClick(find<QPushButton>("filterBtnTab1"), Qt::LeftButton);
        auto* sheet = find<SheetDialog>("theFilterSheetTab1");
        QTRY_VERIFY(sheet->isVisible());
        QVERIFY(waitUntilActive(sheet));
        QTest::mouseClick(find<DWKButtonHover>("toDateFilterCalIcon"), Qt::LeftButton);
        auto* popover = find<PopoverFrame>("thePopOver");
        QTRY_VERIFY(popover->isVisible());
        QCOMPARE(popover->parentWidget(), sheet);
    }

    void theTabIsThereAgainAtTheNextStart() {
        writeSmallHousehold();
        start();
        clickTab(2);
        m_program->window().close();
        m_program.reset();
        start();
        QCOMPARE(find<QTabWidget>("theTabView")->currentIndex(), 2);
        clickTab(0);
        m_program->window().close();
    }

    void theColumnsAreThereAgainAsTheUserLeftThem() {
        writeSmallHousehold();
        start();
        QHeaderView* header = find<QTableView>("tableViewTab1")->horizontalHeader();
        header->moveSection(0, 3);
        header->resizeSection(0, 222);
        const int last = header->sectionSize(16);
        m_program->window().close();
        m_program.reset();
        start();
        header = find<QTableView>("tableViewTab1")->horizontalHeader();
        QCOMPARE(header->visualIndex(0), 3);
        QCOMPARE(header->visualIndex(1), 0);
        QCOMPARE(header->sectionSize(0), 222);
        QCOMPARE(header->sectionSize(16), last);
        m_program.reset();
        QVERIFY(QFile::remove(qEnvironmentVariable("XDG_STATE_HOME") + QStringLiteral("/Velmora/window.ini")));
    }

    void aStateThatIsDamagedOrMissingIsNone() {
        writeSmallHousehold();
        start();
        const QSize usual = m_program->window().size();
        const int width = find<QTableView>("tableViewTab1")->columnWidth(0);
        m_program.reset();
        const QString folder = qEnvironmentVariable("XDG_STATE_HOME") + QStringLiteral("/Velmora");
        QVERIFY(QDir().mkpath(folder));
        const auto columns = [](const QByteArray& first, int count) {
            QByteArray text = "[General]\ntableViewTab1=" + first;
            for (int column = 1; column < count; ++column) {
                text += ' ' + QByteArray::number(column) + ":90";
            }
            return text + '\n';
        };
        for (const QByteArray& content :
             {QByteArray(), QByteArray("\0\xff\xfe rubbish", 11), QByteArray("[General\ngeometry=@ByteArray(\\x1\\xd9"),
              QByteArray("[General]\ngeometry=7\ntableViewTab1=@Variant(\\0\\0)\n"), columns("0:-90", 17),
              columns("0:2000000000", 17), columns("0:", 17), columns("1:90", 17), columns("17:90", 17),
              columns("0:90", 16), columns("0:90", 18)}) {
            QFile file(folder + QStringLiteral("/window.ini"));
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
            file.write(content);
            file.close();
            start();
            QCOMPARE(m_program->window().size(), usual);
            QCOMPARE(find<QTableView>("tableViewTab1")->columnWidth(0), width);
            QVERIFY(!find<QTableView>("tableViewTab1")->isColumnHidden(16));
            m_program.reset();
        }
        // Neither does a folder in its place keep the program from its work.
        QVERIFY(QFile::remove(folder + QStringLiteral("/window.ini")));
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/window.ini")));
        start();
        QCOMPARE(m_program->window().size(), usual);
        m_program->window().close();
        m_program.reset();
        QVERIFY(QDir().rmdir(folder + QStringLiteral("/window.ini")));
    }

    void aWindowOfAScreenThatIsGoneComesToThisOne() {
        writeSmallHousehold();
        start();
        const QByteArray geometry = m_program->window().saveGeometry();
        m_program.reset();
        for (const int byte : {1, 5, 9, 13}) {
            // Left, top, right and bottom, each some 65,000 pixels away.
            QByteArray far = geometry;
            far[far.size() - 16 + byte] = 1;
            QSettings(qEnvironmentVariable("XDG_STATE_HOME") + QStringLiteral("/Velmora/window.ini"),
                      QSettings::IniFormat)
                .setValue(QStringLiteral("geometry"), far);
            start();
            const QRect room = m_program->window().screen()->availableGeometry();
            QTRY_VERIFY(room.contains(m_program->window().geometry()));
            m_program.reset();
        }
    }

    void whatIsNoSettingsFileHoldsUpNobody() {
        writeSmallHousehold();
        const auto makePipe = [](const QString& file) { return ::mkfifo(qPrintable(file), S_IRUSR | S_IWUSR) == 0; };
        const auto makeHuge = [](const QString& file) {
            QFile huge(file);
            return huge.open(QIODevice::WriteOnly) && huge.resize(qint64{1} << 40);
        };
        for (const QString& name : {qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/Velmora/Velmora.ini"),
                                    qEnvironmentVariable("XDG_STATE_HOME") + QStringLiteral("/Velmora/window.ini")}) {
            for (const std::function<bool(const QString&)>& make : {std::function(makePipe), std::function(makeHuge)}) {
                QVERIFY(QDir().mkpath(QFileInfo(name).path()));
                QFile::remove(name);
                QVERIFY(make(name));
                const qint64 size = QFileInfo(name).size();
                start();
                QVERIFY(m_program->window().isVisible());
                m_program->window().close();
                m_program.reset();
                QCOMPARE(QFileInfo(name).size(), size);
                QVERIFY(QFile::remove(name));
            }
        }
    }

    void thePreviewsLetTheProgramQuit() {
        writeSmallHousehold();
        start();
        QTest::mouseClick(find<QPushButton>("showPrintTableListBtn"), Qt::LeftButton);
        const auto previews = m_program->ports().preview.windows();
        QCOMPARE(previews.size(), std::size_t{1});
        auto* preview = previews.front();
        QVERIFY(waitUntilActive(preview));
        QTest::keyClick(preview, Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!m_program->window().isVisible());
    }

    void aPreviewThatIsNotKeptOutlivesTheWindow() {
        writeSmallHousehold();
        start();
        QTest::mouseClick(find<QPushButton>("showPrintTableListBtn"), Qt::LeftButton);
        auto* preview = m_program->ports().preview.windows().front();
        QVERIFY(waitUntilActive(preview));
        QVERIFY(goesOnWhen([&] { m_program->window().close(); }));
        QVERIFY(!m_program->window().isVisible());
        QVERIFY(preview->isVisible());
        // The end of the splash, which may come later, is no wish for the window.
        m_program->ports().windows.makeMainWindowKeyAndFront(true);
        QVERIFY(!m_program->window().isVisible());
        // A second start, and so a click on a reminder, opens the window again.
        m_program->raise();
        QVERIFY(waitUntilActive(&m_program->window()));
        QVERIFY(goesOnWhen([&] { m_program->window().close(); }));
        QVERIFY(endsWhen([&] { preview->close(); }));
    }

    void aKeptPreviewGoesWithTheWindow() {
        writeSmallHousehold();
        start();
        QTest::mouseClick(find<QPushButton>("showPrintTableListBtn"), Qt::LeftButton);
        auto* preview = m_program->ports().preview.windows().front();
        QVERIFY(preview->savePdf(m_folder.filePath(QStringLiteral("kept.pdf"))));
        QVERIFY(endsWhen([&] { m_program->window().close(); }));
        QVERIFY(m_program->ports().preview.windows().empty());
    }

    void theWindowKeepsItsFieldsAtItsSmallestSize() {
        writeSmallHousehold();
        start();
        MainWindow& window = m_program->window();
        // A full-HD screen at twice the size has 960 by 540 points, a title bar among them.
        QVERIFY(window.minimumWidth() <= 960 && window.minimumHeight() <= 510);
        window.resize(window.minimumSize());
        QTRY_COMPARE(window.size(), window.minimumSize());
        const auto edge = [this](const char* name, bool right) {
            const auto* widget = find<QWidget>(name);
            return widget->mapToGlobal(right ? widget->rect().topRight() : widget->rect().topLeft()).x();
        };
        QVERIFY(edge("daysSupply", true) < edge("labelInitialRefillsTab1", false));
        QVERIFY(edge("totalCostTab1", true) < edge("labelRemainingRefillsTab1", false));
        QVERIFY(edge("dropButton", true) < edge("entryCard", true));
        QVERIFY(find<QWidget>("tableViewTab1")->height() > 70);
        QVERIFY(find<QWidget>("patientPopTab1")->width() > 95);
    }

private:
    void start() {
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    void clickTab(int index) {
        QTabBar* bar = find<QTabWidget>("theTabView")->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    }
    /// Opens a sheet by a button of the first steps, adds an entry and closes it.
    void addByStep(const char* step, const char* field, const char* add) {
        QTest::mouseClick(find<QPushButton>(step), Qt::LeftButton);
        auto* name = find<QLineEdit>(field);
        QTRY_VERIFY(name->isVisible());
        QVERIFY(waitUntilActive(name->window()));
        for (QLineEdit* each : name->window()->findChildren<QLineEdit*>()) {
            if (each->isVisible()) {
                each->setFocus();
                type(*each, QStringLiteral("Ann"));
            }
        }
        QTest::mouseClick(find<QPushButton>(add), Qt::LeftButton);
        QVERIFY(name->text().isEmpty());
        QTest::keyClick(name->window(), Qt::Key_Escape);
        QTRY_VERIFY(!name->isVisible());
    }
    template <class Widget>
    Widget* find(const char* name) {
        return widgetNamed<Widget>(m_program->window(), name);
    }

    /// Whether the program ends by itself after the act, rather than going on.
    static bool endsWhen(const std::function<void()>& act) {
        constexpr int longer = 20000;
        return endsWithin(longer, act);
    }
    static bool goesOnWhen(const std::function<void()>& act) {
        constexpr int aMoment = 500;
        return !endsWithin(aMoment, act);
    }
    static bool endsWithin(int milliseconds, const std::function<void()>& act) {
        constexpr int wentOn = 7;
        QTimer::singleShot(0, qApp, act);
        QTimer patience;
        patience.callOnTimeout([] { QCoreApplication::exit(wentOn); });
        patience.start(milliseconds);
        return QApplication::exec() != wentOn;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
