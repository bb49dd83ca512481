#include "earlier/Difference.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

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

/// Records of one identity that have not found their like yet.
struct Alike {
    std::vector<const Record*> present;
    std::vector<const Record*> earlier;
};

void removeEqualPairs(Alike& alike) {
    std::erase_if(alike.earlier, [&](const Record* record) {
        const auto equal =
            std::ranges::find_if(alike.present, [&](const Record* candidate) { return *candidate == *record; });
        const bool found = equal != alike.present.end();
        if (found) {
            alike.present.erase(equal);
        }
        return found;
    });
}

void append(std::string& text, const std::string& part) {
    if (!text.empty()) {
        text += ", ";
    }
    text += part;
}

void appendCount(std::string& text, const char* sign, std::size_t count, const HouseholdFile& file,
                 const LocalizedStrings& localized) {
    if (count > 0) {
        append(text, sign + formatted(localized(count == 1 ? file.one : file.several), {std::to_string(count)}));
    }
}

}  // namespace

FileDifference differenceOf(const HouseholdFile& file, const Records& present, const Records& earlier) {
    std::unordered_map<std::string, Alike> byIdentity;
    for (const Record& record : present) {
        byIdentity[identityOf(file, record)].present.push_back(&record);
    }
    for (const Record& record : earlier) {
        byIdentity[identityOf(file, record)].earlier.push_back(&record);
    }
    FileDifference difference;
    for (auto& [identity, alike] : byIdentity) {
        removeEqualPairs(alike);
        const std::size_t pairs = std::min(alike.present.size(), alike.earlier.size());
        difference.changed += pairs;
        difference.added += alike.earlier.size() - pairs;
        difference.removed += alike.present.size() - pairs;
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
        append(text, formatted(localized("%@ changed"), {std::to_string(changed)}));
    }
    return text;
}

}  // namespace kpx
