#pragma once

#include "values/Record.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace kpx {

/// One object of a binary property list to be written.
struct BinaryObject {
    enum class Kind : std::uint8_t {
        boolean,
        integer,
        largeInteger,
        wideInteger,
        real,
        date,
        uniqueIdentifier,
        data,
        asciiText,
        utf16Text,
        array,
        dictionary
    };

    /// A scalar's bits, the address of a text's or data's bytes or of a wide integer, or the index of a container's
    /// first reference.
    std::uint64_t content = 0;
    /// Bytes of data, UTF-16 units of a text, elements of a container.
    std::uint32_t count = 0;
    Kind kind = Kind::boolean;
};

/// The objects of a binary property list, the root first. Texts and data stay in the value.
struct BinaryObjects {
    std::vector<BinaryObject> objects;
    /// The containers' elements by object number, one container after the other; of a dictionary first
    /// the keys, then the values.
    std::vector<std::uint32_t> references;
    /// The values that the root stands for, those shared counted at each place.
    std::uint64_t places = 0;
};

/// Lists the objects of a value, which must outlive the result. Null when it nests deeper than
/// maximumNesting, has 2^32 objects, or a text or a container of 2^32 elements.
std::optional<BinaryObjects> collectBinaryObjects(const Value& value);

}  // namespace kpx
