#include "core/PopUpTitles.h"

#include "core/FieldFinder.h"
#include "core/Predicate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_set>

namespace kpx {

namespace {

template <typename Number>
std::string plainNumber(Number number) {
    std::array<char, 32> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string clause(const KeyValue& pair) { return std::string(pair.key) + " == \"" + std::string(pair.value) + "\""; }

}  // namespace

std::optional<Text> titleOfValue(const Value& value) {
    if (const auto* text = value.as<Text>()) {
        return *text;
    }
    if (const auto* number = value.as<std::int64_t>()) {
        return plainNumber(*number);
    }
    if (const auto* number = value.as<std::uint64_t>()) {
        return plainNumber(*number);
    }
    if (const auto* number = value.as<double>()) {
        return plainNumber(*number);
    }
    if (const auto* truth = value.as<bool>()) {
        return plainNumber(*truth ? 1 : 0);
    }
    return std::nullopt;
}

std::vector<std::string> copyUniqueKey(std::string_view key, const Records& records) {
    std::vector<std::string> titles;
    if (records.empty() || !records.front().contains(key)) {
        return titles;
    }
    std::vector<Text> distinct;
    std::unordered_set<std::string_view> seen;  // views into the distinct texts, which share their bytes
    const FieldFinder titleField(key);
    for (const Record& record : records) {
        const Value* value = titleField.in(record);
        std::optional<Text> title = value ? titleOfValue(*value) : std::nullopt;
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
