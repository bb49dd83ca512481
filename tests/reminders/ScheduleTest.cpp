#include "reminders/Schedule.h"

#include <gtest/gtest.h>

#include <vector>

namespace kpx {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;

LocalDay day(unsigned number) { return local_days(2026y / std::chrono::November / std::chrono::day(number)); }

std::optional<LocalDay> delivered(unsigned number) { return number == 0 ? std::nullopt : std::optional(day(number)); }

TEST(Schedule, IsDueFromEightOnceForEachDay) {
    struct Row {
        const char* what;
        unsigned firstDay;
        unsigned deliveredDay;  // 0: never
        unsigned today;
        std::chrono::seconds timeOfDay;
        bool isDue;
    };
    const std::vector<Row> rows = {
        {"a second before", 21, 0, 21, 7h + 59min + 59s, false},
        {"at eight", 21, 0, 21, 8h, true},
        {"delivered already", 21, 21, 21, 8h, false},
        {"still delivered at the day's end", 21, 21, 21, 23h + 59min + 59s, false},
        {"not again before eight of the next day", 21, 21, 22, 7h + 59min + 59s, false},
        {"again at eight of the next day", 21, 21, 22, 8h, true},
        {"a day that is to come", 25, 0, 21, 12h, false},
        {"missed while the machine was off", 18, 0, 21, 12h, true},
        {"missed yesterday, and it is early in the morning", 20, 0, 21, 6h, true},
        {"yesterday's missed one delivered early in the morning", 20, 20, 21, 6h, false},
        {"and then today's", 20, 20, 21, 8h, true},
        {"delivered, then flown west across the day line", 21, 21, 20, 22h, false},
        {"and its own eight o'clock there", 21, 21, 21, 8h, false},
        {"the day after", 21, 21, 22, 8h, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Reminder reminder{
            .identifier = "a", .firstDay = day(row.firstDay), .deliveredDay = delivered(row.deliveredDay)};
        EXPECT_EQ(isDue(reminder, {day(row.today), row.timeOfDay}), row.isDue);
    }
}

TEST(Schedule, WhatComesEarlyIsThatDaysShowing) {
    const Reminder usual{.identifier = "a", .firstDay = day(20), .deliveredDay = std::nullopt};
    EXPECT_EQ(dayDeliveredNow(usual, {day(21), 8h}), day(21));
    EXPECT_EQ(dayDeliveredNow(usual, {day(21), 6h}), day(21));
    const Reminder standing = newStandingReminder({day(19), 9h});
    EXPECT_EQ(standing.firstDay, day(20));
    EXPECT_EQ(newStandingReminder({day(19), 7h}).firstDay, day(19));
    EXPECT_EQ(dayDeliveredNow(standing, {day(21), 8h}), day(21));
    EXPECT_EQ(dayDeliveredNow(standing, {day(21), 6h}), day(20));
}

TEST(Schedule, WakesAtTheNextEightThatHasAnythingToDo) {
    struct Entry {
        unsigned firstDay;
        unsigned deliveredDay;
    };
    struct Row {
        const char* what;
        std::vector<Entry> entries;
        unsigned today;
        std::chrono::seconds timeOfDay;
        unsigned next;  // 0: none
    };
    const std::vector<Row> rows = {
        {"nothing scheduled", {}, 21, 12h, 0},
        {"today, before eight", {{21, 0}}, 21, 7h, 21},
        {"delivered today", {{21, 21}}, 21, 8h, 22},
        {"due and not to be posted now, it waits for the next day", {{21, 0}}, 21, 8h, 22},
        {"far away", {{28, 0}}, 21, 12h, 28},
        {"the earliest counts", {{28, 0}, {21, 21}, {25, 0}}, 21, 12h, 22},
        {"before eight with yesterday's delivered", {{19, 20}}, 21, 7h, 21},
        {"delivered for tomorrow by a clock that was wrong", {{19, 22}}, 21, 12h, 23},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<Reminder> reminders;
        for (const Entry& entry : row.entries) {
            reminders.push_back(
                {.identifier = "a", .firstDay = day(entry.firstDay), .deliveredDay = delivered(entry.deliveredDay)});
        }
        EXPECT_EQ(nextDueDay(reminders, {day(row.today), row.timeOfDay}), delivered(row.next));
    }
}

TEST(Schedule, AClockPutRightSilencesNoReminder) {
    struct Row {
        const char* what;
        unsigned deliveredDay;
        std::chrono::seconds timeOfDay;
        unsigned sane;
    };
    const std::vector<Row> rows = {
        {"today", 21, 12h, 21},
        {"tomorrow, after a journey", 22, 12h, 22},
        {"after tomorrow", 23, 12h, 21},
        {"after tomorrow, put right before eight", 23, 7h, 20},
        {"never", 0, 12h, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Reminder reminder{.identifier = "a", .firstDay = day(19), .deliveredDay = delivered(row.deliveredDay)};
        EXPECT_EQ(withSaneDeliveredDay(reminder, {day(21), row.timeOfDay}).deliveredDay, delivered(row.sane));
    }
}

TEST(Schedule, ReadsDaysBack) {
    const std::vector<std::string_view> days = {"2026-11-21", "2024-02-29", "0001-01-01", "9999-12-31"};
    for (const auto text : days) {
        SCOPED_TRACE(text);
        const auto read = dayFromText(text);
        ASSERT_TRUE(read);
        EXPECT_EQ(textFromDay(*read), text);
    }
    const std::vector<std::string_view> none = {"",         "2026-11-31",  "2026-13-01", "2026-02-29",
                                                "2026-1-1", "2026-11-21 ", "2026/11/21", "-026-11-21",
                                                "20261121", "2026-+1-21"};
    for (const auto text : none) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(dayFromText(text));
    }
}

TEST(Schedule, TheNameOfTheFileIsTheReminder) {
    struct Row {
        std::string_view name;
        Reminder reminder;
    };
    const std::vector<Row> rows = {
        {"a1.2026-11-21.never.waiting", {"a1", day(21), std::nullopt, Phase::Waiting, 0}},
        {"a1.2026-11-21.2026-11-22.waiting", {"a1", day(21), day(22), Phase::Waiting, 0}},
        {"a1.2026-11-21.2026-11-22.posting", {"a1", day(21), day(22), Phase::Posting, 0}},
        {"a1.2026-11-21.2026-11-22.clicked", {"a1", day(21), day(22), Phase::Clicked, 0}},
        {"a1.2026-11-21.2026-11-22.withdrawn-7", {"a1", day(21), day(22), Phase::Withdrawn, 7}},
        {"a1.2026-11-21.2026-11-22.4294967295", {"a1", day(21), day(22), Phase::Shown, 4294967295U}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(fileNameFromReminder(row.reminder), row.name);
        EXPECT_EQ(reminderFromFileName(row.name), row.reminder);
    }
    const std::vector<std::string_view> none = {
        "",
        "lock",
        "server",
        ".2026-11-21.never.waiting",
        "a1.2026-11-21.never",
        "a1.2026-11-21.never.",
        "a1.2026-11-21.sometime.waiting",
        "a1.2026-11-99.never.waiting",
        "a1.2026-11-21.never.waiting.damaged",
        "a1.2026-11-21.2026-11-22.0",
        "a1.2026-11-21.2026-11-22.4294967296",
        "a1.2026-11-21.2026-11-22.-1",
        "a1.2026-11-21.2026-11-22.withdrawn",
        "a1.2026-11-21.2026-11-22.withdrawn-0",
        ".a1.2026-11-21.never.waiting.0123456789abcdef.tmp",
    };
    for (const auto name : none) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(reminderFromFileName(name));
    }
}

}  // namespace
}  // namespace kpx
