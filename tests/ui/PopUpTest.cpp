#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/PopUpCombo.h"
#include "ui/views/SheetDialog.h"

#include <QAbstractItemView>
#include <QTest>
#include <QWheelEvent>

#include <memory>

using namespace kpx;
using namespace kpx::test;

/// Pop-ups: what counts as choosing, and what does not.
class PopUpTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_program.reset(); }

    void theOnlyItemOpensItsSheetByKeys() {
        removeHousehold();
        start();
        PopUpCombo* patients = combo("patientPopTab1");
        QCOMPARE(patients->currentText(), QStringLiteral("Maintain Patients…"));
        patients->setFocus();
        QTest::keyClick(patients, Qt::Key_Space);
        QVERIFY(QTest::qWaitForWindowExposed(patients->view()->window()));
        QTest::keyClick(patients->view(), Qt::Key_Return);
        QTRY_VERIFY(sheet("thepatientSheet")->isVisible());
    }

    void theOnlyItemOpensItsSheetByMouse() {
        removeHousehold();
        start();
        PopUpCombo* drugs = combo("drugPopTab1");
        drugs->showPopup();
        QVERIFY(QTest::qWaitForWindowExposed(drugs->view()->window()));
        const QModelIndex last = drugs->model()->index(drugs->count() - 1, 0);
        QTest::mouseMove(drugs->view()->viewport(), drugs->view()->visualRect(last).center());
        QTest::mouseClick(drugs->view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          drugs->view()->visualRect(last).center());
        QTRY_VERIFY(sheet("theDrugSheet")->isVisible());
    }

    void separatorsCountAsItems() {
        writeSmallHousehold();
        start();
        const PopUpButton& control = m_program->delegate().outlets.patientPopTab1;
        PopUpCombo* patients = combo("patientPopTab1");
        QCOMPARE(patients->count(), control.numberOfItems());
        QCOMPARE(patients->count(), 5);
        QVERIFY(!control.items()[3]);
        QVERIFY(patients->itemText(3).isEmpty());
        QVERIFY(!(patients->model()->flags(patients->model()->index(3, 0)) & Qt::ItemIsEnabled));
        QCOMPARE(patients->currentIndex(), control.indexOfSelectedItem());
    }

    void neitherArrowsNorTheWheelChooseUnseen() {
        writeSmallHousehold();
        start();
        int chosen = 0;
        m_program->delegate().outlets.fillTypeTab1.action = [&chosen] { ++chosen; };
        PopUpCombo* types = combo("fillTypeTab1");
        types->setFocus();
        const int before = types->currentIndex();
        const QPointF middle = types->rect().center();
        QWheelEvent wheel(middle, types->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(types, &wheel);
        QTest::keyClick(types, Qt::Key_Down);
        QVERIFY(types->view()->isVisible());
        QTest::keyClick(types->view(), Qt::Key_Escape);
        QCOMPARE(types->currentIndex(), before);
        QCOMPARE(chosen, 0);
    }

    void aChoiceOfTheProgramRunsNoAction() {
        writeSmallHousehold();
        start();
        int chosen = 0;
        PopUpButton& control = m_program->delegate().outlets.fillTypeTab1;
        control.action = [&chosen] { ++chosen; };
        control.selectItemWithTitle("Refill");
        QCOMPARE(combo("fillTypeTab1")->currentText(), QStringLiteral("Refill"));
        control.selectItemAtIndex(-1);
        QCOMPARE(combo("fillTypeTab1")->currentIndex(), -1);
        QCOMPARE(chosen, 0);
    }

private:
    void start() {
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    PopUpCombo* combo(const char* name) { return widgetNamed<PopUpCombo>(m_program->window(), name); }
    SheetDialog* sheet(const char* name) { return widgetNamed<SheetDialog>(m_program->window(), name); }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(PopUpTest)
#include "PopUpTest.moc"
