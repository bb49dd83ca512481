#include "core/Collation.h"

#include "core/RegionServices.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <unordered_map>

namespace kpx {

namespace {

const icu::Collator& collatorFor(Comparison comparison, const Environment& environment) {
    RegionServices& services = environment.region.services();
    return comparison == Comparison::LocalizedStandard ? services.standardCollator()
                                                       : services.caseInsensitiveCollator();
}

/// Bytes whose plain order is the order asked for. The first eight stand apart as a number: most
/// comparisons end there, without touching the rest.
struct SortKey {
    std::uint64_t prefix = 0;
    std::size_t offset = 0;
    std::size_t length = 0;
};

std::uint64_t prefixOfBytes(const std::uint8_t* bytes, std::size_t length) {
    std::uint64_t prefix = 0;
    for (std::size_t index = 0; index < sizeof prefix; ++index) {
        prefix = (prefix << 8U) | (index < length ? bytes[index] : 0U);
    }
    return prefix;
}

/// The keys of many texts, their bytes in one block.
class SortKeys {
public:
    SortKeys(const std::vector<std::string_view>& texts, Comparison comparison, const Environment& environment) {
        m_keys.reserve(texts.size());
        const icu::Collator* collator =
            comparison == Comparison::Plain ? nullptr : &collatorFor(comparison, environment);
        for (const std::string_view text : texts) {
            const std::size_t offset = m_bytes.size();
            if (collator) {
                appendCollationKey(text, *collator);
            } else {
                m_bytes.insert(m_bytes.end(), text.begin(), text.end());
            }
            const std::size_t length = m_bytes.size() - offset;
            m_keys.push_back({prefixOfBytes(m_bytes.data() + offset, length), offset, length});
        }
    }

    std::strong_ordering compare(std::size_t left, std::size_t right) const {
        const SortKey& leftKey = m_keys[left];
        const SortKey& rightKey = m_keys[right];
        if (leftKey.prefix != rightKey.prefix) {
            return leftKey.prefix <=> rightKey.prefix;
        }
        const std::size_t common = std::min(leftKey.length, rightKey.length);
        const int difference =
            common == 0 ? 0 : std::memcmp(m_bytes.data() + leftKey.offset, m_bytes.data() + rightKey.offset, common);
        return difference != 0 ? difference <=> 0 : leftKey.length <=> rightKey.length;
    }

private:
    void appendCollationKey(std::string_view text, const icu::Collator& collator) {
        const icu::UnicodeString wide = unicodeFromUtf8(text);
        const std::size_t offset = m_bytes.size();
        std::size_t room = 64 + 4 * static_cast<std::size_t>(wide.length());
        m_bytes.resize(offset + room);
        auto length = static_cast<std::size_t>(
            collator.getSortKey(wide, m_bytes.data() + offset, static_cast<std::int32_t>(room)));
        if (length > room) {
            room = length;
            m_bytes.resize(offset + room);
            length = static_cast<std::size_t>(
                collator.getSortKey(wide, m_bytes.data() + offset, static_cast<std::int32_t>(room)));
        }
        m_bytes.resize(offset + length);
    }

    std::vector<std::uint8_t> m_bytes;
    std::vector<SortKey> m_keys;
};

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
    std::vector<std::string_view> distinct;
    std::vector<std::size_t> places(texts.size());
    std::unordered_map<std::string_view, std::size_t> known;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const auto [entry, isNew] = known.try_emplace(texts[index], distinct.size());
        if (isNew) {
            distinct.push_back(texts[index]);
        }
        places[index] = entry->second;
    }
    const SortKeys keys(distinct, comparison, environment);
    const auto compare = [&](std::size_t left, std::size_t right) {
        const std::strong_ordering order = keys.compare(left, right);
        return order == 0 && comparison == Comparison::LocalizedStandard ? distinct[left] <=> distinct[right] : order;
    };
    std::vector<std::size_t> order(distinct.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&](std::size_t left, std::size_t right) { return compare(left, right) < 0; });
    std::vector<std::size_t> rankOfDistinct(distinct.size());
    std::size_t rank = 0;
    for (std::size_t position = 0; position < order.size(); ++position) {
        if (position > 0 && compare(order[position - 1], order[position]) != 0) {
            ++rank;
        }
        rankOfDistinct[order[position]] = rank;
    }
    for (std::size_t& place : places) {
        place = rankOfDistinct[place];
    }
    return places;
}

void sortArray(std::vector<std::string>& titles, const Environment& environment) {
    const std::vector<std::size_t> ranks =
        ranksOfTexts({titles.begin(), titles.end()}, Comparison::LocalizedStandard, environment);
    std::vector<std::size_t> order(titles.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t index) { return ranks[index]; });
    std::vector<std::string> sorted;
    sorted.reserve(titles.size());
    for (const std::size_t index : order) {
        sorted.push_back(std::move(titles[index]));
    }
    titles = std::move(sorted);
}

void sortNumberArray(std::vector<double>& numbers) {
    // The total order: a value that is no number has its place too.
    std::ranges::sort(numbers, [](double left, double right) { return std::strong_order(left, right) < 0; });
}

}  // namespace kpx
