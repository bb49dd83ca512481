#include "core/DataFiles.h"

#include "core/Keys.h"
#include "files/FileDescriptor.h"
#include "plist/PropertyList.h"
#include "tests/plist/PropertyListSamples.h"
#include "tests/support/HouseholdGenerator.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;

class DataFiles : public testing::Test {
protected:
    fs::path file() const { return folder() / patientFile; }
    fs::path folder() const { return m_folder.path() / "data"; }
    std::optional<Records> read() const { return copyArrayFromDataFile(folder(), patientFile); }
    bool write(const std::optional<Records>& records) const { return writeArray(records, folder(), patientFile); }

    std::vector<std::string> entries() const { return namesIn(folder()); }

    TemporaryFolder m_folder;
    const Records m_patients = makeHousehold(1).patients;
};

TEST_F(DataFiles, StartsWithNothing) {
    EXPECT_EQ(read(), Records());
    EXPECT_TRUE(fs::is_directory(folder()));
    EXPECT_EQ(fs::status(folder()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(entries(), std::vector<std::string>());
}

TEST_F(DataFiles, MakesOnlyTheLastComponentOfTheFolder) {
    const fs::path deep = m_folder.path() / "one" / "two";
    EXPECT_EQ(copyArrayFromDataFile(deep, patientFile), Records());
    EXPECT_FALSE(fs::exists(m_folder.path() / "one"));
    EXPECT_FALSE(writeArray(m_patients, deep, patientFile));
}

TEST_F(DataFiles, ReadsWhatWasWritten) {
    ASSERT_EQ(read(), Records());
    EXPECT_TRUE(write(m_patients));
    EXPECT_EQ(read(), m_patients);
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(readFile(file()).starts_with("bplist00"));
    EXPECT_TRUE(write(Records()));
    EXPECT_EQ(read(), Records());
    EXPECT_EQ(entries(), std::vector<std::string>{std::string(patientFile)});
}

TEST_F(DataFiles, ReadsEveryFormatAndTellsDamageFromEmptiness) {
    struct Row {
        const char* name;
        std::string bytes;
        std::optional<Records> records;
    };
    const std::vector<Row> rows = {
        {"XML", "<plist><array><dict><key>k</key><integer>1</integer></dict></array></plist>", Records{{{"k", 1}}}},
        {"old-style", "({k = 1;})", Records{{{"k", "1"}}}},
        {"empty array", "()", Records()},
        {"zero bytes", "", std::nullopt},
        {"no property list", "\x89PNG", std::nullopt},
        {"a dictionary", "{k = 1;}", std::nullopt},
        {"an array of other things", "({k = 1;}, text)", std::nullopt},
        {"a text", "text", std::nullopt},
    };
    ASSERT_EQ(read(), Records());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        writeFile(file(), row.bytes);
        EXPECT_EQ(read(), row.records);
        EXPECT_EQ(write(read()), row.records.has_value());
        if (row.records) {
            EXPECT_TRUE(readFile(file()).starts_with("bplist00"));
            EXPECT_EQ(read(), row.records);
        } else {
            EXPECT_EQ(readFile(file()), row.bytes);
        }
    }
}

TEST_F(DataFiles, CarriesForeignValuesThroughARewrite) {
    ASSERT_EQ(read(), Records());
    const Record foreign = {{"known", "x"}, {"foreign", everyKind()}};
    writeFile(file(), *writePropertyList(list({foreign})));
    Records records = *read();
    records[0].set("known", "y");
    ASSERT_TRUE(write(records));
    EXPECT_EQ(read(), (Records{{{"known", "y"}, {"foreign", everyKind()}}}));
}

TEST_F(DataFiles, CountsWhatCannotBeReadAsEmpty) {
    ASSERT_EQ(read(), Records());
    fs::create_directory(file());
    EXPECT_EQ(read(), Records());
    EXPECT_FALSE(write(m_patients));
    EXPECT_TRUE(fs::is_directory(file()));
    fs::remove(file());

    ASSERT_EQ(mkfifo(file().c_str(), S_IRWXU), 0);
    EXPECT_EQ(read(), Records());
    EXPECT_FALSE(write(m_patients));
    EXPECT_TRUE(fs::is_fifo(file()));
    fs::remove(file());

    writeFile(file(), "()");
    EXPECT_TRUE(holdsInChild([&] {
        fs::permissions(file(), fs::perms::none);
        return chmod(m_folder.path().c_str(), 0755) == 0 && chmod(folder().c_str(), 0755) == 0 && becomeNobody() &&
               read() == Records();
    }));
}

TEST_F(DataFiles, LeavesAReadOnlyFolderAlone) {
    ASSERT_EQ(read(), Records());
    ASSERT_TRUE(write(m_patients));
    const std::string before = readFile(file());
    EXPECT_TRUE(holdsInChild([&] {
        return chmod(m_folder.path().c_str(), 0755) == 0 && chmod(folder().c_str(), 0555) == 0 &&
               chmod(file().c_str(), 0644) == 0 && becomeNobody() && !write(Records());
    }));
    fs::permissions(folder(), fs::perms::owner_all);
    EXPECT_EQ(readFile(file()), before);
    EXPECT_EQ(entries().size(), 1U);
}

TEST_F(DataFiles, FollowsSymbolicLinks) {
    ASSERT_EQ(read(), Records());
    const fs::path elsewhere = m_folder.path() / "elsewhere";
    fs::create_directory(elsewhere);
    fs::create_symlink("../elsewhere/second", file());
    fs::create_symlink("target", elsewhere / "second");
    EXPECT_EQ(read(), Records());
    EXPECT_TRUE(write(m_patients));
    EXPECT_TRUE(fs::is_symlink(file()));
    EXPECT_TRUE(fs::is_symlink(elsewhere / "second"));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(elsewhere / "target")));
    EXPECT_EQ(read(), m_patients);
    EXPECT_TRUE(write(Records()));
    EXPECT_EQ(read(), Records());
    EXPECT_EQ(namesIn(elsewhere), (std::vector<std::string>{"second", "target"}));

    fs::remove(file());
    fs::create_symlink(elsewhere / "target", file());
    EXPECT_TRUE(write(m_patients));
    EXPECT_EQ(read(), m_patients);

    fs::remove(file());
    fs::create_symlink(file(), file());
    EXPECT_FALSE(write(m_patients));
}

