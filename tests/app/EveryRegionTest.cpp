#include "core/Keys.h"
#include "region/DateUtilities.h"
#include "region/Numbers.h"
#include "tests/app/ApplicationUnderTest.h"
#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include <cstdlib>

// A fill goes through the whole program wherever its household lives, and loses neither a cent nor a day.

namespace kpx::test {
namespace {

void typeCost(TextField& field, const std::string& text) {
    for (const char character : text) {
        field.userEdit(field.textAfterTyping(field.text(), std::string(1, character)));
    }
    field.userEndEditing();
}

void addOneFill(ApplicationUnderTest& app) {
    Outlets& outlets = app.controller.outlets;
    for (PopUpButton* popUp :
         {&outlets.patientPopTab1, &outlets.pharmacyPopTab1, &outlets.drugPopTab1, &outlets.prescriberPopTab1}) {
        popUp->userChoose(0);
    }
    outlets.rxNumberTab1.userEdit("90");
    outlets.daysSupply.userEdit("30");
    outlets.initialRefillsTab1.userEdit("2");
    typeCost(outlets.totalCostTab1, "1234.5");
    outlets.addBtnTab1.userClick();
}

std::string textsOf(const Document& document) {
    std::string texts;
    for (const Page& page : document.pages) {
        for (const DrawingOperation& operation : page.operations) {
            if (const auto* text = std::get_if<DrawText>(&operation)) {
                texts += text->text + "\n";
            }
        }
    }
    return texts;
}

void liveIn(const std::string& locale) {
    ApplicationUnderTest app(locale);
    Outlets& outlets = app.controller.outlets;
    const Environment here = app.controller.environment();
    app.controller.copyArrayFromDataFile(prescriptionHistoryFile);  // makes the folder
    app.write({Record{{patientNameKey, "Ann"}}}, patientFile);
    app.write({Record{{pharmacyNameKey, "Corner"}}}, pharmacyFile);
    app.write({Record{{DrugNameKey, "Zinc"}}}, drugFile);
    app.write({Record{{PrescriberNameKey, "Adams"}}}, prescriberFile);
    app.controller.applicationDidFinishLaunching();

    addOneFill(app);
    const Records added = app.read(prescriptionHistoryFile);
    ASSERT_EQ(added.size(), 1U) << app.happened();
    EXPECT_EQ(added.front().text(MHTotalCostKey), Text("1234.50"));
    EXPECT_EQ(added.front().text(MHDispenseDateKey), Text("20240305"));

    outlets.tableViewTab1.userDoubleClickRow(0);
    outlets.changeBtnTab1.userClick();
    EXPECT_EQ(app.read(prescriptionHistoryFile), added) << "a change without an edit";

    const Date day = dateFromYYMMDDStr("20240305", here);
    outlets.filterBtnTab1.userClick();
    app.platform.clock.runDue();
    outlets.beginDateForShowTab1.userSetDate(day);
    outlets.endDateForShowTab1.userSetDate(day);
    outlets.showBtnTab1.userClick();
    EXPECT_EQ(outlets.tableViewTab1.numberOfRows(), 1) << "filtered by its date";

    const std::string shown = copyFormatStringForTextField(1234.5, "###,###,###.00", here);
    outlets.theTabView.selectTab(2);
    outlets.showBtnTab3.userClick();
    EXPECT_EQ(outlets.totalCostTab3.text(), shown);

    outlets.theTabView.selectTab(3);
    outlets.reportsTab4.userClick(2, true);
    outlets.printBtnTab4.userClick();
    ASSERT_FALSE(app.platform.preview.documents().empty()) << app.happened();
    const std::string printed = textsOf(app.platform.preview.documents().back());
    EXPECT_NE(printed.find(formatCurrency(1234.5, here)), std::string::npos) << printed;
    EXPECT_NE(printed.find(shown), std::string::npos) << printed;
}

TEST(EveryRegion, KeepsCentsAndDays) {
    std::int32_t count = 0;
    const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
    ASSERT_GT(count, 700);
    // All of them in the long form; the short one takes turns, and never leaves out those with their own digits,
    // calendar or decimal sign.
    const int step = std::getenv("KPX_LONG") ? 1 : 9;
    for (int index = 0; index < count && !HasFatalFailure(); index += step) {
        SCOPED_TRACE(locales[index].getName());
        liveIn(locales[index].getName());
    }
    for (const char* locale : {"de_DE", "de_AT", "fr_CH", "fr_FR", "ar_EG", "fa_IR", "bn_BD", "mr_IN", "ne_NP", "my_MM",
                               "ckb_IQ", "th_TH", "sv_SE", "he_IL", "ja_JP@calendar=japanese"}) {
        SCOPED_TRACE(locale);
        liveIn(locale);
    }
}

}  // namespace
}  // namespace kpx::test
