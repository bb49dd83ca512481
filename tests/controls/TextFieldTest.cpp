#include "controls/TextField.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

struct Field {
    Field() {
        field.changed = [this] { ++shown; };
        field.textDidChange = [this] { ++changes; };
        field.textDidEndEditing = [this] { ++endings; };
    }

    ControlRegistry registry;
    TextField field{registry, "note", Place::Tab1};
    int shown = 0;
    int changes = 0;
    int endings = 0;
};

TEST(TextField, AnEditIsOfTheUserAndASettingIsNot) {
    Field one;
    one.field.setText("loaded");
    EXPECT_EQ(one.shown, 1);
    EXPECT_EQ(one.changes, 0);
    EXPECT_FALSE(one.field.isBeingEdited());
    EXPECT_TRUE(one.field.userEdit("typed"));
    EXPECT_EQ(one.field.text(), "typed");
    EXPECT_EQ(one.shown, 2);
    EXPECT_EQ(one.changes, 1);
    EXPECT_TRUE(one.field.isBeingEdited());
}

TEST(TextField, EditingEndsOnce) {
    Field one;
    one.field.userEndEditing();
    EXPECT_EQ(one.endings, 0);
    one.field.userEdit("1");
    bool edited = true;
    one.field.textDidEndEditing = [&] { edited = one.field.isBeingEdited(), ++one.endings; };
    one.field.userEndEditing();
    EXPECT_FALSE(edited) << "what runs at the end finds the field at rest";
    EXPECT_FALSE(one.field.isBeingEdited());
    one.field.setText("loaded");
    one.field.userEndEditing();
    EXPECT_EQ(one.endings, 1) << "what the program loaded afterwards was not typed";
    one.field.userEdit("2");
    one.field.userEndEditing();
    EXPECT_EQ(one.endings, 2);
}

TEST(TextField, ARefusedEditLeavesTheTextAndIsStillEditing) {
    Field one;
    one.field.setText("12");
    std::string proposed;
    one.field.filter = [&](const std::string& text) { return proposed = text, text != "12a"; };
    EXPECT_FALSE(one.field.userEdit("12a"));
    EXPECT_EQ(proposed, "12a");
    EXPECT_EQ(one.field.text(), "12");
    EXPECT_EQ(one.changes, 0);
    EXPECT_EQ(one.shown, 2) << "the widget may show the refused text already";
    EXPECT_TRUE(one.field.isBeingEdited());
    EXPECT_TRUE(one.field.userEdit("123"));
    EXPECT_EQ(one.field.text(), "123");
    EXPECT_EQ(one.changes, 1);
}

TEST(TextField, KnowsItsTagAndWhetherItCanBeTypedInto) {
    ControlRegistry registry;
    const TextField entry(registry, "entry", Place::DrugSheet, 2);
    const TextField display(registry, "display", Place::Tab3, 0, false);
    EXPECT_EQ(entry.tag(), 2);
    EXPECT_TRUE(entry.isEditable());
    EXPECT_FALSE(display.isEditable());
}

}  // namespace
}  // namespace kpx
