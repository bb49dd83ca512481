#include "core/Sorting.h"

#include "core/StoredWords.h"
#include "values/FieldFinder.h"
#include "values/Reordering.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <type_traits>

namespace kpx {

namespace {

/// Kinds in the order in which they stand when a foreign file mixes them under one key.
enum class Kind { Missing, Number, Date, Text, Other };
constexpr std::size_t kindCount = 5;

struct Classified {
    Kind kind = Kind::Missing;
    long double number = 0;  ///< of a number or date; wide enough for every integer and double alike
    std::string_view text;
};

long double orderable(double number) {
    // What is no number compares with nothing; it goes before all numbers.
    return std::isnan(number) ? -std::numeric_limits<long double>::infinity() : static_cast<long double>(number);
}

Classified classify(const Value* value) {
    if (!value) {
        return {};
    }
    return std::visit(
        [](const auto& content) -> Classified {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, Text>) {
                return {Kind::Text, 0, content.view()};
            } else if constexpr (std::is_same_v<Content, Date>) {
                return {Kind::Date, orderable(content.secondsSinceReference), {}};
            } else if constexpr (std::is_same_v<Content, double>) {
                return {Kind::Number, orderable(content), {}};
            } else if constexpr (std::is_integral_v<Content>) {
                return {Kind::Number, static_cast<long double>(content), {}};
            } else {
                return {Kind::Other, 0, {}};
            }
        },
        value->variant());
}

/// What is shown of the words that may stand under the key.
std::map<std::string_view, std::string> shownWords(std::string_view key, const LocalizedStrings& localized) {
    std::map<std::string_view, std::string> shown;
    for (const std::string& word : storedWords(key)) {
        shown.emplace(word, localized(word));
    }
    return shown;
}

std::vector<std::size_t> ranksOfNumbers(const std::vector<long double>& numbers) {
    std::vector<long double> distinct = numbers;
    std::ranges::sort(distinct);
    distinct.erase(std::ranges::unique(distinct).begin(), distinct.end());
    std::vector<std::size_t> ranks;
    ranks.reserve(numbers.size());
    for (const long double number : numbers) {
        ranks.push_back(static_cast<std::size_t>(std::ranges::lower_bound(distinct, number) - distinct.begin()));
    }
    return ranks;
}

/// For every record its place on one level, from 0 without gaps between the kinds; less than the number
/// of records, as equal values share a place.
std::vector<std::size_t> ranksOnLevel(const Records& records, const SortDescriptor& descriptor,
                                      const Environment& environment, const LocalizedStrings& localized) {
    std::vector<Kind> kinds;
    kinds.reserve(records.size());
    std::vector<long double> numbers;
    std::vector<long double> dates;
    std::vector<std::string_view> texts;
    const auto words = shownWords(descriptor.key, localized);
    const FieldFinder sortField(descriptor.key);
    for (const Record& record : records) {
        const Classified value = classify(sortField.in(record));
        kinds.push_back(value.kind);
        if (value.kind == Kind::Text) {
            const auto word = words.find(value.text);
            texts.push_back(word == words.end() ? value.text : word->second);
        } else if (value.kind == Kind::Number) {
            numbers.push_back(value.number);
        } else if (value.kind == Kind::Date) {
            dates.push_back(value.number);
        }
    }
    const std::size_t others = static_cast<std::size_t>(std::ranges::count(kinds, Kind::Other));
    const std::size_t missing = static_cast<std::size_t>(std::ranges::count(kinds, Kind::Missing));
    std::vector<std::size_t> ranksOfKind[kindCount] = {
        std::vector<std::size_t>(missing, 0), ranksOfNumbers(numbers), ranksOfNumbers(dates),
        ranksOfTexts(texts, descriptor.comparison, environment), std::vector<std::size_t>(others, 0)};
    std::size_t places = 0;
    for (std::vector<std::size_t>& ranks : ranksOfKind) {
        const std::size_t first = places;
        for (std::size_t& rank : ranks) {
            rank += first;
            places = std::max(places, rank + 1);
        }
    }
    std::size_t next[kindCount] = {};
    std::vector<std::size_t> result;
    result.reserve(records.size());
    for (const Kind kind : kinds) {
        const auto index = static_cast<std::size_t>(kind);
        const std::size_t rank = ranksOfKind[index][next[index]++];
        result.push_back(descriptor.ascending ? rank : places - 1 - rank);
    }
    return result;
}

/// Reorders the indices by their ranks, keeping the order of equal ones, by counting.
std::vector<std::size_t> sortedByRanks(const std::vector<std::size_t>& order, const std::vector<std::size_t>& ranks) {
    std::vector<std::size_t> begins(order.size() + 1, 0);
    for (const std::size_t rank : ranks) {
        ++begins[rank + 1];
    }
    std::partial_sum(begins.begin(), begins.end(), begins.begin());
    std::vector<std::size_t> sorted(order.size());
    for (const std::size_t index : order) {
        sorted[begins[ranks[index]]++] = index;
    }
    return sorted;
}

}  // namespace

std::vector<std::size_t> sortedOrder(const Records& records, const std::vector<SortDescriptor>& descriptors,
                                     const Environment& environment, const LocalizedStrings& localized) {
    std::vector<std::size_t> order(records.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    // From the last level to the first, each sort keeping what the later levels have settled.
    for (auto descriptor = descriptors.rbegin(); descriptor != descriptors.rend(); ++descriptor) {
        order = sortedByRanks(order, ranksOnLevel(records, *descriptor, environment, localized));
    }
    return order;
}

void sortByDescriptors(Records& records, const std::vector<SortDescriptor>& descriptors,
                       const Environment& environment) {
    reorder(records, sortedOrder(records, descriptors, environment));
}

Records& doSortWithArray(Records& records, const SortDescriptor& first, const SortDescriptor& second,
                         const SortDescriptor& third, const Environment& environment) {
    std::vector<SortDescriptor> levels;
    for (const SortDescriptor& level : {first, second, third}) {
        if (!level.key.empty()) {
            levels.push_back(level);
        }
    }
    sortByDescriptors(records, levels, environment);
    return records;
}

}  // namespace kpx
