#pragma once

#include <unicode/locid.h>

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

// For this folder only, as it brings the internationalisation library's types.

/// The locale of a POSIX or ICU name: "de_DE.UTF-8", "sr_RS@latin", "de-DE". Null for one that names no language.
/// "", "C" and "POSIX", with or without an encoding, are en_US: their own data lack currency and date styles.
std::optional<icu::Locale> localeFromName(std::string_view name);

}  // namespace kpx
