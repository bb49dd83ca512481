#include "earlier/KeepingWriter.h"

#include "core/Keys.h"
#include "earlier/Overview.h"
#include "tests/support/RegionSupport.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;

class KeepingWriter : public testing::Test {
protected:
    KeepingWriter() { makeDataFolder(folder()); }

    fs::path folder() const { return m_folder.path() / "Velmora"; }
    fs::path earlier() const { return m_folder.path() / "Velmora-earlier"; }
    fs::path patients() const { return folder() / patientFile; }

    static Environment at(int day, int hour, int second = 0) {
        return {universal(2024, 3, day, hour, 0, second), Region("en_US", "UTC")};
    }
    static std::string listOf(const std::vector<const char*>& names) {
        Records records;
        for (const char* name : names) {
            records.push_back({{patientNameKey, name}});
        }
        return bytesFromRecords(records).value_or("");
    }
    bool write(const std::vector<const char*>& names, const Environment& when,
               Replacing replacing = Replacing::Change) const {
        return replaceKeepingEarlier(folder(), patientFile, {.bytes = listOf(names)}, replacing, when);
    }
    EarlierStates offered(const Environment& when) const { return earlierStatesOf(folder(), when, LocalizedStrings()); }

    TemporaryFolder m_folder;
};

TEST_F(KeepingWriter, KeepsByASecondName) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    EXPECT_FALSE(fs::exists(earlier()) && !fs::is_empty(earlier())) << "there was nothing to keep";
    struct stat before {};
    ASSERT_EQ(::stat(patients().c_str(), &before), 0);
    EXPECT_EQ(before.st_mtim.tv_sec, 1709629200) << "2024-03-05T09:00:00Z";

    ASSERT_TRUE(write({"Ann", "Bob"}, at(5, 10)));
    ASSERT_EQ(namesIn(earlier()), std::vector<std::string>{"patientFileForKPX.20240305T090000Z"});
    EXPECT_EQ(fs::status(earlier()).permissions(), fs::perms::owner_all);
    struct stat kept {};
    ASSERT_EQ(::stat((earlier() / "patientFileForKPX.20240305T090000Z").c_str(), &kept), 0);
    EXPECT_EQ(kept.st_ino, before.st_ino);
    EXPECT_EQ(kept.st_mode & 0777, 0600U);
    EXPECT_EQ(kept.st_mtim.tv_sec, 1709632800) << "when it was replaced";
    EXPECT_EQ(readFile(earlier() / "patientFileForKPX.20240305T090000Z"), listOf({"Ann"}));
    EXPECT_EQ(namesIn(folder()), std::vector<std::string>{std::string(patientFile)});
}

TEST_F(KeepingWriter, CountsTheContentsOfASecondAndMarksDeletions) {
    ASSERT_TRUE(write({"Ann", "Bob", "Cid"}, at(5, 9)));
    ASSERT_TRUE(write({"Ann", "Bob"}, at(5, 9), Replacing::Deletion));
    ASSERT_TRUE(write({"Ann"}, at(5, 9), Replacing::Deletion));
    ASSERT_TRUE(write({}, at(5, 9)));
    EXPECT_EQ(namesIn(earlier()), (std::vector<std::string>{"patientFileForKPX.20240305T090000Z-2-deleted",
                                                            "patientFileForKPX.20240305T090000Z-deleted"}));
    const EarlierStates states = offered(at(5, 12));
    ASSERT_EQ(states.rows.size(), 2U);
    EXPECT_EQ(states.rows[0].text("difference")->string(), "+2 patients");
    EXPECT_EQ(states.rows[1].text("difference")->string(), "+3 patients");
}

TEST_F(KeepingWriter, OffersNothingThatWasReplacedInItsOwnSecondForLaterInstants) {
    ASSERT_TRUE(write({"Ann"}, at(1, 9)));
    ASSERT_TRUE(write({"Ann", "Bob"}, at(1, 10)));
    ASSERT_TRUE(write({"Ann"}, at(1, 10), Replacing::Deletion));
    ASSERT_TRUE(replaceKeepingEarlier(folder(), drugFile, {.bytes = listOf({"One"})}, Replacing::Change, at(1, 11)));
    ASSERT_TRUE(replaceKeepingEarlier(folder(), drugFile, {.bytes = listOf({})}, Replacing::Deletion, at(1, 12)));
    ASSERT_TRUE(write({"Ann", "Cid", "Dan"}, at(1, 13)));
    ASSERT_TRUE(write({"Ann", "Cid"}, at(5, 9)));
    // "Ann" alone is not kept; of the two deletions, the one of the drug happened when there was she alone.
    ASSERT_EQ(namesIn(earlier()), (std::vector<std::string>{"DrugFileForKPX.20240301T110000Z-deleted",
                                                            "patientFileForKPX.20240301T100000Z-deleted",
                                                            "patientFileForKPX.20240301T130000Z"}));
    const EarlierStates states = offered(at(5, 10));
    ASSERT_EQ(states.rows.size(), 1U);
    EXPECT_EQ(states.rows[0].integer("patients"), 3);
}

