#include "reminders/Tries.h"

#include <gtest/gtest.h>

#include <vector>

namespace kpx {
namespace {

using namespace std::chrono_literals;

LocalTime at(unsigned day, std::chrono::seconds timeOfDay) {
    return {std::chrono::local_days(2026y / std::chrono::November / std::chrono::day(day)), timeOfDay};
}

TEST(Tries, ComeAfterOneTwoFiveTenAndThenEveryFifteenMinutes) {
    std::optional<Tries> tries;
    EXPECT_EQ(timeToNextTry(tries, at(21, 8h), 0s), 0s);
    std::chrono::seconds elapsed = 1000s;
    for (const auto pause : {1min, 2min, 5min, 10min, 15min, 15min, 15min}) {
        tries = afterFailure(tries, Failure::Refused, at(21, 8h), elapsed);
        EXPECT_EQ(timeToNextTry(tries, at(21, 8h), elapsed), pause);
        EXPECT_EQ(timeToNextTry(tries, at(21, 8h), elapsed + pause), 0s);
        elapsed += pause + 3s;  // the next one takes until then
    }
}

TEST(Tries, EndWithTheDay) {
    struct Row {
        const char* what;
        LocalTime tried;
        LocalTime now;
        std::optional<std::chrono::seconds> next;
    };
    const std::vector<Row> rows = {
        {"a minute later", at(21, 8h), at(21, 8h + 1min), 0s},
        {"the day's last second", at(21, 23h + 58min), at(21, 23h + 59min + 59s), 0s},
        {"midnight", at(21, 23h + 59min), at(22, 0h), std::nullopt},
        {"the morning after", at(21, 23h + 59min), at(22, 7h + 59min), std::nullopt},
        {"the next eight o'clock", at(21, 23h + 59min), at(22, 8h), 0s},
        {"yesterday's, made up for early in the morning", at(22, 6h), at(22, 6h + 1min), 0s},
        {"and then today's", at(22, 7h + 59min + 30s), at(22, 8h), 0s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Tries tries = afterFailure(std::nullopt, Failure::Refused, row.tried, 0s);
        EXPECT_EQ(timeToNextTry(tries, row.now, 60s), row.next);
    }
}

TEST(Tries, ANewDayCountsAnew) {
    Tries tries = afterFailure(std::nullopt, Failure::NoServer, at(21, 8h), 0s);
    tries = afterFailure(tries, Failure::NoServer, at(21, 8h), 60s);
    EXPECT_EQ(tries.count, 2);
    tries = afterFailure(tries, Failure::NoServer, at(22, 8h), 90s);
    EXPECT_EQ(tries.count, 1);
    EXPECT_EQ(tries.withoutServer, 1);
}

TEST(Tries, OnlyThoseInARowFoundNoServerAtAll) {
    std::optional<Tries> tries;
    for (const auto& [failure, withoutServer] :
         {std::pair{Failure::NoServer, 1}, {Failure::NoServer, 2}, {Failure::Refused, 0}, {Failure::NoServer, 1}}) {
        tries = afterFailure(tries, failure, at(21, 8h), 0s);
        EXPECT_EQ(tries->withoutServer, withoutServer);
    }
}

}  // namespace
}  // namespace kpx
