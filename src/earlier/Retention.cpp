#include "earlier/Retention.h"

#include "region/DateUtilities.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace kpx {
namespace {

constexpr std::size_t mostInstants = 50;
constexpr std::size_t mostDeletions = 50;
constexpr double secondsOfDay = 86400;
constexpr int keptDays = 30;
constexpr int keptMonths = 24;

std::set<std::int64_t> instantsOf(const HouseholdContents& contents) {
    std::set<std::int64_t> instants;
    for (const auto& file : contents) {
        for (const FileContent& content : file) {
            instants.insert(content.since);
        }
    }
    return instants;
}

/// The ends of the days and months that have passed: the first moments after them.
std::vector<Date> passedEnds(const Environment& environment) {
    std::vector<Date> ends;
    ends.reserve(keptDays + keptMonths);
    const CalendarDay today = yearMonthDayFromDate(environment.now, environment);
    for (int days = 0; days < keptDays; ++days) {
        ends.push_back(dateFromYear(today.year, today.month, today.day - days, environment));
    }
    for (int months = 0; months < keptMonths; ++months) {
        ends.push_back(dateFromYear(today.year, today.month - months, 1, environment));
    }
    return ends;
}

/// As the rule has it at the environment's now, which none of them is later than.
std::set<std::int64_t> keptOf(const std::set<std::int64_t>& all, const Environment& environment) {
    std::set<std::int64_t> kept;
    const double dayAgo = environment.now.secondsSince1970() - secondsOfDay;
    for (auto instant = all.rbegin();
         instant != all.rend() && static_cast<double>(*instant) >= dayAgo && kept.size() < mostInstants; ++instant) {
        kept.insert(*instant);
    }
    for (const Date end : passedEnds(environment)) {
        const auto after = all.lower_bound(static_cast<std::int64_t>(std::ceil(end.secondsSince1970())));
        if (after != all.begin()) {
            kept.insert(*std::prev(after));
        }
    }
    return kept;
}

}  // namespace

std::set<std::int64_t> keptInstants(const HouseholdContents& contents, const Environment& environment) {
    const std::set<std::int64_t> all = instantsOf(contents);
    const auto future = all.upper_bound(static_cast<std::int64_t>(std::floor(environment.now.secondsSince1970())));
    std::set<std::int64_t> kept = keptOf({all.begin(), future}, environment);
    if (future != all.end()) {
        const auto latest = Date::fromSecondsSince1970(static_cast<double>(*all.rbegin()));
        kept.merge(keptOf(all, {latest, environment.region}));
    }
    return kept;
}

std::int64_t endOf(const FileContent& content, const std::vector<FileContent>& contents) {
    if (content.until) {
        return *content.until;
    }
    const auto next = std::ranges::upper_bound(contents, content.order(), {}, &FileContent::order);
    return next == contents.end() ? content.since : next->since;
}

std::vector<FileContent> keptDeletions(const std::vector<FileContent>& contents, const Environment& environment) {
    const double oldest = environment.now.secondsSince1970() - keptDays * secondsOfDay;
    std::vector<FileContent> kept;
    for (const FileContent& content : contents) {
        if (content.wasDeletedFrom && static_cast<double>(endOf(content, contents)) >= oldest) {
            kept.push_back(content);
        }
    }
    const std::size_t tooMany = kept.size() > mostDeletions ? kept.size() - mostDeletions : 0;
    kept.erase(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(tooMany));
    return kept;
}

ContentAt contentAt(const std::vector<FileContent>& contents, std::int64_t instant) {
    const auto after = std::ranges::upper_bound(contents, instant, {}, &FileContent::since);
    if (after == contents.begin()) {
        return {};
    }
    const FileContent& content = *std::prev(after);
    const bool wasReplaced = !content.isPresent && content.until && *content.until <= instant;
    return wasReplaced ? ContentAt{false, nullptr} : ContentAt{true, &content};
}

std::vector<FileContent> superfluousContents(const HouseholdContents& contents, const Environment& environment) {
    const std::set<std::int64_t> instants = keptInstants(contents, environment);
    std::vector<FileContent> superfluous;
    for (const auto& file : contents) {
        std::vector<FileContent> needed = keptDeletions(file, environment);
        for (const std::int64_t instant : instants) {
            if (const FileContent* content = contentAt(file, instant).content) {
                needed.push_back(*content);
            }
        }
        std::ranges::copy_if(file, std::back_inserter(superfluous), [&](const FileContent& content) {
            return !content.isPresent && std::ranges::find(needed, content) == needed.end();
        });
    }
    std::ranges::stable_sort(superfluous, {}, &FileContent::order);
    return superfluous;
}

}  // namespace kpx
