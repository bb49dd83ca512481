#include "controls/Alert.h"
#include "controls/Button.h"
#include "controls/DateField.h"
#include "controls/Matrix.h"
#include "controls/NotificationCenter.h"
#include "controls/Panels.h"
#include "controls/Receipt.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

/// Counts how often a control tells its widget to show it anew.
int& countShown(Control& control, int& shown) {
    control.changed = [&shown] { ++shown; };
    return shown;
}

TEST(Control, IsFoundByItsName) {
    ControlRegistry registry;
    Button add(registry, "add", Place::Tab1);
    Button change(registry, "change", Place::Tab1);
    EXPECT_EQ(registry.find("change"), &change);
    EXPECT_EQ(registry.find("Change"), nullptr);
    EXPECT_EQ(registry.controls(), (std::vector<Control*>{&add, &change}));
}

TEST(Control, ToldToBeWhatItIsSaysNothing) {
    ControlRegistry registry;
    Button button(registry, "add", Place::Tab1);
    int shown = 0;
    countShown(button, shown);
    button.setEnabled(true);
    EXPECT_EQ(shown, 0);
    button.setEnabled(false);
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(shown, 1);
}

TEST(Control, TheTabsAndWhatStandsBesideThemAreTheMainWindow) {
    for (const Place place : {Place::Window, Place::Tab1, Place::Tab2, Place::Tab3, Place::Tab4}) {
        EXPECT_TRUE(liesInMainWindow(place));
    }
    for (const Place place : {Place::FilterSheet, Place::DrugSheet, Place::PatientSheet, Place::PharmacySheet,
                              Place::PrescriberSheet, Place::DatePopover, Place::ReceiptPopover, Place::MenuBar}) {
        EXPECT_FALSE(liesInMainWindow(place));
    }
}

TEST(DateField, RunsItsActionForTheUserOnly) {
    ControlRegistry registry;
    DateField field(registry, "date", Place::Tab1);
    int actions = 0;
    int shown = 0;
    countShown(field, shown);
    field.action = [&] { ++actions; };
    field.setDate(Date{5});
    EXPECT_EQ(actions, 0);
    field.userSetDate(Date{7});
    EXPECT_EQ(field.date(), Date{7});
    EXPECT_EQ(actions, 1);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(field.tag(), -1) << "serves no field yet";
}

TEST(Matrix, OneRadioButtonIsOn) {
    ControlRegistry registry;
    Matrix radio(registry, "type", Place::Tab1, Matrix::Kind::Radio, {{1, "Initial"}, {2, "Refill"}, {3, "All", true}});
    int actions = 0;
    radio.action = [&] { ++actions; };
    EXPECT_EQ(radio.selectedTag(), 3);
    radio.userClick(1);
    EXPECT_EQ(radio.selectedTag(), 1);
    EXPECT_TRUE(radio.isOn(1));
    EXPECT_FALSE(radio.isOn(3));
    radio.userClick(9);
    EXPECT_EQ(radio.selectedTag(), 1);
    EXPECT_EQ(actions, 1);
    radio.selectCellWithTag(9);
    EXPECT_EQ(radio.selectedTag(), std::nullopt);
    EXPECT_FALSE(radio.isOn(1));
    EXPECT_FALSE(radio.isOn(9));
}

TEST(Matrix, CheckBoxesAreTurnedOneByOne) {
    ControlRegistry registry;
    Matrix checks(registry, "reports", Place::Tab4, Matrix::Kind::Checks, {{1, "One"}, {2, "Two"}, {10, "All"}});
    EXPECT_EQ(checks.selectedTag(), std::nullopt);
    checks.userClick(2, true);
    checks.userClick(1, true);
    EXPECT_EQ(checks.selectedTag(), 1) << "the one clicked last";
    EXPECT_TRUE(checks.isOn(2));
    checks.userClick(2, false);
    EXPECT_EQ(checks.selectedTag(), 2);
    EXPECT_FALSE(checks.isOn(2));
    checks.setOn(10, true);
    EXPECT_EQ(checks.selectedTag(), 2) << "the program turned it, nobody clicked";
    checks.setAll(true);
    EXPECT_TRUE(checks.isOn(1) && checks.isOn(2) && checks.isOn(10));
    checks.setAll(false);
    EXPECT_FALSE(checks.isOn(1) || checks.isOn(2) || checks.isOn(10));
}

TEST(TabView, SelectingSelectsAgainAndNothingBeyond) {
    ControlRegistry registry;
    TabView tabs(registry, "tabs", Place::Window, 4);
    std::vector<int> selected;
    tabs.didSelect = [&](int index) { selected.push_back(index); };
    for (const int index : {3, 3, 4, -1, 0}) {
        tabs.selectTab(index);
    }
    EXPECT_EQ(selected, (std::vector<int>{3, 3, 0}));
    EXPECT_EQ(tabs.selectedTab(), 0);
}

TEST(Popover, HangsFromOneControlUntilItIsClosed) {
    ControlRegistry registry;
    Button first(registry, "first", Place::Tab1);
    Button second(registry, "second", Place::Tab1);
    Popover popover(registry, "popover", Place::Window);
    int shown = 0;
    countShown(popover, shown);
    popover.close();
    EXPECT_EQ(shown, 0);
    popover.show(first);
    popover.show(second);
    EXPECT_EQ(popover.anchor(), &second);
    EXPECT_TRUE(popover.isOpen());
    popover.close();
    EXPECT_FALSE(popover.isOpen());
    EXPECT_EQ(shown, 3);
}

TEST(KPXReceiptView, HoldsOneDisplayAtMost) {
    ControlRegistry registry;
    KPXReceiptView view(registry, "dropView", Place::ReceiptPopover);
    view.setContent(KPXReceiptView::Content::PDF, "/a.pdf");
    EXPECT_EQ(view.file(), "/a.pdf");
    view.removeAllSubviews();
    EXPECT_EQ(view.content(), KPXReceiptView::Content::None);
    EXPECT_EQ(view.file(), "");
}

TEST(Alert, EscapePressesWhatConfirmsNothing) {
    Alert alert;
    alert.buttons = {{"No", "", AlertKey::None}, {"Yes", "", AlertKey::None}};
    EXPECT_EQ(buttonForEscape(alert), 0);
    alert.buttons = {{"Open", "", AlertKey::Return}, {"Cancel", "", AlertKey::Escape}};
    EXPECT_EQ(buttonForEscape(alert), 1);
}

TEST(NotificationCenter, TellsThoseWhoObserve) {
    NotificationCenter center;
    std::string told;
    center.addObserver("ImageChanged", [&](const std::filesystem::path& file) { told += "1:" + file.string() + " "; });
    center.addObserver("ImageChanged", [&](const std::filesystem::path& file) { told += "2:" + file.string() + " "; });
    center.addObserver("Another", [&](const std::filesystem::path&) { told += "never"; });
    center.post("ImageChanged", "/a.png");
    center.post("Unknown", "/b.png");
    EXPECT_EQ(told, "1:/a.png 2:/a.png ");
}

}  // namespace
}  // namespace kpx