TEST_F(KeepingWriter, KeepsAContentOnceThoughWritesFail) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    fs::create_directory(earlier());
    fs::permissions(m_folder.path(), fs::perms::all);
    fs::permissions(earlier(), fs::perms::all);
    fs::permissions(patients(), fs::perms(0666));
    fs::permissions(folder(), fs::perms(0555));
    for (int time = 0; time < 3; ++time) {
        EXPECT_TRUE(holdsInChild([&] { return becomeNobody() && !write({"Bob"}, at(5, 10)); }));
    }
    fs::permissions(folder(), fs::perms::owner_all);
    EXPECT_EQ(namesIn(earlier()).size(), 1U);
    EXPECT_EQ(readFile(patients()), listOf({"Ann"}));
}

// The clock was a fortnight ahead, and is put right.
TEST_F(KeepingWriter, KeepsWhatWasWrittenAhead) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    ASSERT_TRUE(write({"Bob"}, at(20, 9)));
    ASSERT_TRUE(write({"Cid"}, at(20, 10)));
    ASSERT_TRUE(write({"Dan"}, at(6, 9)));
    EXPECT_EQ(namesIn(earlier()),
              (std::vector<std::string>{"patientFileForKPX.20240305T090000Z", "patientFileForKPX.20240306T085959Z",
                                        "patientFileForKPX.20240320T090000Z"}));
    EXPECT_EQ(readFile(earlier() / "patientFileForKPX.20240306T085959Z"), listOf({"Cid"}));
}

TEST_F(KeepingWriter, WritesAlsoWhereNothingCanBeKept) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    writeFile(earlier(), "no folder");
    EXPECT_TRUE(write({"Bob"}, at(5, 10)));
    EXPECT_EQ(readFile(patients()), listOf({"Bob"}));
}

TEST_F(KeepingWriter, NeverReplacesWhatCouldNotBeRead) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    const NewContent content{.bytes = "()", .madeFrom = WholeFile::State::Unreadable};
    EXPECT_FALSE(replaceKeepingEarlier(folder(), patientFile, content, Replacing::Change, at(5, 10)));
    EXPECT_EQ(readFile(patients()), listOf({"Ann"}));
    EXPECT_FALSE(fs::exists(earlier()));
    EXPECT_TRUE(replaceKeepingEarlier(folder(), drugFile, content, Replacing::Change, at(5, 10))) << "it is not there";
}

TEST_F(KeepingWriter, GivesFilesFromTheFutureTheTimeOfNow) {
    writeFile(patients(), listOf({"Ann"}));  // by the machine's clock, years after
    EarlierFolder(folder()).settledContents(at(5, 9).now, at(5, 9).now);
    ASSERT_TRUE(write({"Bob"}, at(5, 10)));
    EXPECT_EQ(namesIn(earlier()), std::vector<std::string>{"patientFileForKPX.20240305T090000Z"});
}

TEST_F(KeepingWriter, KeepsAFileFromTheFutureThatCameWhileItRan) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    writeFile(patients(), listOf({"Dan", "Eve"}));  // by the machine's clock, years after
    ASSERT_TRUE(write({"Bob"}, at(5, 10)));
    EXPECT_EQ(readFile(earlier() / "patientFileForKPX.20240305T095959Z"), listOf({"Dan", "Eve"}));
}

TEST_F(KeepingWriter, KeepsABackupThatWasPutBackWithItsTime) {
    ASSERT_TRUE(write({"Ann"}, at(1, 9)));
    ASSERT_TRUE(write({"Ann", "Bob"}, at(1, 10)));
    ASSERT_TRUE(write({"Ann", "Bob", "Cid"}, at(1, 12)));
    fs::remove(patients());
    writeFile(patients(), listOf({"Dan", "Eve"}));
    const std::timespec halfPastNine[] = {{0, UTIME_OMIT}, fileTimeOf(universal(2024, 3, 1, 9, 30))};
    ASSERT_EQ(::utimensat(AT_FDCWD, patients().c_str(), halfPastNine, 0), 0);

    EarlierStates states = offered(at(15, 9));
    ASSERT_FALSE(states.rows.empty());
    ASSERT_EQ(states.rows[0].integer("patients"), 2);
    ASSERT_EQ(bringBack(folder(), states.states[0], at(15, 9)), BroughtBack::Whole);
    EXPECT_EQ(readFile(patients()), listOf({"Ann", "Bob"}));
    EXPECT_EQ(readFile(earlier() / "patientFileForKPX.20240315T085959Z"), listOf({"Dan", "Eve"}));
    states = offered(at(15, 10));
    ASSERT_FALSE(states.rows.empty());
    EXPECT_EQ(states.rows[0].text("difference")->string(), "+2 patients, \u22122 patients");
}

