#include "plist/XmlPropertyListScalars.h"

#include "values/NumberText.h"

#include <array>
#include <charconv>
#include <chrono>
#include <limits>

namespace kpx {
namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes one sign off; whether it was a minus.
bool takeSign(std::string_view& text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return isNegative;
}

std::optional<std::uint64_t> unsignedNumber(std::string_view text, int base) {
    std::uint64_t number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, base);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

__extension__ using Wide = unsigned __int128;

std::optional<Wide> wideNumber(std::string_view text, unsigned base) {
    Wide number = 0;
    for (const char character : text) {
        const auto digit = unsignedNumber({&character, 1}, static_cast<int>(base));
        if (!digit || number > (~Wide{0} - *digit) / base) {
            return std::nullopt;
        }
        number = number * base + *digit;
    }
    return text.empty() ? std::nullopt : std::optional(number);
}

/// The digits' number when there are exactly so many of them, which are then taken off.
std::optional<unsigned> takeDigits(std::string_view& text, std::size_t count) {
    if (text.size() < count || text.substr(0, count).find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<std::uint64_t> number = unsignedNumber(text.substr(0, count), 10);
    text.remove_prefix(count);
    return number ? std::optional(static_cast<unsigned>(*number)) : std::nullopt;
}

bool takeLiteral(std::string_view& text, char literal) {
    if (!text.starts_with(literal)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

constexpr std::uint8_t noBase64 = 0xFF;

constexpr std::array<std::uint8_t, 256> makeBase64Table() {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> table{};
    table.fill(noBase64);
    for (std::size_t index = 0; index < digits.size(); ++index) {
        table[static_cast<std::uint8_t>(digits[index])] = static_cast<std::uint8_t>(index);
    }
    return table;
}

}  // namespace

bool isBlank(std::string_view text) { return text.find_first_not_of(blanks) == std::string_view::npos; }

std::optional<Value> integerFromXml(std::string_view text) {
    text = trimmed(text);
    const bool isNegative = takeSign(text);
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::optional<Wide> number = isHexadecimal ? wideNumber(text.substr(2), 16) : wideNumber(text, 10);
    constexpr Wide largestNegative = Wide{1} << 127;
    if (!number || *number > largestNegative || (!isNegative && *number == largestNegative)) {
        return std::nullopt;
    }
    const Wide bits = isNegative ? ~*number + 1 : *number;
    const auto low = static_cast<std::uint64_t>(bits);
    const auto high = static_cast<std::int64_t>(static_cast<std::uint64_t>(bits >> 64));
    if (high == 0) {
        return Value(low);
    }
    const bool fitsSigned = high == -1 && low >> 63 != 0;
    return fitsSigned ? Value(static_cast<std::int64_t>(low)) : Value(WideInteger(high, low));
}

std::optional<double> realFromXml(std::string_view text) {
    text = trimmed(text);
    const bool isNegative = takeSign(text);
    if (text.starts_with('-')) {
        return std::nullopt;
    }
    double number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ptr != end || result.ec == std::errc::invalid_argument) {
        return std::nullopt;
    }
    if (result.ec == std::errc::result_out_of_range) {
        number = leadingNumber(text);  // infinity, or as good as nothing
    }
    return isNegative ? -number : number;
}

std::optional<Date> dateFromXml(std::string_view text) {
    text = trimmed(text);
    const std::optional<unsigned> year = takeDigits(text, 4);
    std::array<unsigned, 5> smaller = {1, 1, 0, 0, 0};
    constexpr std::array<char, 5> marks = {'-', '-', 'T', ':', ':'};
    for (std::size_t unit = 0; unit < smaller.size() && takeLiteral(text, marks[unit]); ++unit) {
        const std::optional<unsigned> number = takeDigits(text, 2);
        if (!number) {
            return std::nullopt;
        }
        smaller[unit] = *number;
    }
    const auto [month, day, hour, minute, second] = smaller;
    if (text != "Z" || !year || hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(*year)), std::chrono::month(month),
                                           std::chrono::day(day));
    if (!date.ok()) {
        return std::nullopt;
    }
    const auto days = std::chrono::sys_days(date).time_since_epoch().count();
    return Date::fromSecondsSince1970(static_cast<double>(days) * 86400 + hour * 3600 + minute * 60 + second);
}

std::optional<Data> dataFromXml(std::string_view text) {
    static constexpr std::array<std::uint8_t, 256> values = makeBase64Table();
    Data::Bytes bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    std::size_t digits = 0;
    std::size_t padding = 0;
    for (const char character : text) {
        if (blanks.find(character) != std::string_view::npos) {
            continue;
        }
        if (character == '=') {
            ++padding;
            continue;
        }
        const std::uint8_t value = values[static_cast<std::uint8_t>(character)];
        if (value == noBase64 || padding > 0) {
            return std::nullopt;
        }
        bits = bits << 6 | value;
        ++digits;
        if (digits % 4 != 1) {
            const std::size_t unused = 6 - 2 * ((digits - 1) % 4);
            bytes.push_back(static_cast<std::uint8_t>(bits >> unused));
        }
    }
    const bool isWhole = digits % 4 != 1 && padding == (4 - digits % 4) % 4;
    return isWhole ? std::optional(Data(std::move(bytes))) : std::nullopt;
}

}  // namespace kpx
