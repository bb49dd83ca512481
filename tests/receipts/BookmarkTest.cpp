#include "receipts/Bookmark.h"

#include "plist/PropertyList.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <climits>
#include <fstream>
#include <string>
#include <vector>

namespace kpx {
namespace {

namespace fs = std::filesystem;

class Bookmark : public testing::Test {
protected:
    Bookmark() {
        std::string pattern = (fs::temp_directory_path() / "bookmarkXXXXXX").string();
        root = mkdtemp(pattern.data());
        folder = root / "Velmora";
        fs::create_directory(folder);
    }
    ~Bookmark() override { fs::remove_all(root); }

    static void write(const fs::path& file, const std::string& content) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << content;
    }

    /// The bookmark of a new file of that content.
    Data bookmarkOf(const fs::path& file, const std::string& content) {
        write(file, content);
        return createBookmark(file, folder).value_or(Data());
    }

    fs::path root;
    fs::path folder;
};

TEST_F(Bookmark, FindsTheFileWhereItWas) {
    const std::vector<fs::path> places = {
        folder / "receipt.png",
        folder / "2024" / "march" / "receipt.pdf",
        folder / "50% \"off\" ü\\.png",
        folder / "two\nlines.png",
        folder / "not utf-8 \xe4.png",
        folder / ".." / "Velmora" / "receipt2.png",
        folder / "2024" / ".." / "receipt3.png",
        root / "elsewhere" / "Velmora" / "receipt.png",
        folder / ".." / "receipt.png",
    };
    for (const fs::path& file : places) {
        SCOPED_TRACE(file);
        const auto found = resolveBookmark(bookmarkOf(file, "ink"), folder);
        ASSERT_TRUE(found);
        EXPECT_TRUE(fs::equivalent(*found, file));
    }
}

TEST_F(Bookmark, FindsTheFileUnderAnotherName) {
    const fs::path file = folder / "receipt.png";
    const Data bookmark = bookmarkOf(file, "ink");
    write(folder / "another.png", "red");

    const fs::path renamed = folder / "renamed.png";
    fs::rename(file, renamed);
    EXPECT_EQ(resolveBookmark(bookmark, folder), renamed);

    const fs::path moved = folder / "2024" / "march" / "moved.jpeg";
    fs::create_directories(moved.parent_path());
    fs::rename(renamed, moved);
    EXPECT_EQ(resolveBookmark(bookmark, folder), moved);

    // Its old name taken by another receipt.
    write(file, "blue ink");
    EXPECT_EQ(resolveBookmark(bookmark, folder), moved);

    // Gone: the receipt scanned again under the old name stands in.
    fs::remove(moved);
    EXPECT_EQ(resolveBookmark(bookmark, folder), file);
    fs::remove(file);
    EXPECT_FALSE(resolveBookmark(bookmark, folder));
}

TEST_F(Bookmark, TellsSwappedFilesApart) {
    const Data first = bookmarkOf(folder / "a.png", "first");
    const Data second = bookmarkOf(folder / "b.png", "other");
    fs::rename(folder / "a.png", folder / "c.png");
    fs::rename(folder / "b.png", folder / "a.png");
    fs::rename(folder / "c.png", folder / "b.png");
    EXPECT_EQ(resolveBookmark(first, folder), folder / "b.png");
    EXPECT_EQ(resolveBookmark(second, folder), folder / "a.png");
}

TEST_F(Bookmark, FindsACopy) {
    const fs::path file = folder / "receipt.png";
    const Data bookmark = bookmarkOf(file, std::string(300'000, 'i') + "nk");
    // As large, but another.
    write(folder / "a.png", std::string(300'000, 'i') + "cy");

    // Restored where it was, on another disk: in two steps, so that both are there at once.
    fs::copy_file(file, root / "backup.png");
    fs::remove(file);
    EXPECT_FALSE(resolveBookmark(bookmark, folder));
    fs::copy_file(root / "backup.png", folder / "restored.png");
    EXPECT_EQ(resolveBookmark(bookmark, folder), folder / "restored.png");
    fs::copy_file(root / "backup.png", file);
    EXPECT_EQ(resolveBookmark(bookmark, folder), file);
}

/// A bookmark with the fields changed.
template <typename ChangeFields>
Data changedBookmark(const Data& bookmark, const ChangeFields& changeFields) {
    constexpr std::size_t markLength = 12;
    const std::string bytes(bookmark.bytes().begin(), bookmark.bytes().end());
    Record fields = *readPropertyList(std::string_view(bytes).substr(markLength))->as<Record>();
    changeFields(fields);
    const std::string changed = bytes.substr(0, markLength) + *writePropertyList(fields);
    return Data(Data::Bytes(changed.begin(), changed.end()));
}

TEST_F(Bookmark, IsNotLookedAtWhenItIsTooLong) {
    const Data bookmark = bookmarkOf(folder / "receipt.png", "ink");
    const auto ofLength = [&](std::size_t length) {
        Data longer = bookmark;
        for (std::size_t filler = 0; longer.bytes().size() < length; ++filler) {
            longer = changedBookmark(bookmark, [&](Record& fields) { fields.set("x", std::string(filler, 'x')); });
        }
        EXPECT_EQ(longer.bytes().size(), length);
        return longer;
    };
    EXPECT_EQ(resolveBookmark(ofLength(PATH_MAX + 1024), folder), folder / "receipt.png");
    EXPECT_EQ(resolveBookmark(ofLength(PATH_MAX + 1025), folder), std::nullopt);
}

TEST_F(Bookmark, DoesNotTakeEmptyFilesForCopies) {
    const Data bookmark = bookmarkOf(folder / "empty.png", "");
    EXPECT_EQ(resolveBookmark(bookmark, folder), folder / "empty.png");
    write(folder / "another.png", "");
    fs::remove(folder / "empty.png");
    EXPECT_FALSE(resolveBookmark(bookmark, folder));
}

TEST_F(Bookmark, FindsAnEditedFile) {
    const fs::path file = folder / "receipt.png";
    const Data bookmark = bookmarkOf(file, "ink");
    write(file, "ink, cropped and turned");
    EXPECT_EQ(resolveBookmark(bookmark, folder), file);
    // Saved by way of a new file.
    write(folder / "new", "ink, brightened");
    fs::rename(folder / "new", file);
    EXPECT_EQ(resolveBookmark(bookmark, folder), file);
}

TEST_F(Bookmark, DoesNotTakeAFileForItsNumber) {
    const fs::path file = folder / "receipt.png";
    const Data bookmark = bookmarkOf(file, "ink");
    // Written anew in place: the number stays, and nothing else does.
    const std::vector<std::string> contents = {"red", "blue ink", ""};
    for (const std::string& content : contents) {
        SCOPED_TRACE(content);
        write(file, content);
        EXPECT_EQ(resolveBookmark(bookmark, folder), file) << "it stands in where the receipt was";
        fs::rename(file, folder / "other.png");
        EXPECT_FALSE(resolveBookmark(bookmark, folder));
        fs::rename(folder / "other.png", file);
    }
    // With a copy of the receipt elsewhere, that is the receipt.
    write(folder / "2024" / "copy.png", "ink");
    EXPECT_EQ(resolveBookmark(bookmark, folder), folder / "2024" / "copy.png");
}

TEST_F(Bookmark, MovesWithItsFolder) {
    const Data bookmark = bookmarkOf(folder / "2024" / "receipt.png", "ink");
    const fs::path elsewhere = root / "elsewhere" / "Velmora";
    fs::create_directory(elsewhere.parent_path());
    fs::rename(folder, elsewhere);
    EXPECT_EQ(resolveBookmark(bookmark, elsewhere), elsewhere / "2024" / "receipt.png");
    fs::rename(elsewhere / "2024", elsewhere / "last year");
    EXPECT_EQ(resolveBookmark(bookmark, elsewhere), elsewhere / "last year" / "receipt.png");
}

TEST_F(Bookmark, FollowsSymbolicLinks) {
    // The data folder is a link, and the file was reached around it.
    const fs::path link = root / "link" / "Velmora";
    fs::create_directory(link.parent_path());
    fs::create_directory_symlink(folder, link);
    write(folder / "receipt.png", "ink");
    const auto bookmark = createBookmark(folder / "receipt.png", link);
    ASSERT_TRUE(bookmark);
    EXPECT_EQ(resolveBookmark(*bookmark, link), link / "receipt.png");
    fs::rename(folder / "receipt.png", folder / "renamed.png");
    EXPECT_EQ(resolveBookmark(*bookmark, link), link / "renamed.png");

    // A subfolder is a link to one outside.
    fs::create_directory(root / "scans");
    fs::create_directory_symlink(root / "scans", folder / "scans");
    const Data scan = bookmarkOf(folder / "scans" / "scan.png", "scan");
    EXPECT_EQ(resolveBookmark(scan, folder), folder / "scans" / "scan.png");

    // The receipt itself is a link; it keeps its own name.
    write(root / "photo.png", "photo");
    fs::create_symlink(root / "photo.png", folder / "photo.png");
    const auto photo = createBookmark(folder / "photo.png", folder);
    ASSERT_TRUE(photo);
    EXPECT_EQ(resolveBookmark(*photo, folder), folder / "photo.png");
    fs::remove(root / "photo.png");
    EXPECT_FALSE(resolveBookmark(*photo, folder));
}

TEST_F(Bookmark, OnlyRegularFilesHaveOne) {
    fs::create_directory(folder / "folder.png");
    fs::create_symlink("loop.png", folder / "loop.png");
    fs::create_symlink("nowhere", folder / "dangling.png");
    ASSERT_EQ(mkfifo((folder / "pipe.png").c_str(), 0600), 0);
    for (const char* name : {"", "missing.png", "folder.png", "loop.png", "dangling.png", "pipe.png"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(createBookmark(folder / name, folder));
    }
    EXPECT_FALSE(createBookmark("", folder));
    EXPECT_FALSE(createBookmark(folder / std::string(5000, 'x'), folder));
}

TEST_F(Bookmark, SearchSurvivesOddNeighbours) {
    const fs::path file = folder / "receipt.png";
    const Data bookmark = bookmarkOf(file, "ink");
    fs::create_directory_symlink(folder, folder / "0 itself");
    fs::create_symlink("0 loop", folder / "0 loop");
    ASSERT_EQ(mkfifo((folder / "0 pipe").c_str(), 0600), 0);
    fs::create_directory(folder / "0 locked");
    fs::permissions(folder / "0 locked", fs::perms::none);
    fs::create_directory(folder / "deeper");
    fs::rename(file, folder / "deeper" / "receipt.png");
    EXPECT_EQ(resolveBookmark(bookmark, folder), folder / "deeper" / "receipt.png");
    fs::permissions(folder / "0 locked", fs::perms::owner_all);
}

TEST_F(Bookmark, OfAnUnreadableFolderFindsNothing) {
    const Data bookmark = bookmarkOf(folder / "receipt.png", "ink");
    EXPECT_FALSE(resolveBookmark(bookmark, root / "missing"));
    EXPECT_FALSE(resolveBookmark(bookmark, folder / "receipt.png"));
    EXPECT_FALSE(resolveBookmark(bookmark, ""));
}

/// A bookmark as somebody else might make one up.
Data madeUp(const std::string& path, const Record& more = {{"inode", 1}, {"size", 1}}) {
    Record fields{{"path", Data(Data::Bytes(path.begin(), path.end()))}};
    for (const auto& [key, value] : more) {
        fields.set(key, value);
    }
    const std::string bytes = "KPXBookmark1" + writePropertyList(fields).value_or("");
    return Data(Data::Bytes(bytes.begin(), bytes.end()));
}

TEST_F(Bookmark, MadeUpOpensNothingOutside) {
    write(folder / "receipt.png", "ink");
    write(root / "secret.png", "secret");
    ASSERT_EQ(resolveBookmark(madeUp("receipt.png"), folder), folder / "receipt.png");
    const std::vector<std::string> paths = {
        "",
        ".",
        "..",
        "../secret.png",
        "deeper/../../secret.png",
        "./../secret.png",
        (root / "secret.png").string(),
        "/etc/passwd",
        "/",
        "/dev/zero",
        "receipt.png/",
        "receipt.png/receipt.png",
        std::string("receipt.png\0", 12),
        std::string("receipt.png\0../secret.png", 25),
        std::string(4096, 'x'),
        std::string(1'000'000, '/'),
        "//////",
        "~/secret.png",
    };
    for (const std::string& path : paths) {
        SCOPED_TRACE(path.substr(0, 100));
        EXPECT_FALSE(resolveBookmark(madeUp(path), folder));
    }
}

TEST_F(Bookmark, NeedsItsFields) {
    write(folder / "receipt.png", "ink");
    const std::vector<Record> rows = {
        {},
        {{"inode", 1}},
        {{"size", 1}},
        {{"inode", "1"}, {"size", 1}},
        {{"inode", 1}, {"size", Array()}},
        {{"inode", 1.0}, {"size", 1}},
        {{"path", "receipt.png"}, {"inode", 1}, {"size", 1}},
        {{"path", Record()}, {"inode", 1}, {"size", 1}},
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        SCOPED_TRACE(row);
        EXPECT_FALSE(resolveBookmark(madeUp("receipt.png", rows[row]), folder));
    }
    const Record extremes{{"inode", std::int64_t{-1}}, {"size", INT64_MIN}, {"fingerprint", INT64_MAX}};
    EXPECT_EQ(resolveBookmark(madeUp("receipt.png", extremes), folder), folder / "receipt.png");
}

TEST_F(Bookmark, CutOrGarbledIsHarmless) {
    const Data whole = bookmarkOf(folder / "receipt.png", "ink");
    for (std::size_t length = 0; length < whole.bytes().size(); ++length) {
        SCOPED_TRACE(length);
        const auto end = whole.bytes().begin() + static_cast<std::ptrdiff_t>(length);
        EXPECT_FALSE(resolveBookmark(Data(Data::Bytes(whole.bytes().begin(), end)), folder));
    }
    for (std::size_t position = 0; position < whole.bytes().size(); ++position) {
        for (const std::uint8_t change : {0x01, 0x10, 0x80, 0xff}) {
            SCOPED_TRACE(position);
            Data::Bytes bytes = whole.bytes();
            bytes[position] ^= change;
            const auto found = resolveBookmark(Data(std::move(bytes)), folder);
            EXPECT_EQ(found.value_or(folder / "receipt.png"), folder / "receipt.png");
        }
    }
}

TEST_F(Bookmark, OfSomebodyElseIsNotInterpreted) {
    const std::string list = writePropertyList(Record{{"path", "receipt.png"}}).value_or("");
    const std::vector<std::string> rows = {
        "",
        "book",
        std::string("book\0\0\0\0mark", 12),
        list,
        "KPXBookmark1",
        "KPXBookmark2" + list,
        "KPXBookmark1" + std::string(50'000'000, 'x'),
        "KPXBookmark1bplist00",
        "KPXBookmark1<plist><array/></plist>",
    };
    for (const std::string& row : rows) {
        SCOPED_TRACE(row.substr(0, 100));
        EXPECT_FALSE(resolveBookmark(Data(Data::Bytes(row.begin(), row.end())), folder));
    }
}

}  // namespace
}  // namespace kpx
