#include "core/PopUpTitles.h"

#include "core/Predicate.h"
#include "values/FieldFinder.h"

#include <algorithm>
#include <unordered_set>

namespace kpx {

namespace {

std::string clause(const KeyValue& pair) { return std::string(pair.key) + " == \"" + std::string(pair.value) + "\""; }

}  // namespace

std::vector<std::string> copyUniqueKey(std::string_view key, const Records& records) {
    std::vector<std::string> titles;
    if (records.empty() || !records.front().contains(key)) {
        return titles;
    }
    std::vector<Text> distinct;
    std::unordered_set<std::string_view> seen;  // views into the distinct texts, which share their bytes
    const FieldFinder titleField(key);
    for (const Record& record : records) {
        std::optional<Text> title = textOfValue(titleField.in(record));
        if (title && seen.insert(title->view()).second) {
            distinct.push_back(*std::move(title));
        }
    }
    titles.reserve(distinct.size());
    std::ranges::transform(distinct, std::back_inserter(titles), &Text::string);
    return titles;
}

const Record* copyDictContainingTitle(std::string_view title, std::string_view key, const Records& records) {
    const FieldFinder titleField(key);
    const auto found = std::ranges::find_if(records, [&](const Record& record) {
        const Text* text = titleField.textIn(record);
        return text && text->view() == title;
    });
    return found == records.end() ? nullptr : &*found;
}

Record copyFindDictInArray(const Records& records, KeyValue first, KeyValue second, KeyValue third, KeyValue fourth) {
    std::string format;
    for (const KeyValue& pair : {first, second, third, fourth}) {
        if (pair.value.find('"') != std::string_view::npos) {
            return {};  // a value made up as further clauses must not parse either
        }
        format += (format.empty() ? "" : " AND ") + clause(pair);
    }
    const std::optional<Predicate> predicate = Predicate::withFormat(format);
    if (!predicate) {
        return {};
    }
    const auto found = std::ranges::find_if(records, [&](const Record& record) { return predicate->matches(record); });
    return found == records.end() ? Record() : *found;
}

}  // namespace kpx
