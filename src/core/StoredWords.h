#pragma once

#include "region/LocalizedStrings.h"

#include <string>
#include <string_view>
#include <vector>

namespace kpx {

// Words of this program that records hold: fill types, dosage forms, rhythms. They are stored in English whatever the
// user's language, so that two languages can share one household, and are shown translated.
//
// | stored under MHFillTypeKey | shown in German      |
// |----------------------------|----------------------|
// | "Initial"                  | "Erstes"             |
// | "Refill"                   | "Folge"              |
// | "renewal", by another hand | "renewal"            |

/// The words that may stand under a record's key, or under the column identifier of the same value, in the order in
/// which they are offered. None for a key that holds other things.
const std::vector<std::string>& storedWords(std::string_view keyOrColumn);

bool isStoredWord(std::string_view keyOrColumn, std::string_view text);

/// The text as shown: translated if it is one of the words of that key, else as it is.
std::string shownWord(std::string_view keyOrColumn, const std::string& stored, const LocalizedStrings& localized);

/// The other way round: the word that is shown as this text, else the text.
std::string storedWord(std::string_view keyOrColumn, const std::string& shown, const LocalizedStrings& localized);

}  // namespace kpx
