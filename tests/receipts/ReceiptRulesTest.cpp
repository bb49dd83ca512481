#include "receipts/DataFolderRule.h"
#include "receipts/RelocationText.h"

#include <gtest/gtest.h>
#include <vector>

namespace kpx {
namespace {

TEST(DataFolderRule, LooksForOneWholeComponent) {
    struct Row {
        const char* path;
        bool inside;
    };
    const std::vector<Row> rows = {
        {"/home/ann/.local/share/Velmora/receipt.png", true},
        {"/home/ann/.local/share/Velmora/2024/receipt.png", true},
        {"/somewhere/else/Velmora/receipt.png", true},
        {"/home/ann/velmora/receipt.png", false},
        {"/home/ann/Velmora2/receipt.png", false},
        {"/home/ann/My Velmora/receipt.png", false},
        {"/home/ann/receipt.png", false},
        {"/home/ann/Velmora", true},
        {"/Velmora/receipt.png", true},
        {"/home/ann/Velmora/../receipt.png", true},
        {"/home/ann/Velmora.png", false},
        {"/home/ann/Velmora /receipt.png", false},
        {"/home/ann/VELMORA/receipt.png", false},
        {"/home/ann/Velmora\\receipt.png", false},
        {"", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(liesInDataFolder(row.path, "Velmora"), row.inside);
    }
}

TEST(RelocationText, NamesFileAndFolder) {
    const RelocationText text = relocationText("/home/ann/receipt.png", "Velmora", LocalizedStrings());
    EXPECT_EQ(text.message, "Receipt file is NOT stored in KPX's data folder named: \"Velmora\".");
    EXPECT_TRUE(
        text.informative.starts_with("Receipt file:\t\"receipt.png\",\rLocated at:\t\"/home/ann/receipt.png\"\r\r"));
}

TEST(RelocationText, KeepsWhatLooksLikeAPlaceholder) {
    const RelocationText text = relocationText("/home/100%@/50% \"off\".png", "Velmora", LocalizedStrings());
    EXPECT_TRUE(text.informative.starts_with(
        "Receipt file:\t\"50% \"off\".png\",\rLocated at:\t\"/home/100%@/50% \"off\".png\"\r\rneeds to be "));
}

}  // namespace
}  // namespace kpx
