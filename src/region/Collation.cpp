#include "region/Collation.h"

#include "region/RegionServices.h"
#include "values/Reordering.h"

#include <absl/container/flat_hash_map.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace kpx {

namespace {

const icu::Collator& collatorFor(Comparison comparison, const Environment& environment) {
    RegionServices& services = environment.region.services();
    return comparison == Comparison::LocalizedStandard ? services.standardCollator()
                                                       : services.caseInsensitiveCollator();
}

/// Bytes whose plain order is the order asked for. `room` may be used for the next key again.
std::string sortKey(std::string_view text, Comparison comparison, const Environment& environment,
                    std::vector<std::uint8_t>& room) {
    if (comparison == Comparison::Plain) {
        return std::string(text);
    }
    const icu::Collator& collator = collatorFor(comparison, environment);
    const icu::UnicodeString wide = unicodeFromUtf8(text);
    const auto fill = [&] {
        return static_cast<std::size_t>(collator.getSortKey(wide, room.data(), static_cast<std::int32_t>(room.size())));
    };
    const std::size_t needed = fill();
    if (needed > room.size()) {
        room.resize(needed);
        fill();
    }
    std::string key(room.begin(), room.begin() + static_cast<std::ptrdiff_t>(needed));
    if (comparison == Comparison::LocalizedStandard) {
        key += text;  // behind the collator's key, which ends with a zero, the text decides ties
    }
    return key;
}

}  // namespace

std::strong_ordering compareTexts(std::string_view left, std::string_view right, Comparison comparison,
                                  const Environment& environment) {
    if (comparison == Comparison::Plain) {
        return left <=> right;
    }
    UErrorCode status = U_ZERO_ERROR;
    const auto piece = [](std::string_view text) {
        return icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size()));
    };
    const UCollationResult result = collatorFor(comparison, environment).compareUTF8(piece(left), piece(right), status);
    requireSuccess(status, "comparison");
    if (result != UCOL_EQUAL) {
        return static_cast<int>(result) <=> 0;
    }
    return comparison == Comparison::LocalizedStandard ? left <=> right : std::strong_ordering::equal;
}

std::vector<std::size_t> ranksOfTexts(const std::vector<std::string_view>& texts, Comparison comparison,
                                      const Environment& environment) {
    // Names repeat: making a key takes far longer than finding out that the text has one already.
    absl::flat_hash_map<std::string_view, std::size_t> places;
    std::vector<std::string> keys;
    std::vector<std::uint8_t> room(256);
    std::vector<std::size_t> ranks;
    ranks.reserve(texts.size());
    for (const std::string_view text : texts) {
        const auto [place, isNew] = places.try_emplace(text, keys.size());
        if (isNew) {
            keys.push_back(sortKey(text, comparison, environment, room));
        }
        ranks.push_back(place->second);
    }
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t place) -> const std::string& { return keys[place]; });
    std::vector<std::size_t> rankOfPlace(keys.size());
    std::size_t rank = 0;
    for (std::size_t position = 0; position < order.size(); ++position) {
        if (position > 0 && keys[order[position - 1]] != keys[order[position]]) {
            ++rank;
        }
        rankOfPlace[order[position]] = rank;
    }
    std::ranges::transform(ranks, ranks.begin(), [&](std::size_t place) { return rankOfPlace[place]; });
    return ranks;
}

void sortArray(std::vector<std::string>& titles, const Environment& environment) {
    const std::vector<std::size_t> ranks =
        ranksOfTexts({titles.begin(), titles.end()}, Comparison::LocalizedStandard, environment);
    std::vector<std::size_t> order(titles.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t index) { return ranks[index]; });
    reorder(titles, order);
}

void sortNumberArray(std::vector<double>& numbers) {
    // The total order: a value that is no number has its place too.
    std::ranges::sort(numbers, [](double left, double right) { return std::strong_order(left, right) < 0; });
}

}  // namespace kpx
