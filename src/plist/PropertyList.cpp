#include "plist/PropertyList.h"

#include "plist/BinaryPropertyList.h"
#include "plist/OldStylePropertyList.h"
#include "plist/PropertyListUnicode.h"
#include "plist/XmlPropertyList.h"
#include "plist/XmlPropertyListCharset.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace kpx {
namespace {

/// Whether a text that is no binary property list is to be read as XML. Old-style data begins with the
/// same bracket, but has hexadecimal digits only.
bool looksLikeXml(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (!text.starts_with('<')) {
        return false;
    }
    constexpr std::string_view inData = "0123456789abcdefABCDEF \t\n\v\f\r";
    const std::size_t other = text.find_first_not_of(inData, 1);
    return other != std::string_view::npos && text[other] != '>';
}

std::optional<Value> readText(std::string_view bytes) {
    if (charsetOfXmlBytes(bytes)) {
        return readXmlPropertyList(bytes);
    }
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const bool isLittleEndian = bytes.starts_with("\xFF\xFE");
    if (isLittleEndian || bytes.starts_with("\xFE\xFF")) {
        const std::optional<std::string> text = utf8FromUtf16(bytes.substr(2), !isLittleEndian);
        if (!text) {
            return std::nullopt;
        }
        return looksLikeXml(*text) ? readXmlPropertyList(bytes) : readOldStylePropertyList(*text);
    }
    using namespace std::string_view_literals;
    if (bytes.starts_with("\0<"sv) || bytes.starts_with("<\0"sv)) {
        return readXmlPropertyList(bytes);  // UTF-16 without a mark
    }
    if (bytes.starts_with(utf8Mark)) {
        bytes.remove_prefix(utf8Mark.size());
    }
    if (looksLikeXml(bytes)) {
        return readXmlPropertyList(bytes.substr(bytes.find('<')));
    }
    return readOldStylePropertyList(bytes);
}

}  // namespace

std::optional<Value> readPropertyList(std::string_view bytes) {
    try {
        return bytes.starts_with(binaryPropertyListHeader) ? readBinaryPropertyList(bytes) : readText(bytes);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    } catch (const std::length_error&) {
        return std::nullopt;
    }
}

std::optional<std::string> writePropertyList(const Value& value) {
    try {
        return writeBinaryPropertyList(value);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    } catch (const std::length_error&) {
        return std::nullopt;
    }
}

}  // namespace kpx
