#include "earlier/OfferedStates.h"
#include "earlier/Retention.h"
#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace kpx {
namespace {

constexpr std::size_t history = 0;
constexpr std::size_t drugs = 2;

// Noon of 5 March 2024.
const Environment noon = environmentFor("en_US");

std::int64_t at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return static_cast<std::int64_t>(universal(year, month, day, hour, minute, second).secondsSince1970());
}

/// Contents of one file that followed upon one another without a hole; the last one is present.
std::vector<FileContent> successive(std::size_t file, const std::vector<std::int64_t>& instants) {
    std::vector<FileContent> contents;
    for (const std::int64_t instant : instants) {
        FileContent content{.file = file, .since = instant};
        if (!contents.empty() && contents.back().since == instant) {
            content.number = contents.back().number + 1;
        } else if (!contents.empty()) {
            contents.back().until = instant;
        }
        contents.push_back(content);
    }
    contents.back().isPresent = true;
    contents.back().number = 1;
    return contents;
}

HouseholdContents historyOf(const std::vector<std::int64_t>& instants) {
    HouseholdContents contents;
    contents[history] = successive(history, instants);
    return contents;
}

std::vector<std::int64_t> instantsOf(const std::vector<FileContent>& contents) {
    std::vector<std::int64_t> instants;
    for (const FileContent& content : contents) {
        instants.push_back(content.since);
    }
    return instants;
}

std::vector<std::int64_t> whensOf(const std::vector<EarlierState>& states) {
    std::vector<std::int64_t> whens;
    for (const EarlierState& state : states) {
        whens.push_back(state.when);
    }
    return whens;
}