TEST_F(KeepingWriter, BringsBackAndTakesThatBack) {
    ASSERT_TRUE(write({"Ann", "Bob"}, at(5, 8)));
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    const NewContent none{.bytes = "()", .madeFrom = WholeFile::State::Missing};
    ASSERT_TRUE(replaceKeepingEarlier(folder(), drugFile, none, Replacing::Change, at(5, 10)));
    EarlierStates states = offered(at(5, 11));
    ASSERT_EQ(states.rows.size(), 1U) << "an empty list of drugs is no other state than none";
    EXPECT_EQ(states.rows[0].text("difference")->string(), "+1 patient");
    EXPECT_EQ(states.rows[0].date("when"), at(5, 8).now);
    EXPECT_EQ(states.rows[0].integer("patients"), 2);

    EXPECT_EQ(bringBack(folder(), states.states[0], at(5, 11)), BroughtBack::Whole);
    EXPECT_EQ(readFile(patients()), listOf({"Ann", "Bob"}));
    EXPECT_EQ(copyArrayFromDataFile(folder(), drugFile), Records());
    EXPECT_FALSE(fs::exists(folder() / prescriptionHistoryFile)) << "it did not exist, and does not";

    states = offered(at(5, 12));
    ASSERT_FALSE(states.rows.empty());
    EXPECT_EQ(states.rows[0].text("difference")->string(), "\u22121 patient");
    EXPECT_EQ(bringBack(folder(), states.states[0], at(5, 12)), BroughtBack::Whole);
    EXPECT_EQ(readFile(patients()), listOf({"Ann"}));
}

TEST_F(KeepingWriter, BringsNothingBackWhereThePresentCannotBeKept) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    ASSERT_TRUE(write({"Bob"}, at(5, 10)));
    const EarlierStates states = offered(at(5, 11));
    ASSERT_EQ(states.states.size(), 1U);
    fs::remove(patients());
    fs::create_directory(patients());
    EXPECT_EQ(bringBack(folder(), states.states[0], at(5, 11)), BroughtBack::NotAtAll);
    EXPECT_TRUE(fs::is_directory(patients())) << "what it is cannot be told, so it stays";
    fs::remove(patients());
    writeFile(patients(), "()");
    fs::remove_all(earlier());
    EXPECT_EQ(bringBack(folder(), states.states[0], at(5, 11)), BroughtBack::NotAtAll) << "it is kept no longer";
    EXPECT_EQ(readFile(patients()), "()");
}

TEST_F(KeepingWriter, BringsNothingBackWhereNoMoreCanBeKept) {
    ASSERT_TRUE(write({"Ann"}, at(5, 9)));
    ASSERT_TRUE(write({"Bob"}, at(5, 10)));
    const EarlierStates states = offered(at(5, 11));
    ASSERT_EQ(states.states.size(), 1U);
    fs::permissions(m_folder.path(), fs::perms::all);
    fs::permissions(folder(), fs::perms::all);
    fs::permissions(patients(), fs::perms(0644));
    fs::permissions(earlier(), fs::perms(0555));
    for (const auto& kept : fs::directory_iterator(earlier())) {
        fs::permissions(kept, fs::perms(0644));
    }
    EXPECT_TRUE(holdsInChild(
        [&] { return becomeNobody() && bringBack(folder(), states.states[0], at(5, 11)) == BroughtBack::NotAtAll; }));
    fs::permissions(earlier(), fs::perms::owner_all);
    EXPECT_EQ(readFile(patients()), listOf({"Bob"}));
}

TEST_F(KeepingWriter, TellsADamagedPresentFromAnEmptyOne) {
    ASSERT_TRUE(write({}, at(5, 9)));
    ASSERT_TRUE(write({"Ann"}, at(5, 10)));
    ASSERT_TRUE(replaceKeepingEarlier(folder(), patientFile, {.bytes = "bpl"}, Replacing::Change, at(5, 11)));
    const EarlierStates states = offered(at(5, 12));
    ASSERT_EQ(states.rows.size(), 2U);
    EXPECT_EQ(states.rows[0].text("difference")->string(), "+1 patient");
    EXPECT_EQ(states.rows[1].text("difference")->string(), "") << "an empty list can be read, the present cannot";
}

}  // namespace
}  // namespace kpx::test
