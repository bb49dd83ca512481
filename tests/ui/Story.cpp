#include "tests/ui/Guide.h"

#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Story.h"
#include "tests/ui/Waiting.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/views/AlertBox.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace kpx::test {

namespace {

std::size_t rowsShown(Guide& guide) { return guide.program().delegate().maintArrayForTVTab1.size(); }

void answerWith(Guide& guide, const QString& title) {
    AlertBox* alert = waitForAlert();
    guide.require(alert, QStringLiteral("no alert shows"));
    for (QAbstractButton* button : alert->buttons()) {
        if (button->text().remove(QLatin1Char('&')) == title) {
            QTest::mouseClick(button, Qt::LeftButton);
            guide.wait(150);
            return;
        }
    }
    guide.require(false, QStringLiteral("the alert has no button ") + title);
}

/// On the box itself: what lies to the right of its title does not belong to it.
void check(Guide& guide, const char* checkBox) {
    auto* button = widgetNamed<QAbstractButton>(guide.program().window(), checkBox);
    guide.require(button && button->isEnabled(), QLatin1String(checkBox) + QStringLiteral(" cannot be checked"));
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    guide.require(button->isChecked(), QLatin1String(checkBox) + QStringLiteral(" is not checked"));
    guide.wait(150);
}

void clickHeader(Guide& guide, const char* tableName, int column) {
    auto* table = widgetNamed<QTableView>(guide.program().window(), tableName);
    QHeaderView* header = table->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    guide.wait(150);
}

void fillTheLists(Guide& guide) {
    guide.choose("patientPopTab1", QStringLiteral("Maintain Patients…"));
    guide.type("patientNamepatientSheet", QStringLiteral("Ann Holloway"));
    guide.type("patientCitypatientSheet", QStringLiteral("Springfield"));
    guide.click("addBtnpatientSheet");
    guide.picture(QStringLiteral("30-story-patients"));
    guide.click("closeBtnpatientSheet");
    guide.choose("pharmacyPopTab1", QStringLiteral("Maintain Pharmacies…"));
    guide.type("pharmacyNamepharmacySheet", QStringLiteral("Corner Pharmacy"));
    guide.click("addBtnpharmacySheet");
    guide.click("closeBtnpharmacySheet");
    guide.choose("drugPopTab1", QStringLiteral("Maintain Drugs…"));
    guide.type("drugNameDrugSheet", QStringLiteral("Lisinopril 10 mg"));
    guide.click("addBtnDrugSheet");
    guide.picture(QStringLiteral("31-story-drug-needs-description"));
    answerWith(guide, QStringLiteral("OK"));
    guide.type("drugDescDrugSheet", QStringLiteral("blood pressure"));
    guide.click("addBtnDrugSheet");
    guide.click("closeBtnDrugSheet");
    guide.choose("prescriberPopTab1", QStringLiteral("Maintain Prescribers…"));
    guide.type("prescriberNamePrescriberSheet", QStringLiteral("Dr. Amara Okafor"));
    guide.click("addBtnPrescriberSheet");
    guide.click("closeBtnPrescriberSheet");
}

void enterFill(Guide& guide, const QString& fillType, const QString& cost) {
    guide.choose("fillTypeTab1", fillType);
    guide.type("rxNumberTab1", QStringLiteral("4417203"));
    guide.type("daysSupply", QStringLiteral("30"));
    guide.type("initialRefillsTab1", QStringLiteral("2"));
    guide.type("totalCostTab1", cost);
    guide.click("addBtnTab1");
}

}  // namespace

void liveAWholeStory(Guide& guide) {
    removeHousehold();
    guide.start();
    fillTheLists(guide);

    enterFill(guide, QStringLiteral("Initial"), QStringLiteral("12.5"));
    guide.require(rowsShown(guide) == 1, QStringLiteral("the initial fill is not added"));
    enterFill(guide, QStringLiteral("Refill"), QStringLiteral("11"));
    enterFill(guide, QStringLiteral("Refill"), QStringLiteral("10.75"));
    guide.require(rowsShown(guide) == 3, QStringLiteral("the refills are not added"));
    enterFill(guide, QStringLiteral("Refill"), QStringLiteral("10"));
    guide.picture(QStringLiteral("32-story-no-refills-left"));
    answerWith(guide, QStringLiteral("OK"));
    guide.require(rowsShown(guide) == 3, QStringLiteral("a refill too many is added"));

    // Show comes to life when the tab is opened again.
    guide.selectTab(1);
    guide.selectTab(0);
    guide.click("filterBtnTab1");
    check(guide, "prescriptoinTypeForShowTab1_2");
    guide.click("showBtnTab1");
    guide.click("closeBtnFilterSheet");
    guide.require(rowsShown(guide) == 2, QStringLiteral("the filter does not narrow to refills"));
    clickHeader(guide, "tableViewTab1", 9);
    guide.picture(QStringLiteral("33-story-refills-by-cost"));

    guide.doubleClickRow("tableViewTab1", 0);
    guide.type("scriptNoteTab1", QStringLiteral("with water"));
    guide.click("changeBtnTab1");
    guide.require(rowsShown(guide) == 3, QStringLiteral("the change does not show the whole history"));
    guide.picture(QStringLiteral("34-story-changed"));

    guide.doubleClickRow("tableViewTab1", 2);
    guide.click("deleteBtnTab1");
    guide.picture(QStringLiteral("35-story-delete"));
    answerWith(guide, QStringLiteral("No"));
    guide.require(rowsShown(guide) == 3, QStringLiteral("No deletes"));
    guide.click("deleteBtnTab1");
    answerWith(guide, QStringLiteral("Yes"));
    guide.require(rowsShown(guide) == 0, QStringLiteral("the prescription is not deleted"));
    guide.close();
}

void printAllReports(Guide& guide) {
    writeSmallHousehold();
    guide.start();
    guide.click("showPrintTableListBtn");
    guide.selectTab(3);
    check(guide, "reportsTab4_10");
    guide.picture(QStringLiteral("40-reports-chosen"));
    guide.click("printBtnTab4");
    guide.wait(500);
    const auto windows = guide.program().ports().preview.windows();
    guide.require(windows.size() == 2, QStringLiteral("not every action has its preview"));
    guide.picture(QStringLiteral("41-previews"));
    std::size_t documents = 0;
    for (PreviewWindow* window : windows) {
        window->raise();
        window->activateWindow();
        auto* tabs = window->findChild<QTabWidget*>();
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            const QString name = QStringLiteral("report-%1").arg(window->document().type);
            guide.require(window->savePdf(guide.file(name, QStringLiteral(".pdf"))),
                          QStringLiteral("cannot save ") + name);
            guide.pictureOf(*window, name);
            ++documents;
        }
        window->close();
    }
    guide.require(documents == 8, QStringLiteral("not every report has its preview"));
    // The next start opens the tab left here.
    guide.selectTab(0);
    guide.close();
}

}  // namespace kpx::test
