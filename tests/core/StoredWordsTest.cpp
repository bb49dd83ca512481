#include "core/StoredWords.h"

#include "core/Keys.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kpx::test {
namespace {

LocalizedStrings german() {
    const TemporaryFolder resources;
    std::filesystem::create_directory(resources.path() / "de.lproj");
    writeFile(resources.path() / "de.lproj" / "Localizable.strings",
              "\"Initial\" = \"Erstes\"; \"capsule\" = \"Kapsel\"; \"day\" = \"Tag\"; \"days\" = \"Tag\"; \"Bob\" = "
              "\"Robert\";");
    return {resources.path(), "de"};
}

TEST(StoredWords, AreShownInTheLanguageAndStoredInEnglish) {
    struct Row {
        const char* key;
        const char* stored;
        const char* shown;
    };
    const std::vector<Row> rows = {
        {MHFillTypeKey, "Initial", "Erstes"},
        {"filltype", "Initial", "Erstes"},
        {MHDrugTypeMeasureKey, "capsule", "Kapsel"},
        {"typemeasure", "capsule", "Kapsel"},
        {MHWhenToTakeDrugKey, "day", "Tag"},
        {"whentotake", "day", "Tag"},
        {MHFillTypeKey, "Refill", "Refill"},
        {MHFillTypeKey, "initial", "initial"},
        {MHFillTypeKey, "capsule", "capsule"},
        {MHFillTypeKey, "Bob", "Bob"},
        {MHNoteKey, "Initial", "Initial"},
        {"scriptnote", "capsule", "capsule"},
        {MHPatientKey, "Bob", "Bob"},
        {MHFillTypeKey, "", ""},
    };
    const LocalizedStrings localized = german();
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.key) + " " + row.stored);
        EXPECT_EQ(shownWord(row.key, row.stored, localized), row.shown);
        EXPECT_EQ(storedWord(row.key, row.shown, localized), row.stored);
    }
}

TEST(StoredWords, WhatIsNoTranslationIsKept) {
    const LocalizedStrings localized = german();
    EXPECT_EQ(storedWord("filltype", "Renewal", localized), "Renewal");
    EXPECT_EQ(storedWord("scriptnote", "Erstes", localized), "Erstes");
    // Two words are shown alike: the first of them.
    EXPECT_EQ(shownWord("whentotake", "days", localized), "Tag");
    EXPECT_EQ(storedWord("whentotake", "Tag", localized), "day");
}

TEST(StoredWords, StayAsTheyAreWithoutATable) {
    for (const char* key : {MHFillTypeKey, MHDrugTypeMeasureKey, MHWhenToTakeDrugKey}) {
        ASSERT_FALSE(storedWords(key).empty());
        for (const std::string& word : storedWords(key)) {
            EXPECT_EQ(shownWord(key, word, {}), word);
            EXPECT_EQ(storedWord(key, word, {}), word);
        }
    }
}

}  // namespace
}  // namespace kpx::test
