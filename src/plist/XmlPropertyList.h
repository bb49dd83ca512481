#pragma once

#include "values/Record.h"

#include <optional>
#include <string_view>

namespace kpx {

/// Reads an XML property list in UTF-8, UTF-16, ISO-8859-1 or US-ASCII, with or without a document type
/// and the surrounding plist element.
///
/// Null when the document is not well-formed, declares or uses an entity of its own (nothing outside is
/// ever fetched, and nothing can be multiplied), holds an element the format does not know or a value
/// that is none, nests deeper than maximumNesting, or has text between elements. A key that occurs
/// twice keeps its first place and its last value.
[[nodiscard]] std::optional<Value> readXmlPropertyList(std::string_view bytes);

}  // namespace kpx
