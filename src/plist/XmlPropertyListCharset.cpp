#include "plist/XmlPropertyListCharset.h"

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace kpx {
namespace {

using namespace std::string_view_literals;

struct ConverterDeleter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterDeleter>;

/// The value of `encoding` in an XML declaration; empty when there is none.
std::string declaredEncoding(std::string_view text) {
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t name = declaration.find("encoding");
    const std::size_t begin = name == std::string_view::npos ? name : declaration.find_first_of("'\"", name);
    if (begin == std::string_view::npos) {
        return {};
    }
    const std::size_t end = declaration.find(declaration[begin], begin + 1);
    return end == std::string_view::npos ? std::string() : std::string(declaration.substr(begin + 1, end - begin - 1));
}

/// As XML has them: letters, digits, and few signs, of which none could lead the library to a file.
bool isEncodingName(std::string_view name) {
    return !name.empty() &&
           name.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-:") ==
               std::string_view::npos;
}

/// The brackets and the question mark of a declaration lie at the same places everywhere, letters and quotation marks
/// do not.
std::optional<std::string> charsetOfMainframe(std::string_view bytes) {
    const std::size_t end = bytes.starts_with("\x4C\x6F") ? bytes.find("\x6F\x6E") : std::string_view::npos;
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    for (const char* family : {"ibm-37", "ibm-290", "ibm-1026"}) {
        const auto declaration = utf8FromCharset(bytes.substr(0, end), family);
        const std::string charset = declaration ? declaredEncoding(*declaration) : std::string();
        if (isEncodingName(charset) && declaration->starts_with("<?xml")) {
            return charset;
        }
    }
    return bytes.starts_with("\x4C\x6F\xA7\x94") ? std::optional<std::string>("ibm-37") : std::nullopt;
}

std::optional<std::string> charsetOfMark(std::string_view bytes) {
    constexpr std::size_t longestMark = 8;
    UErrorCode status = U_ZERO_ERROR;
    const char* charset = ucnv_detectUnicodeSignature(
        bytes.data(), static_cast<std::int32_t>(std::min(bytes.size(), longestMark)), nullptr, &status);
    const std::string name = U_SUCCESS(status) && charset ? charset : "";
    const bool isOfTheParser = name == "UTF-8" || name.starts_with("UTF-16");
    return name.empty() || isOfTheParser ? std::nullopt : std::optional(name);
}

}  // namespace

std::optional<std::string> charsetOfXmlBytes(std::string_view bytes) {
    if (bytes.starts_with("\0\0\0<"sv)) {
        return "UTF-32BE";
    }
    if (bytes.starts_with("<\0\0\0"sv)) {
        return "UTF-32LE";
    }
    if (bytes.starts_with("\x1B$)C")) {
        return "ISO-2022-KR";
    }
    const std::optional<std::string> charset = charsetOfMainframe(bytes);
    return charset ? charset : charsetOfMark(bytes);
}

std::optional<std::string> utf8FromCharset(std::string_view bytes, const std::string& charset) {
    if (!isEncodingName(charset) || bytes.size() > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    const Converter converter(ucnv_open(charset.c_str(), &status));
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    // By default the library replaces what it cannot read: a name would change without a word.
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), converter.get(), status);
    if (U_FAILURE(status) || text.isBogus()) {
        return std::nullopt;
    }
    std::string utf8;
    text.tempSubString(text.startsWith(u"\uFEFF") ? 1 : 0).toUTF8String(utf8);
    return utf8;
}

}  // namespace kpx
