#pragma once

#include "values/Text.h"

#include <filesystem>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kpx {

/// The user-visible texts in the user's language. The English text is the key; it stands where there is
/// no translation, or an empty one, so that nothing is ever blank. Copies share one table.
class LocalizedStrings {
public:
    LocalizedStrings() = default;
    /// Reads "<language>.lproj/Localizable.strings" below the folder; a missing or damaged table
    /// translates nothing. REQUIRES: a language (languageOfTexts()).
    LocalizedStrings(const std::filesystem::path& resources, std::string_view languageCode);

    /// Whether there is nothing to translate with.
    bool isEmpty() const { return !m_table; }

    std::string operator()(std::string_view key) const;

    /// Null where there is no translation.
    std::optional<std::string> translation(std::string_view key) const;

    /// A text that was once glued from pieces. The whole sentence is asked for first, in whose translation the
    /// arguments can stand where its language wants them; without one it is `glued`, made of the pieces.
    ///
    ///     localized.sentence("Page: %d", {number}, localized("Page: ") + number)
    std::string sentence(std::string_view whole, std::initializer_list<std::string_view> arguments,
                         std::string glued) const;

private:
    /// In the order of the keys.
    using Table = std::vector<std::pair<Text, Text>>;

    std::shared_ptr<const Table> m_table;  ///< null for none
};

/// Of the user's languages, best first, the one that texts and manual are shown in: the first that has a table of
/// translations, which English needs none of, else the first that has a folder at all, else the first. Whoever puts
/// English before German reads English. REQUIRES: at least one.
std::string languageOfTexts(const std::filesystem::path& resources, const std::vector<std::string>& languageCodes);

/// The table of that language.
LocalizedStrings textsFor(const std::filesystem::path& resources, const std::vector<std::string>& languageCodes);

/// What a text is in each language that has a table with it, by the language's code.
std::map<std::string, std::string> translationsOf(std::string_view text, const std::filesystem::path& resources);

/// The format with its placeholders ("%@", "%d", "%ld") replaced by the arguments, as they are: in order, or "%2$@" by
/// the second, as translations need. A placeholder without an argument is left empty; "%%" is a percent sign.
std::string formatted(std::string_view format, std::initializer_list<std::string_view> arguments);

/// Marks a text that is looked up where it is shown, far from where it stands, for those who collect the texts to be
/// translated.
constexpr const char* localizable(const char* text) { return text; }

}  // namespace kpx
