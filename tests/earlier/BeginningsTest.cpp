#include "earlier/Beginnings.h"

#include "core/Keys.h"
#include "earlier/KeepingWriter.h"
#include "earlier/Overview.h"
#include "region/DateUtilities.h"
#include "tests/support/RegionSupport.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <string>
#include <vector>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t patients = 1;
constexpr std::size_t drugs = 2;
constexpr const char* attribute = "user.velmora.beginnings";

std::int64_t secondsAt(int year, int month, int day, int hour = 0) {
    return static_cast<std::int64_t>(universal(year, month, day, hour).secondsSince1970());
}

TEST(Beginnings, AreWrittenAsALineAFile) {
    Beginnings beginnings;
    EXPECT_EQ(beginnings.text(), "");
    HouseholdContents contents;
    contents[drugs] = {{.file = drugs, .since = secondsAt(2023, 1, 1), .isPresent = true}};
    beginnings.noteFound(contents);
    beginnings.noteMade(patients, secondsAt(2024, 3, 5, 17));
    EXPECT_EQ(beginnings.text(), "patientFileForKPX.20240305T170000Z\nDrugFileForKPX\n");
    beginnings.noteMade(patients, secondsAt(2024, 3, 6));
    beginnings.noteMade(drugs, secondsAt(2024, 3, 6));
    contents[patients] = contents[drugs];
    beginnings.noteFound(contents);
    EXPECT_EQ(beginnings.text(), "patientFileForKPX.20240305T170000Z\nDrugFileForKPX\n") << "the first note counts";
    EXPECT_EQ(Beginnings::fromText(beginnings.text()), beginnings);
    EXPECT_EQ(Beginnings::fromText(""), Beginnings());
}

TEST(Beginnings, AreNoneInAnyOtherText) {
    using namespace std::string_view_literals;
    for (const std::string_view text :
         {"\n"sv, "patientFileForKPX"sv, "patientFileForKPX\n\n"sv, "patientFileForKPX\0\n"sv,
          "patientFileForKPX\npatientFileForKPX\n"sv, "DrugFileForKPX\npatientFileForKPX\n"sv, "otherFileForKPX\n"sv,
          "patientFileForKPX.20240305T170000Z-2\n"sv, "patientFileForKPX.20240305T170000Z-deleted\n"sv,
          "patientFileForKPX.20240230T170000Z\n"sv, "patientFileForKPX.\n"sv, "\xff\xfe\0\0"sv}) {
        EXPECT_EQ(Beginnings::fromText(text), std::nullopt) << text;
    }
}