TEST(Retention, KeepsTheLatestOfADayAndTheEndsOfDaysAndMonths) {
    struct Row {
        const char* name;
        std::vector<std::int64_t> written;
        std::vector<std::int64_t> superfluous;
    };
    const std::vector<Row> rows = {
        {"within 24 hours, over midnight", {at(2024, 3, 4, 12), at(2024, 3, 4, 13), at(2024, 3, 5, 11)}, {}},
        {"before them, the day's last only",
         {at(2024, 3, 3, 9), at(2024, 3, 3, 10), at(2024, 3, 4, 10), at(2024, 3, 4, 11), at(2024, 3, 5, 11)},
         {at(2024, 3, 3, 9), at(2024, 3, 4, 10)}},
        {"a second too old",
         {at(2024, 3, 4, 11, 59, 59), at(2024, 3, 4, 12), at(2024, 3, 5, 11)},
         {at(2024, 3, 4, 11, 59, 59)}},
        {"an old one that was in force at the day's end", {at(2020, 1, 1), at(2024, 3, 4, 13)}, {}},
        {"the thirtieth day before today, and the one before it",
         {at(2024, 2, 3, 9), at(2024, 2, 4, 9), at(2024, 2, 5, 9), at(2024, 3, 5, 9)},
         {at(2024, 2, 3, 9)}},
        {"months further back",
         {at(2023, 11, 3), at(2023, 11, 30, 23), at(2023, 12, 31, 23, 59, 59), at(2024, 1, 1), at(2024, 1, 2),
          at(2024, 3, 5, 9)},
         {at(2023, 11, 3), at(2024, 1, 1)}},
        {"the twenty-fourth month, and the one before it",
         {at(2022, 2, 27), at(2022, 2, 28), at(2022, 3, 1), at(2022, 3, 31), at(2024, 3, 5, 9)},
         {at(2022, 2, 27), at(2022, 2, 28), at(2022, 3, 1)}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(instantsOf(superfluousContents(historyOf(row.written), noon)), row.superfluous);
    }
}

TEST(Retention, KeepsFiftyInstantsOfTheLastDayWhateverFileWasWritten) {
    HouseholdContents contents;
    std::vector<std::int64_t> ofHistory;
    std::vector<std::int64_t> ofDrugs;
    for (int minute = 0; minute < 60; ++minute) {
        (minute % 2 == 0 ? ofHistory : ofDrugs).push_back(at(2024, 3, 5, 10, minute));
    }
    contents[history] = successive(history, ofHistory);
    contents[drugs] = successive(drugs, ofDrugs);
    // The latest fifty begin at minute 10; what was in force then is older in one of the files.
    EXPECT_EQ(instantsOf(superfluousContents(contents, noon)),
              (std::vector<std::int64_t>{at(2024, 3, 5, 10, 0), at(2024, 3, 5, 10, 1), at(2024, 3, 5, 10, 2),
                                         at(2024, 3, 5, 10, 3), at(2024, 3, 5, 10, 4), at(2024, 3, 5, 10, 5),
                                         at(2024, 3, 5, 10, 6), at(2024, 3, 5, 10, 7), at(2024, 3, 5, 10, 8)}));
    EXPECT_EQ(offeredStates(contents, {}, noon).size(), 49U) << "the fiftieth is the present";
}

TEST(Retention, KeepsWhatADeleteReplacedForThirtyDays) {
    HouseholdContents contents =
        historyOf({at(2023, 12, 30), at(2024, 2, 4, 11), at(2024, 2, 4, 13), at(2024, 2, 4, 14), at(2024, 2, 10, 9),
                   at(2024, 2, 10, 10), at(2024, 3, 5, 9)});
    contents[history][1].wasDeletedFrom = true;  // replaced at 13:00 thirty days ago
    contents[history][0].wasDeletedFrom = true;  // at 11:00, an hour too early; but in force at two months' ends
    EXPECT_EQ(instantsOf(keptDeletions(contents[history], noon)), std::vector<std::int64_t>{at(2024, 2, 4, 11)});
    EXPECT_EQ(instantsOf(superfluousContents(contents, noon)),
              (std::vector<std::int64_t>{at(2024, 2, 4, 13), at(2024, 2, 10, 9)}));
}

TEST(Retention, KeepsFiftyDeletionsOfAFile) {
    std::vector<std::int64_t> instants;
    for (int minute = 0; minute < 59; ++minute) {
        instants.push_back(at(2024, 3, 1, 10, minute));
    }
    instants.push_back(at(2024, 3, 5, 11));
    HouseholdContents contents = historyOf(instants);
    for (std::size_t index = 0; index + 1 < contents[history].size(); ++index) {
        contents[history][index].wasDeletedFrom = true;
    }
    EXPECT_EQ(keptDeletions(contents[history], noon).size(), 50U);
    EXPECT_EQ(superfluousContents(contents, noon).size(), 9U);
    EXPECT_EQ(superfluousContents(contents, noon).back().since, at(2024, 3, 1, 10, 8));
}

TEST(Retention, LosesNothingToAWrongClock) {
    // A write an hour for sixty hours; then the clock falls back by a year, and something is written.
    std::vector<std::int64_t> instants;
    for (int hour = 0; hour < 60; ++hour) {
        instants.push_back(at(2025, 3, 1, hour));
    }
    HouseholdContents contents = historyOf(instants);
    const Environment then{Date::fromSecondsSince1970(static_cast<double>(instants.back())), noon.region};
    const auto lost = instantsOf(superfluousContents(contents, then));
    ASSERT_EQ(lost.size(), 34U) << "what is older than a day, but the end of the first";
    contents[history].back().isPresent = false;
    contents[history].insert(contents[history].begin(),
                             {.file = history, .since = at(2024, 3, 5, 11), .isPresent = true});
    EXPECT_EQ(instantsOf(superfluousContents(contents, noon)), lost);

    // A write of the future does not take the places of today's.
    contents = historyOf({at(2024, 3, 5, 9), at(2024, 3, 5, 10), at(2031, 1, 1)});
    contents[history].back().isPresent = false;
    contents[history].insert(contents[history].end() - 1,
                             {.file = history, .since = at(2024, 3, 5, 11), .isPresent = true});
    EXPECT_EQ(superfluousContents(contents, noon).size(), 0U);
}

TEST(Retention, GoesByLocalDays) {
    // In New York 04:30 of the fourth, universal time, is still the third.
    const Environment newYork = environmentFor("en_US", "America/New_York");
    const auto contents = historyOf({at(2024, 3, 4, 4, 30), at(2024, 3, 4, 5, 30), at(2024, 3, 5, 9)});
    EXPECT_EQ(superfluousContents(contents, newYork).size(), 0U);
    EXPECT_EQ(instantsOf(superfluousContents(contents, noon)), std::vector<std::int64_t>{at(2024, 3, 4, 4, 30)});
}

TEST(Retention, HoldsNoMoreThanAHundredAndSixtyOfAFile) {
    // Two years of a household that writes twice a day and deletes once, simulated from day to day.
    HouseholdContents contents;
    std::vector<FileContent>& file = contents[history];
    std::size_t most = 0;
    for (int write = 0; write < 2 * 730; ++write) {
        const std::int64_t instant = at(2022, 1, 1) + write * INT64_C(43200);
        if (!file.empty()) {
            file.back().isPresent = false;
            file.back().until = instant;
            file.back().wasDeletedFrom = write % 2 == 1;
        }
        file.push_back({.file = history, .since = instant, .isPresent = true});
        const Environment then{Date::fromSecondsSince1970(static_cast<double>(instant)), noon.region};
        const auto superfluous = superfluousContents(contents, then);
        std::erase_if(file, [&](const FileContent& content) {
            return std::ranges::find(superfluous, content) != superfluous.end();
        });
        most = std::max(most, file.size());
    }
    EXPECT_LE(most, 160U);
    EXPECT_GT(most, 60U) << "thirty days, two dozen months, thirty deletions";
}

TEST(OfferedStates, AreTheHouseholdAsItStood) {
    HouseholdContents contents = historyOf({at(2024, 3, 1, 9), at(2024, 3, 3, 9), at(2024, 3, 5, 9)});
    contents[drugs] = successive(drugs, {at(2024, 3, 2, 9), at(2024, 3, 5, 8)});
    const auto states = offeredStates(contents, {}, noon);
    ASSERT_EQ(whensOf(states),
              (std::vector<std::int64_t>{at(2024, 3, 5, 8), at(2024, 3, 3, 9), at(2024, 3, 2, 9), at(2024, 3, 1, 9)}));
    EXPECT_EQ(states[0].contents[history]->since, at(2024, 3, 3, 9));
    EXPECT_EQ(states[0].contents[drugs]->since, at(2024, 3, 5, 8));
    EXPECT_EQ(states[2].contents[history]->since, at(2024, 3, 1, 9));
    EXPECT_EQ(states[2].contents[drugs]->since, at(2024, 3, 2, 9));
    EXPECT_EQ(states[3].contents[drugs], std::nullopt) << "there were no drugs yet";
}

TEST(OfferedStates, AreOneForTheWritesOfASecondSaveBeforeADelete) {
    const std::int64_t second = at(2024, 3, 5, 9);
    HouseholdContents contents = historyOf({at(2024, 3, 5, 8), second, second, second});
    EXPECT_EQ(whensOf(offeredStates(contents, {}, noon)), std::vector<std::int64_t>{at(2024, 3, 5, 8)});
    contents[history][2].wasDeletedFrom = true;
    const auto states = offeredStates(contents, {}, noon);
    ASSERT_EQ(whensOf(states), (std::vector<std::int64_t>{second, at(2024, 3, 5, 8)}));
    EXPECT_EQ(states[0].contents[history]->number, 2);
}

TEST(OfferedStates, LeaveOutWhatIsNotKeptWhole) {
    // The history of 09:00 was replaced at 10:00 by a content that is gone.
    HouseholdContents contents = historyOf({at(2024, 3, 5, 9), at(2024, 3, 5, 11)});
    contents[history][0].until = at(2024, 3, 5, 10);
    contents[drugs] = successive(drugs, {at(2024, 3, 5, 8), at(2024, 3, 5, 10, 30), at(2024, 3, 5, 11, 30)});
    EXPECT_EQ(whensOf(offeredStates(contents, {}, noon)),
              (std::vector<std::int64_t>{at(2024, 3, 5, 11), at(2024, 3, 5, 9), at(2024, 3, 5, 8)}));
}

TEST(OfferedStates, HoldTheInstantBeforeADeleteOfAnEarlierDay) {
    struct Row {
        const char* name;
        std::vector<std::int64_t> drugsWritten;
        std::vector<std::int64_t> offered;
    };
    const std::int64_t added = at(2024, 3, 1, 9);
    const std::int64_t after = at(2024, 3, 1, 11);
    const std::vector<Row> rows = {
        {"the drugs as long before", {at(2024, 2, 1)}, {after, added, at(2024, 2, 1)}},
        {"no drugs at that time", {at(2024, 3, 3)}, {at(2024, 3, 3), after, added}},
        {"drugs first known later that day, perhaps not the first", {at(2024, 3, 1, 12)}, {at(2024, 3, 1, 12)}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        // Deleted at 10:00, added at 11:00; what the Delete left is no longer kept.
        HouseholdContents contents = historyOf({added, after, at(2024, 3, 5, 9)});
        contents[history][0].wasDeletedFrom = true;
        contents[history][0].until = at(2024, 3, 1, 10);
        contents[drugs] = successive(drugs, row.drugsWritten);
        EXPECT_EQ(whensOf(offeredStates(contents, {}, noon)), row.offered);
    }
}

TEST(OfferedStates, AreKnownWhole) {
    // Drugs are known from the third on, the history from the first.
    HouseholdContents contents = historyOf({at(2024, 3, 1, 9), at(2024, 3, 2, 9), at(2024, 3, 5, 9)});
    contents[history][1].wasDeletedFrom = true;
    contents[history][1].until = at(2024, 3, 2, 10);
    contents[drugs] = successive(drugs, {at(2024, 3, 3, 9)});
    const std::int64_t third = at(2024, 3, 3, 9);
    struct Row {
        const char* name;
        std::optional<std::int64_t> made;
        std::vector<std::int64_t> offered;
    };
    const std::vector<Row> rows = {
        {"they are older than that", std::nullopt, {}},
        {"the program made them", third, {at(2024, 3, 2, 9), at(2024, 3, 1, 9)}},
        {"it made them between the two, and their first content is kept no longer",
         at(2024, 3, 2, 8, 30),
         {at(2024, 3, 1, 9)}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Beginnings beginnings;
        if (row.made) {
            beginnings.noteMade(drugs, *row.made);
        }
        EXPECT_EQ(whensOf(offeredStates(contents, beginnings, noon)), row.offered);
    }
}

TEST(OfferedStates, AreNoneWhereNothingHasChanged) {
    EXPECT_TRUE(offeredStates({}, {}, noon).empty());
    EXPECT_TRUE(offeredStates(historyOf({at(2023, 3, 5, 9)}), {}, noon).empty());
}

}  // namespace
}  // namespace kpx
