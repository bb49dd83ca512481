#include "earlier/Difference.h"

#include "values/RecordHash.h"

#include <algorithm>
#include <utility>

namespace kpx {
namespace {

/// The identifying values in one text, each with its length in front, so that no two run into one another.
std::string identityOf(const HouseholdFile& file, const Record& record) {
    std::string identity;
    for (const std::string_view key : file.pairedBy) {
        const auto title = textOfValue(record.find(key));
        identity += title ? std::to_string(title->view().size()) + ':' + title->string() : std::string("-");
    }
    return identity;
}

/// How many records of one identity have no equal on the other side.
struct Unequal {
    std::size_t present = 0;
    std::size_t earlier = 0;
};

void append(std::string& text, const std::string& part, const LocalizedStrings& localized) {
    text = text.empty() ? part : formatted(localized("%1$@, %2$@"), {text, part});
}

void appendCount(std::string& text, const char* sign, std::size_t count, const HouseholdFile& file,
                 const LocalizedStrings& localized) {
    if (count > 0) {
        append(text, formatted(localized(count == 1 ? file.one : file.several), {sign + std::to_string(count)}),
               localized);
    }
}

}  // namespace

PresentRecords::PresentRecords(const HouseholdFile& file, Records records) : m_file(&file), m_count(records.size()) {
    for (Record& record : records) {
        const std::size_t hash = hashOf(record);
        const std::size_t place = placeOf(record, hash);
        if (place == m_equals.size()) {
            m_equals.push_back({std::move(record), 0});
            m_placesByHash.emplace(hash, place);
        }
        ++m_equals[place].count;
    }
}

std::size_t PresentRecords::placeOf(const Record& record, std::size_t hash) const {
    const auto [begin, end] = m_placesByHash.equal_range(hash);
    const auto found =
        std::find_if(begin, end, [&](const auto& candidate) { return m_equals[candidate.second].record == record; });
    return found == end ? m_equals.size() : found->second;
}

FileDifference PresentRecords::differenceTo(const Records& earlier) const {
    std::unordered_map<std::string, Unequal> byIdentity;
    std::vector<std::size_t> paired(m_equals.size());
    std::size_t likely = 0;  // most records stand in the same order: no hash is needed then
    for (const Record& record : earlier) {
        const bool isLikely = likely < m_equals.size() && m_equals[likely].record == record;
        const std::size_t place = isLikely ? likely : placeOf(record, hashOf(record));
        likely = place + 1;
        if (place < m_equals.size() && paired[place] < m_equals[place].count) {
            ++paired[place];
        } else {
            ++byIdentity[identityOf(*m_file, record)].earlier;
        }
    }
    for (std::size_t place = 0; place < m_equals.size(); ++place) {
        if (const std::size_t left = m_equals[place].count - paired[place]; left > 0) {
            byIdentity[identityOf(*m_file, m_equals[place].record)].present += left;
        }
    }
    FileDifference difference;
    for (const auto& [identity, unequal] : byIdentity) {
        const std::size_t pairs = std::min(unequal.present, unequal.earlier);
        difference.changed += pairs;
        difference.added += unequal.earlier - pairs;
        difference.removed += unequal.present - pairs;
    }
    return difference;
}

std::string differenceText(const std::array<FileDifference, householdFileCount>& differences,
                           const LocalizedStrings& localized) {
    std::string text;
    std::size_t changed = 0;
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        appendCount(text, "+", differences[file].added, householdFiles()[file], localized);
        appendCount(text, "\u2212", differences[file].removed, householdFiles()[file], localized);
        changed += differences[file].changed;
    }
    if (changed > 0) {
        append(text, formatted(localized("%@ changed"), {std::to_string(changed)}), localized);
    }
    return text;
}

}  // namespace kpx
