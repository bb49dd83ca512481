#include "earlier/OfferedStates.h"

#include "earlier/Retention.h"
#include "region/DateUtilities.h"

#include <algorithm>
#include <set>

namespace kpx {
namespace {

using Contents = decltype(EarlierState::contents);

/// All contents in force at the end of that second; null when one of them is not kept.
std::optional<Contents> contentsAt(const HouseholdContents& contents, const std::optional<Beginnings>& beginnings,
                                   std::int64_t instant) {
    Contents found;
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        const ContentAt content = contentAt(contents[file], instant);
        if (!content.isKnown ||
            (!content.content && beginnings && !beginnings->wasMissing(file, contents[file], instant))) {
            return std::nullopt;
        }
        if (content.content) {
            found[file] = *content.content;
        }
    }
    return found;
}

/// Without a note of the beginnings: whether a file without a known content at the instant had none. At a kept instant
/// its content would have been kept. At any other one an earlier content of the same day may have been removed since;
/// the end of that day is a kept instant.
bool missingFilesWereMissing(const HouseholdContents& contents, const Contents& found, std::int64_t instant,
                             const Environment& environment) {
    const Date end = dateByAddingDays(
        cleanseDate(Date::fromSecondsSince1970(static_cast<double>(instant)), environment), 1, 0, 0, environment);
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        if (!found[file] && !contents[file].empty() &&
            static_cast<double>(contents[file].front().since) < end.secondsSince1970()) {
            return false;
        }
    }
    return true;
}

class States {
public:
    explicit States(const HouseholdContents& contents) {
        for (std::size_t file = 0; file < householdFileCount; ++file) {
            const auto present = std::ranges::find(contents[file], true, &FileContent::isPresent);
            if (present != contents[file].end()) {
                m_present[file] = *present;
            }
        }
    }

    void add(const std::optional<Contents>& contents) {
        const auto isThere = [&](const EarlierState& state) { return state.contents == *contents; };
        if (!contents || *contents == m_present || std::ranges::any_of(m_states, isThere)) {
            return;
        }
        EarlierState state{INT64_MIN, *contents};
        for (const auto& content : *contents) {
            state.when = content ? std::max(state.when, content->since) : state.when;
        }
        m_states.push_back(state);
    }

    std::vector<EarlierState> newestFirst() && {
        std::ranges::sort(m_states, [](const EarlierState& left, const EarlierState& right) {
            return left.when != right.when ? left.when > right.when : isLater(left.contents, right.contents);
        });
        return std::move(m_states);
    }

private:
    /// Of two states of one second, by their contents' numbers.
    static bool isLater(const Contents& left, const Contents& right) {
        for (std::size_t file = 0; file < householdFileCount; ++file) {
            if (left[file] != right[file]) {
                return left[file] && (!right[file] || left[file]->order() > right[file]->order());
            }
        }
        return false;
    }

    Contents m_present;
    std::vector<EarlierState> m_states;
};

}  // namespace

std::vector<EarlierState> offeredStates(const HouseholdContents& contents, const std::optional<Beginnings>& beginnings,
                                        const Environment& environment) {
    const std::set<std::int64_t> instants = keptInstants(contents, environment);
    States states(contents);
    for (const std::int64_t instant : instants) {
        states.add(contentsAt(contents, beginnings, instant));
    }
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        for (const FileContent& deletion : keptDeletions(contents[file], environment)) {
            const std::int64_t instant = endOf(deletion, contents[file]);
            HouseholdContents before = contents;
            before[file] = {deletion};
            before[file].front().until.reset();
            auto found = contentsAt(before, beginnings, instant);
            if (found && !beginnings && !instants.contains(instant) &&
                !missingFilesWereMissing(before, *found, instant, environment)) {
                found.reset();
            }
            states.add(found);
        }
    }
    return std::move(states).newestFirst();
}

}  // namespace kpx
