#pragma once

#include "values/Record.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace kpx::test {

inline Data bytes(std::initializer_list<std::uint8_t> list) { return Data(Data::Bytes(list)); }

inline Value list(std::vector<Value> values) { return Array(std::move(values)); }

/// One of everything a property list can hold, nested.
inline Value everyKind() {
    return list({
        Record{{"text", "plain"}, {"empty", ""}, {"accents", "Zoë, naïve"}, {"beyond", "𝒳 😀 end"}},
        list({0, 1, 255, 256, 65535, 65536, std::int64_t{4294967295}, std::int64_t{4294967296}}),
        list({-1, -128, -70000, std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}),
        list({Value(std::uint64_t{1} << 63), Value(std::numeric_limits<std::uint64_t>::max())}),
        list({WideInteger(1, 0), WideInteger(-1, 0), WideInteger(std::numeric_limits<std::int64_t>::max(), 7)}),
        list({0.5, -0.0, 1e300, std::numeric_limits<double>::infinity()}),
        list({true, false}),
        list({Date{0}, Date{733565700}, Date{-1e9 - 0.25}}),
        list({Data(), bytes({0, 1, 254, 255}), Data(Data::Bytes(300, 7))}),
        list({UniqueIdentifier{0}, UniqueIdentifier{70000}, UniqueIdentifier{~std::uint64_t{0}}}),
        list({Array(), Record(), Record{{"deep", list({Record{{"deeper", list({"bottom"})}}})}}}),
        std::string(20, 'x'),
        std::string(70000, 'y'),
    });
}

/// Hand-made binary property lists: objects as they stand in the file, by which the offsets and the
/// trailer are made. References of one byte, offsets of two.
struct BinaryFile {
    std::vector<std::string> objects;
    unsigned offsetSize = 2;
    unsigned referenceSize = 1;
    std::uint64_t root = 0;

    static std::string number(std::uint64_t value, unsigned size) {
        std::string text;
        for (unsigned index = 0; index < size; ++index) {
            const unsigned shift = 8 * (size - 1 - index);
            text += static_cast<char>(shift < 64 ? value >> shift : 0);
        }
        return text;
    }

    std::string bytes() const {
        std::string file = "bplist00";
        std::string offsets;
        for (const std::string& object : objects) {
            offsets += number(file.size(), offsetSize);
            file += object;
        }
        const std::size_t table = file.size();
        return file + offsets + trailer(objects.size(), table);
    }

    std::string trailer(std::uint64_t count, std::uint64_t table) const {
        return std::string(6, '\0') + number(offsetSize, 1) + number(referenceSize, 1) + number(count, 8) +
               number(root, 8) + number(table, 8);
    }
};

/// The bytes of a literal that may hold zeros.
template <std::size_t size>
std::string raw(const char (&literal)[size]) {
    return std::string(literal, size - 1);
}

}  // namespace kpx::test
