#include "history/StatusText.h"

#include "core/Keys.h"

namespace kpx {

namespace {

/// Whole sentences, as a language may order and inflect them otherwise; of each, the one for a single refill first.
struct StoredSentences {
    const char* initial[2];
    const char* refill[2];
    const char* other[2];
};

constexpr StoredSentences addedSentences = {
    {localizable("Added %1$@, initial, 1 refill left"), localizable("Added %1$@, initial, %2$@ refills left")},
    {localizable("Added %1$@, refill, 1 refill left"), localizable("Added %1$@, refill, %2$@ refills left")},
    {localizable("Added %1$@, 1 refill left"), localizable("Added %1$@, %2$@ refills left")}};
constexpr StoredSentences changedSentences = {
    {localizable("Changed %1$@, initial, 1 refill left"), localizable("Changed %1$@, initial, %2$@ refills left")},
    {localizable("Changed %1$@, refill, 1 refill left"), localizable("Changed %1$@, refill, %2$@ refills left")},
    {localizable("Changed %1$@, 1 refill left"), localizable("Changed %1$@, %2$@ refills left")}};

std::string storedText(const StoredSentences& sentences, std::string_view rxNumber, std::string_view fillType,
                       std::int64_t refillsLeft, const LocalizedStrings& localized) {
    const auto& forms = fillType == fillTypeInitial  ? sentences.initial
                        : fillType == fillTypeRefill ? sentences.refill
                                                     : sentences.other;
    return formatted(localized(forms[refillsLeft == 1 ? 0 : 1]), {rxNumber, std::to_string(refillsLeft)});
}

}  // namespace

std::string addedText(std::string_view rxNumber, std::string_view fillType, std::int64_t refillsLeft,
                      const LocalizedStrings& localized) {
    return storedText(addedSentences, rxNumber, fillType, refillsLeft, localized);
}

std::string changedText(std::string_view rxNumber, std::string_view fillType, std::int64_t refillsLeft,
                        const LocalizedStrings& localized) {
    return storedText(changedSentences, rxNumber, fillType, refillsLeft, localized);
}

std::string deletedText(std::string_view rxNumber, std::size_t fills, const LocalizedStrings& localized) {
    return fills == 1 ? formatted(localized("Deleted 1 fill of %1$@"), {rxNumber})
                      : formatted(localized("Deleted %1$@ fills of %2$@"), {std::to_string(fills), rxNumber});
}

}  // namespace kpx
