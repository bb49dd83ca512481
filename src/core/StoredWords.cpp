#include "core/StoredWords.h"

#include "core/Keys.h"

#include <algorithm>

namespace kpx {

namespace {

const std::vector<std::string>& fillTypes() {
    static const std::vector<std::string> words = {localizable(fillTypeInitial), localizable(fillTypeRefill)};
    return words;
}

const std::vector<std::string>& dosageForms() {
    static const std::vector<std::string> words = {
        localizable("tablet"),      localizable("capsule"),    localizable("mL"),       localizable("drop"),
        localizable("puff"),        localizable("spray"),      localizable("patch"),    localizable("unit"),
        localizable("mg"),          localizable("gram"),       localizable("teaspoon"), localizable("tablespoon"),
        localizable("ampoule"),     localizable("injection"),  localizable("sachet"),   localizable("lozenge"),
        localizable("suppository"), localizable("application")};
    return words;
}

const std::vector<std::string>& timesToTake() {
    static const std::vector<std::string> words = {localizable("day"),
                                                   localizable("hours"),
                                                   localizable("days"),
                                                   localizable("weeks"),
                                                   localizable("months"),
                                                   localizable("in the morning"),
                                                   localizable("at noon"),
                                                   localizable("in the evening"),
                                                   localizable("at bedtime"),
                                                   localizable("with food"),
                                                   localizable("before meals"),
                                                   localizable("after meals"),
                                                   localizable("on an empty stomach"),
                                                   localizable("as needed")};
    return words;
}

}  // namespace

const std::vector<std::string>& storedWords(std::string_view keyOrColumn) {
    static const std::vector<std::string> none;
    if (keyOrColumn == MHFillTypeKey || keyOrColumn == "filltype") {
        return fillTypes();
    }
    if (keyOrColumn == MHDrugTypeMeasureKey || keyOrColumn == "typemeasure") {
        return dosageForms();
    }
    return keyOrColumn == MHWhenToTakeDrugKey || keyOrColumn == "whentotake" ? timesToTake() : none;
}

bool isStoredWord(std::string_view keyOrColumn, std::string_view text) {
    const auto& words = storedWords(keyOrColumn);
    return std::ranges::find(words, text) != words.end();
}

std::string shownWord(std::string_view keyOrColumn, const std::string& stored, const LocalizedStrings& localized) {
    return isStoredWord(keyOrColumn, stored) ? localized(stored) : stored;
}

std::string storedWord(std::string_view keyOrColumn, const std::string& shown, const LocalizedStrings& localized) {
    const auto& words = storedWords(keyOrColumn);
    const auto word =
        std::ranges::find_if(words, [&](const std::string& stored) { return localized(stored) == shown; });
    return word == words.end() ? shown : *word;
}

}  // namespace kpx
