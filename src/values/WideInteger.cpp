#include "values/WideInteger.h"

#include <algorithm>

namespace kpx {

std::string WideInteger::decimalText() const {
    __extension__ using Wide = unsigned __int128;
    const bool negative = high() < 0;
    const Wide bits = static_cast<Wide>(static_cast<std::uint64_t>(high())) << 64 | low();
    Wide magnitude = negative ? ~bits + 1 : bits;
    std::string text;
    do {
        text += static_cast<char>('0' + static_cast<int>(magnitude % 10));
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative) {
        text += '-';
    }
    std::ranges::reverse(text);
    return text;
}

}  // namespace kpx
