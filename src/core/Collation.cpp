#include "core/Collation.h"

#include "core/RegionServices.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <numeric>

namespace kpx {

namespace {

const icu::Collator& collatorFor(Comparison comparison, const Environment& environment) {
    RegionServices& services = environment.region.services();
    return comparison == Comparison::LocalizedStandard ? services.standardCollator()
                                                       : services.caseInsensitiveCollator();
}

/// The texts without repetitions, and for every text its place among them.
class DistinctTexts {
public:
    explicit DistinctTexts(const std::vector<std::string_view>& texts) {
        std::size_t slots = 16;
        while (slots < 2 * texts.size()) {
            slots *= 2;
        }
        m_slots.assign(slots, empty);
        m_places.reserve(texts.size());
        for (const std::string_view text : texts) {
            m_places.push_back(placeOf(text));
        }
    }

    const std::vector<std::string_view>& texts() const { return m_texts; }
    const std::vector<std::size_t>& places() const { return m_places; }

private:
    static constexpr std::size_t empty = SIZE_MAX;

    // One flat table, at most half full: with an allocation for every text, finding out which are the
    // same would take as long as sorting them.
    std::size_t placeOf(std::string_view text) {
        const std::size_t mask = m_slots.size() - 1;
        const std::size_t hash = std::hash<std::string_view>()(text);
        for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
            if (m_slots[slot] == empty) {
                m_slots[slot] = m_texts.size();
                m_texts.push_back(text);
                m_hashes.push_back(hash);
                return m_slots[slot];
            }
            if (m_hashes[m_slots[slot]] == hash && m_texts[m_slots[slot]] == text) {
                return m_slots[slot];
            }
        }
    }

    std::vector<std::string_view> m_texts;
    std::vector<std::size_t> m_hashes;
    std::vector<std::size_t> m_places;
    std::vector<std::size_t> m_slots;
};

/// For each text bytes whose plain order is the order asked for, all in one block.
class SortKeys {
public:
    SortKeys(const std::vector<std::string_view>& texts, Comparison comparison, const Environment& environment) {
        const icu::Collator* collator =
            comparison == Comparison::Plain ? nullptr : &collatorFor(comparison, environment);
        m_begins.reserve(texts.size() + 1);
        m_begins.push_back(0);
        for (const std::string_view text : texts) {
            if (collator) {
                appendCollationKey(text, *collator);
            }
            if (comparison != Comparison::LocalizedCaseInsensitive) {
                // Behind a collation key, which ends with a zero of its own, the text decides ties.
                m_bytes.insert(m_bytes.end(), text.begin(), text.end());
            }
            m_begins.push_back(m_bytes.size());
        }
    }

    std::size_t count() const { return m_begins.size() - 1; }

    std::string_view key(std::size_t index) const {
        return {reinterpret_cast<const char*>(m_bytes.data()) + m_begins[index], m_begins[index + 1] - m_begins[index]};
    }

private:
    void appendCollationKey(std::string_view text, const icu::Collator& collator) {
        const icu::UnicodeString wide = unicodeFromUtf8(text);
        const std::size_t begin = m_bytes.size();
        std::size_t room = 64 + 4 * static_cast<std::size_t>(wide.length());
        for (;;) {
            m_bytes.resize(begin + room);
            const auto length = static_cast<std::size_t>(
                collator.getSortKey(wide, m_bytes.data() + begin, static_cast<std::int32_t>(room)));
            if (length <= room) {
                m_bytes.resize(begin + length);
                return;
            }
            room = length;
        }
    }

    std::vector<std::uint8_t> m_bytes;
    std::vector<std::size_t> m_begins;
};

/// Eight bytes of a key as a number, and whose key it is.
struct Chunk {
    std::uint64_t bytes = 0;
    std::size_t index = 0;
};

std::uint64_t bytesOfKey(std::string_view key, std::size_t offset) {
    std::uint64_t number = 0;
    const std::size_t length = offset < key.size() ? std::min(sizeof number, key.size() - offset) : 0;
    for (std::size_t position = 0; position < sizeof number; ++position) {
        const auto byte = position < length ? static_cast<unsigned char>(key[offset + position]) : 0U;
        number = (number << 8U) | byte;
    }
    return number;
}

/// The indices in the order of their keys. Sorts by the first eight bytes, then each run of equal ones by
/// the next eight: names often begin alike, and numbers side by side compare much faster than keys
/// scattered in memory.
std::vector<Chunk> sortedByKeys(const SortKeys& keys) {
    struct Run {
        std::size_t begin;
        std::size_t end;
        std::size_t offset;
    };
    std::vector<Chunk> chunks(keys.count());
    for (std::size_t index = 0; index < chunks.size(); ++index) {
        chunks[index].index = index;
    }
    std::vector<Run> waiting = {{0, chunks.size(), 0}};
    while (!waiting.empty()) {
        const Run run = waiting.back();
        waiting.pop_back();
        const auto first = chunks.begin() + static_cast<std::ptrdiff_t>(run.begin);
        const auto last = chunks.begin() + static_cast<std::ptrdiff_t>(run.end);
        bool exhausted = true;
        for (auto chunk = first; chunk != last; ++chunk) {
            const std::string_view key = keys.key(chunk->index);
            exhausted = exhausted && key.size() <= run.offset;
            chunk->bytes = bytesOfKey(key, run.offset);
        }
        if (exhausted) {
            // Keys that differ in trailing zeros only.
            std::sort(first, last, [&](const Chunk& left, const Chunk& right) {
                return keys.key(left.index).size() < keys.key(right.index).size();
            });
            continue;
        }
        std::sort(first, last, [](const Chunk& left, const Chunk& right) { return left.bytes < right.bytes; });
        for (std::size_t begin = run.begin; begin < run.end;) {
            std::size_t end = begin + 1;
            while (end < run.end && chunks[end].bytes == chunks[begin].bytes) {
                ++end;
            }
            if (end - begin > 1) {
                waiting.push_back({begin, end, run.offset + sizeof(std::uint64_t)});
            }
            begin = end;
        }
    }
    return chunks;
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
    const DistinctTexts distinct(texts);
    const SortKeys keys(distinct.texts(), comparison, environment);
    const std::vector<Chunk> sorted = sortedByKeys(keys);
    std::vector<std::size_t> rankOfDistinct(sorted.size());
    std::size_t rank = 0;
    for (std::size_t position = 0; position < sorted.size(); ++position) {
        if (position > 0 && keys.key(sorted[position - 1].index) != keys.key(sorted[position].index)) {
            ++rank;
        }
        rankOfDistinct[sorted[position].index] = rank;
    }
    std::vector<std::size_t> ranks;
    ranks.reserve(texts.size());
    for (const std::size_t place : distinct.places()) {
        ranks.push_back(rankOfDistinct[place]);
    }
    return ranks;
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
