#include "receipts/Bookmark.h"
#include "receipts/DataFolderRule.h"
#include "receipts/RelocationText.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <fstream>
#include <vector>

namespace kpx {
namespace {

namespace fs = std::filesystem;

class Receipts : public testing::Test {
protected:
    Receipts() {
        std::string pattern = (fs::temp_directory_path() / "receiptsXXXXXX").string();
        m_root = mkdtemp(pattern.data());
        folder = m_root / "Velmora";
        fs::create_directory(folder);
    }
    ~Receipts() override { fs::remove_all(m_root); }

    static void write(const fs::path& file, const char* text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }

    fs::path folder;

private:
    fs::path m_root;
};

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
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(liesInDataFolder(row.path, "Velmora"), row.inside);
    }
}

TEST_F(Receipts, AreFoundAgain) {
    const fs::path file = folder / "receipt.png";
    write(file, "ink");
    const auto bookmark = createBookmark(file, folder);
    ASSERT_TRUE(bookmark);
    EXPECT_EQ(resolveBookmark(*bookmark, folder), file);

    const fs::path moved = folder / "2024" / "renamed.png";
    fs::create_directory(moved.parent_path());
    fs::rename(file, moved);
    EXPECT_EQ(resolveBookmark(*bookmark, folder), moved);

    fs::remove(moved);
    EXPECT_FALSE(resolveBookmark(*bookmark, folder));

    // Restored from a copy: another file on the disk, where it always was.
    write(file, "ink");
    EXPECT_EQ(resolveBookmark(*bookmark, folder), file);
}

TEST_F(Receipts, MoveWithTheirFolder) {
    write(folder / "2024" / "receipt.png", "ink");
    const auto bookmark = createBookmark(folder / "2024" / "receipt.png", folder);
    const fs::path elsewhere = folder.parent_path() / "elsewhere" / "Velmora";
    fs::create_directory(elsewhere.parent_path());
    fs::rename(folder, elsewhere);
    EXPECT_EQ(resolveBookmark(*bookmark, elsewhere), elsewhere / "2024" / "receipt.png");
}

TEST_F(Receipts, ForeignBookmarksAreNotInterpreted) {
    EXPECT_FALSE(resolveBookmark(Data({'b', 'o', 'o', 'k', 0, 0, 0, 0}), folder));
    EXPECT_FALSE(resolveBookmark(Data(), folder));
    EXPECT_FALSE(createBookmark(folder / "missing.png", folder));
    EXPECT_FALSE(createBookmark(folder, folder));
}

TEST(RelocationText, NamesFileAndFolder) {
    const RelocationText text = relocationText("/home/ann/receipt.png", "Velmora", LocalizedStrings());
    EXPECT_EQ(text.message, "Receipt file is NOT stored in KPX's data folder named: \"Velmora\".");
    EXPECT_TRUE(
        text.informative.starts_with("Receipt file:\t\"receipt.png\",\rLocated at:\t\"/home/ann/receipt.png\"\r\r"));
}

}  // namespace
}  // namespace kpx
