#pragma once

#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

namespace kpx {

/// The user-visible texts in the user's language. The English text is the key; it stands where there is
/// no translation, or an empty one, so that nothing is ever blank.
class LocalizedStrings {
public:
    LocalizedStrings() = default;
    /// Reads "<language>.lproj/Localizable.strings" below the folder; a missing or damaged table
    /// translates nothing.
    LocalizedStrings(const std::filesystem::path& resources, std::string_view languageCode);

    std::string operator()(std::string_view key) const;

private:
    std::map<std::string, std::string, std::less<>> m_table;
};

/// The format with its placeholders ("%@", "%d", "%ld") replaced by the arguments, as they are: in order, or "%2$@" by
/// the second, as translations need. A placeholder without an argument is left empty; "%%" is a percent sign.
std::string formatted(std::string_view format, std::initializer_list<std::string_view> arguments);

}  // namespace kpx