TEST(Beginnings, TellAMissingFileFromAnUnknownContent) {
    const auto note = [](std::string_view text) { return Beginnings::fromText(text).value(); };
    const std::vector<FileContent> nothing;
    const std::vector<FileContent> known = {{.file = patients, .since = secondsAt(2024, 3, 5), .isPresent = true}};
    struct Row {
        const char* name;
        std::string_view noted;
        const std::vector<FileContent>& known;
        std::int64_t instant;
        bool wasMissing;
    };
    const Row rows[] = {
        {"never seen", "", nothing, secondsAt(2024, 3, 4), true},
        {"put there by somebody else", "", known, secondsAt(2024, 3, 4), false},
        {"older than any note", "patientFileForKPX\n", known, secondsAt(2024, 3, 4), false},
        {"before it was made", "patientFileForKPX.20240302T000000Z\n", known, secondsAt(2024, 3, 1, 23), true},
        {"its first content was removed since", "patientFileForKPX.20240302T000000Z\n", known, secondsAt(2024, 3, 2),
         false},
        {"removed, and none of its contents kept", "patientFileForKPX.20240302T000000Z\n", nothing,
         secondsAt(2024, 3, 4), true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(note(row.noted).wasMissing(patients, row.known, row.instant), row.wasMissing);
    }
}

/// A household in a folder of its own. What stands there at first was written by hand, at an hour of its own.
class NotedBeginnings : public testing::Test {
protected:
    NotedBeginnings() { makeDataFolder(folder()); }

    fs::path folder() const { return m_folder.path() / "Velmora"; }
    fs::path earlier() const { return m_folder.path() / "Velmora-earlier"; }

    static Environment at(int month, int day, int hour = 9) {
        return {universal(2024, month, day, hour), Region("en_US", "UTC")};
    }
    static std::string listOf(std::size_t count) {
        return bytesFromRecords(Records(count, Record{{patientNameKey, "Ann"}})).value_or("");
    }
    void put(std::string_view file, std::size_t count, int month, int day) const {
        writeFile(folder() / file, listOf(count));
        const std::timespec times[] = {{0, UTIME_OMIT}, fileTimeOf(at(month, day).now)};
        ASSERT_EQ(::utimensat(AT_FDCWD, (folder() / file).c_str(), times, 0), 0);
    }
    void write(std::string_view file, std::size_t count, const Environment& when,
               Replacing replacing = Replacing::Change) const {
        const auto found = fs::exists(folder() / file) ? WholeFile::State::Read : WholeFile::State::Missing;
        ASSERT_TRUE(
            replaceKeepingEarlier(folder(), file, {.bytes = listOf(count), .madeFrom = found}, replacing, when));
    }
    /// What is offered, each as "day/month: fills patients drugs".
    std::vector<std::string> offered(const Environment& when) const {
        std::vector<std::string> texts;
        for (const Record& row : earlierStatesOf(folder(), when, LocalizedStrings()).rows) {
            const CalendarDay day = yearMonthDayFromDate(*row.date("when"), when);
            std::string text = std::to_string(day.day) + '/' + std::to_string(day.month) + ':';
            for (const char* column : {"fills", "patients", "drugs"}) {
                text += ' ' + std::to_string(row.integer(column));
            }
            texts.push_back(text);
        }
        return texts;
    }
    std::string noted() const {
        char text[4096];
        const ssize_t length = ::getxattr(earlier().c_str(), attribute, text, sizeof text);
        return length < 0 ? "none" : std::string(text, static_cast<std::size_t>(length));
    }
    bool note(std::string_view text) const {
        return ::setxattr(earlier().c_str(), attribute, text.data(), text.size(), 0) == 0;
    }
    /// Whether this file system has attributes; where it has none, what is not known is taken for not there.
    bool hasAttributes() const { return ::setxattr(folder().c_str(), "user.velmora.tried", "", 0, 0) == 0; }

    TemporaryFolder m_folder;
};

TEST_F(NotedBeginnings, OfferNothingOfAHouseholdBeforeItsFilesAreKnown) {
    put(patientFile, 1, 1, 10);
    put(drugFile, 1, 1, 20);
    put(prescriptionHistoryFile, 300, 2, 10);
    EXPECT_EQ(offered(at(3, 4)), std::vector<std::string>{}) << "before anything was written";
    EXPECT_FALSE(fs::exists(earlier()));

    for (int time = 0; time < 2; ++time) {
        write(prescriptionHistoryFile, 301, at(3, 5));
        EXPECT_EQ(noted(),
                  hasAttributes() ? "prescriptionHistoryFileForKPX\npatientFileForKPX\nDrugFileForKPX\n" : "none");
        EXPECT_EQ(offered(at(3, 5, 10)), hasAttributes() ? (std::vector<std::string>{"10/2: 300 1 1"})
                                                         : (std::vector<std::string>{"10/2: 300 1 1", "20/1: 0 1 1"}));
        // Somebody deletes what was kept, and all begins anew.
        fs::remove_all(earlier());
        put(prescriptionHistoryFile, 300, 2, 10);
        EXPECT_EQ(offered(at(3, 5, 11)), std::vector<std::string>{});
    }
}

TEST_F(NotedBeginnings, OfferTheStatesBeforeAFileWasMade) {
    write(patientFile, 1, at(3, 1));
    EXPECT_EQ(fs::status(earlier()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(namesIn(earlier()), std::vector<std::string>{});
    write(drugFile, 1, at(3, 2));
    write(prescriptionHistoryFile, 1, at(3, 3));
    EXPECT_EQ(noted(), hasAttributes() ? "prescriptionHistoryFileForKPX.20240303T090000Z\n"
                                         "patientFileForKPX.20240301T090000Z\nDrugFileForKPX.20240302T090000Z\n"
                                       : "none");
    const std::vector<std::string> both = {"2/3: 0 1 1", "1/3: 0 1 0"};
    EXPECT_EQ(offered(at(3, 3, 10)), both) << "nothing is kept yet";
    write(prescriptionHistoryFile, 2, at(3, 4));
    EXPECT_EQ(offered(at(3, 4, 10)), (std::vector<std::string>{"3/3: 1 1 1", both[0], both[1]}));
}

TEST_F(NotedBeginnings, HoldTheInstantBeforeADeleteOfTheFirstDay) {
    write(patientFile, 2, at(3, 1, 9));
    write(patientFile, 1, at(3, 1, 10), Replacing::Deletion);
    write(drugFile, 1, at(3, 1, 11));
    const std::vector<std::string> known = {"1/3: 0 2 0"};
    EXPECT_EQ(offered(at(3, 1, 12)), (std::vector<std::string>{"1/3: 0 1 0", known[0]}));
    // After a day what it left is no longer offered, and of the drugs no more than the end of the day would be known.
    EXPECT_EQ(offered(at(3, 3)), hasAttributes() ? known : std::vector<std::string>{});
}

TEST_F(NotedBeginnings, OfferNoStateWithoutAFileWhoseFirstContentWasRemoved) {
    write(patientFile, 1, at(3, 1, 8));
    write(drugFile, 1, at(3, 1, 9));
    write(patientFile, 2, at(3, 1, 10));
    write(patientFile, 1, at(3, 1, 11), Replacing::Deletion);
    write(drugFile, 3, at(3, 1, 12));
    write(patientFile, 4, at(3, 1, 13));
    write(patientFile, 5, at(3, 5));
    ASSERT_EQ(namesIn(earlier()), (std::vector<std::string>{"patientFileForKPX.20240301T100000Z-deleted",
                                                            "patientFileForKPX.20240301T130000Z"}));
    EXPECT_EQ(offered(at(3, 5)), std::vector<std::string>{"1/3: 0 4 3"});
}

TEST_F(NotedBeginnings, AreNotToldOfAFileThatWasRemovedAndMadeAnew) {
    put(patientFile, 1, 1, 10);
    put(drugFile, 1, 1, 20);
    write(patientFile, 2, at(3, 1));
    fs::remove(folder() / drugFile);
    write(patientFile, 3, at(3, 2));
    write(drugFile, 1, at(3, 3));
    write(drugFile, 2, at(3, 4));
    EXPECT_EQ(noted(), hasAttributes() ? "patientFileForKPX\nDrugFileForKPX\n" : "none");
    const std::vector<std::string> known = {"3/3: 0 3 1"};
    EXPECT_EQ(offered(at(3, 4)), hasAttributes()
                                     ? known
                                     : (std::vector<std::string>{known[0], "2/3: 0 3 0", "1/3: 0 2 0", "10/1: 0 1 0"}));
}

TEST_F(NotedBeginnings, AreFoundOfAFileThatWasCopiedThere) {
    write(patientFile, 1, at(3, 1));
    put(drugFile, 1, 3, 2);
    write(patientFile, 2, at(3, 3));
    EXPECT_EQ(noted(), hasAttributes() ? "patientFileForKPX.20240301T090000Z\nDrugFileForKPX\n" : "none");
}

TEST_F(NotedBeginnings, AreNoneThatADamagedNoteTells) {
    put(patientFile, 1, 1, 10);
    put(drugFile, 1, 2, 10);
    write(drugFile, 2, at(3, 5));
    const std::vector<std::string> guessed = {"10/2: 0 1 1", "10/1: 0 1 0"};
    for (const std::string& text : {std::string("\xff\0rubbish", 9), std::string(2000, 'x'), std::string("\n")}) {
        EXPECT_EQ(note(text), hasAttributes());
        EXPECT_EQ(offered(at(3, 5)), guessed);
        write(drugFile, 3, at(3, 5));
        write(drugFile, 2, at(3, 5));
        EXPECT_EQ(noted(), hasAttributes() ? text : "none") << "it is left as it is";
    }
    // The folder was copied without its attributes.
    ::removexattr(earlier().c_str(), attribute);
    EXPECT_EQ(offered(at(3, 5)), guessed);
    write(drugFile, 1, at(3, 5));
    EXPECT_EQ(noted(), "none");
}

TEST_F(NotedBeginnings, StopNoWriteWhereTheyCannotBeNoted) {
    write(patientFile, 1, at(3, 1));
    fs::remove(earlier());
    writeFile(earlier(), "no folder");
    write(drugFile, 1, at(3, 2));
    EXPECT_EQ(readFile(folder() / drugFile), listOf(1));
    EXPECT_EQ(noted(), "none") << "a file of somebody else is not written on";
}

}  // namespace
}  // namespace kpx::test