TEST_F(DataFiles, KeepsTheModeWhateverTheMask) {
    ASSERT_EQ(read(), Records());
    writeFile(file(), "()");
    fs::permissions(file(), fs::perms::all);
    const mode_t mask = umask(0777);
    EXPECT_TRUE(write(m_patients));
    umask(mask);
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(DataFiles, RemovesWhatAKilledWriterLeftBehindAndNothingElse) {
    ASSERT_EQ(read(), Records());
    const std::string start = "." + std::string(patientFile) + ".";
    const std::vector<std::string> others = {"." + std::string(drugFile) + ".0123456789abcdef.tmp", start + "notes",
                                             start + "0123456789abcdeX.tmp", start + "0123456789abcdef.tmp.bak",
                                             std::string(patientFile) + " (copy)"};
    for (const std::string& other : others) {
        writeFile(folder() / other, "mine");
    }
    writeFile(folder() / (start + "0123456789abcdef.tmp"), "left over");
    writeFile(folder() / (start + "00000000000000aa.tmp"), "");
    const std::string held = start + "00000000000000bb.tmp";
    writeFile(folder() / held, "still being written");
    const FileDescriptor writer(open((folder() / held).c_str(), O_WRONLY));
    ASSERT_EQ(flock(writer.get(), LOCK_EX), 0);

    EXPECT_TRUE(write(m_patients));
    std::vector<std::string> expected = others;
    expected.push_back(held);
    expected.emplace_back(patientFile);
    std::ranges::sort(expected);
    EXPECT_EQ(entries(), expected);
}

}  // namespace
}  // namespace kpx::test
