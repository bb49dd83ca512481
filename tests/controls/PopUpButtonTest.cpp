#include "controls/PopUpButton.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

using Item = PopUpButton::Item;

struct Filter {
    Filter() {
        popUp.setItems({Item("Ann"), Item("Bob"), std::nullopt, Item("All")});
        popUp.changed = [this] { ++shown; };
        popUp.action = [this] { ++actions; };
    }

    ControlRegistry registry;
    PopUpButton popUp{registry, "patients", Place::Tab2};
    int shown = 0;
    int actions = 0;
};

TEST(PopUpButton, SelectsWhatThereIsAndNothingElse) {
    Filter filter;
    PopUpButton& popUp = filter.popUp;
    EXPECT_EQ(popUp.indexOfSelectedItem(), -1);
    EXPECT_EQ(popUp.titleOfSelectedItem(), std::nullopt);
    struct Row {
        int index;
        int selected;
        Item title;
        bool isLast;
    };
    const std::vector<Row> rows = {
        {0, 0, "Ann", false}, {1, 1, "Bob", false},         {2, 2, std::nullopt, false},
        {3, 3, "All", true},  {4, -1, std::nullopt, false}, {-2, -1, std::nullopt, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.index);
        popUp.selectItemAtIndex(row.index);
        EXPECT_EQ(popUp.indexOfSelectedItem(), row.selected);
        EXPECT_EQ(popUp.titleOfSelectedItem(), row.title);
        EXPECT_EQ(popUp.isLastItemSelected(), row.isLast);
        EXPECT_EQ(popUp.titleUnlessLastItem(), row.isLast ? std::nullopt : row.title);
    }
    popUp.selectItemWithTitle("Bob");
    EXPECT_EQ(popUp.indexOfSelectedItem(), 1);
    popUp.selectItemWithTitle("bob");
    EXPECT_EQ(popUp.indexOfSelectedItem(), -1);
    popUp.selectLastItem();
    EXPECT_EQ(popUp.indexOfSelectedItem(), 3);
    EXPECT_EQ(filter.shown, static_cast<int>(rows.size()) + 3);
    EXPECT_EQ(filter.actions, 0) << "the program chose, not the user";
}

TEST(PopUpButton, WithoutItemsNothingIsLast) {
    ControlRegistry registry;
    PopUpButton popUp(registry, "empty", Place::Tab2);
    popUp.selectLastItem();
    EXPECT_EQ(popUp.indexOfSelectedItem(), -1);
    EXPECT_FALSE(popUp.isLastItemSelected());
}

TEST(PopUpButton, NewItemsTakeTheSelectionAway) {
    Filter filter;
    filter.popUp.selectItemAtIndex(1);
    filter.popUp.setItems({Item("Ann"), Item("Bob")});
    EXPECT_EQ(filter.popUp.indexOfSelectedItem(), -1);
    EXPECT_EQ(filter.popUp.numberOfItems(), 2);
}

TEST(PopUpButton, TheSelectionStaysWithItsItemWhenOthersGo) {
    struct Row {
        int selected;
        const char* removed;
        int selectedThen;
        int items;
    };
    const std::vector<Row> rows = {
        {3, "Ann", 2, 3}, {0, "Bob", 0, 3}, {1, "Bob", -1, 3}, {1, "Zoe", 1, 4}, {-1, "Ann", -1, 3}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.removed);
        Filter filter;
        filter.popUp.selectItemAtIndex(row.selected);
        filter.popUp.removeItemWithTitle(row.removed);
        EXPECT_EQ(filter.popUp.indexOfSelectedItem(), row.selectedThen);
        EXPECT_EQ(filter.popUp.numberOfItems(), row.items);
    }
    Filter twice;
    twice.popUp.setItems({Item("Ann"), Item("Ann")});
    twice.popUp.removeItemWithTitle("Ann");
    EXPECT_EQ(twice.popUp.items(), std::vector<Item>{Item("Ann")});
}

TEST(PopUpButton, TheUserChoosesItemsButNoSeparators) {
    Filter filter;
    filter.popUp.userChoose(1);
    EXPECT_EQ(filter.popUp.indexOfSelectedItem(), 1);
    filter.popUp.userChoose(1);
    EXPECT_EQ(filter.actions, 2) << "also the item chosen already";
    for (const int index : {2, 4, -1}) {
        filter.popUp.userChoose(index);
    }
    EXPECT_EQ(filter.popUp.indexOfSelectedItem(), 1);
    EXPECT_EQ(filter.actions, 2);
}

}  // namespace
}  // namespace kpx
