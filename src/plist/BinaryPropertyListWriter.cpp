#include "plist/BinaryPropertyList.h"
#include "plist/BinaryPropertyListObjects.h"
#include "plist/PropertyListLimits.h"
#include "plist/PropertyListUnicode.h"

#include <bit>
#include <cstring>

namespace kpx {
namespace {

using Kind = BinaryObject::Kind;

/// The smallest of 1, 2, 4 and 8 bytes that hold the number.
constexpr unsigned integerSize(std::uint64_t number) {
    return number <= 0xFF ? 1 : number <= 0xFFFF ? 2 : number <= 0xFFFFFFFF ? 4 : 8;
}

/// The fewest bytes that hold the number. References and offsets may have any size, three bytes too.
constexpr unsigned fewestBytes(std::uint64_t number) {
    return number == 0 ? 1 : (static_cast<unsigned>(std::bit_width(number)) + 7) / 8;
}

class Writer {
public:
    explicit Writer(const BinaryObjects& list) : m_list(list), m_referenceSize(fewestBytes(list.objects.size() - 1)) {}

    std::string write() {
        std::size_t table = binaryPropertyListHeader.size();
        for (const BinaryObject& object : m_list.objects) {
            table += sizeOf(object);
        }
        const unsigned offsetSize = fewestBytes(table);
        const std::size_t size = table + m_list.objects.size() * offsetSize + trailerSize;
        m_bytes.resize(size + sizeof(std::uint64_t));  // appendNumber() touches some bytes more
        append(binaryPropertyListHeader);
        for (const BinaryObject& object : m_list.objects) {
            appendObject(object);
        }
        appendOffsetsAndTrailer(table, offsetSize);
        m_bytes.resize(size);
        return std::move(m_bytes);
    }

private:
    static constexpr std::size_t trailerSize = 32;
    static constexpr unsigned countFollows = 0xF;  // in the low half of a marker

    /// The bytes of one object.
    std::size_t sizeOf(const BinaryObject& object) const {
        switch (object.kind) {
            case Kind::boolean:
                return 1;
            case Kind::integer:
                return 1 + integerSize(object.content);
            case Kind::largeInteger:
            case Kind::wideInteger:
                return 17;
            case Kind::real:
            case Kind::date:
                return 9;
            case Kind::uniqueIdentifier:
                return 1 + integerSize(object.content);
            case Kind::data:
            case Kind::asciiText:
                return markerAndCountSize(object.count) + object.count;
            case Kind::utf16Text:
                return markerAndCountSize(object.count) + 2 * std::size_t{object.count};
            case Kind::array:
                return markerAndCountSize(object.count) + std::size_t{object.count} * m_referenceSize;
            case Kind::dictionary:
                return markerAndCountSize(object.count) + 2 * std::size_t{object.count} * m_referenceSize;
        }
        return 0;
    }

    static std::size_t markerAndCountSize(std::uint64_t count) {
        return count < countFollows ? 1 : 2 + integerSize(count);
    }

    void append(std::string_view bytes) {
        bytes.copy(m_bytes.data() + m_size, bytes.size());
        m_size += bytes.size();
    }

    void appendNumber(std::uint64_t number, unsigned size) {
        static_assert(std::endian::native == std::endian::little);
        const std::uint64_t eight = __builtin_bswap64(number << (64 - 8 * size));
        std::memcpy(m_bytes.data() + m_size, &eight, sizeof eight);
        m_size += size;
    }

    void appendMarker(unsigned kind, unsigned low) { m_bytes[m_size++] = static_cast<char>(kind << 4 | low); }

    void appendInteger(std::uint64_t number, unsigned size) {
        appendMarker(0x1, static_cast<unsigned>(std::countr_zero(size)));
        appendNumber(number, size);
    }

    void appendMarkerAndCount(unsigned kind, std::uint64_t count) {
        if (count < countFollows) {
            appendMarker(kind, static_cast<unsigned>(count));
        } else {
            appendMarker(kind, countFollows);
            appendInteger(count, integerSize(count));
        }
    }

    void appendObject(const BinaryObject& object) {
        switch (object.kind) {
            case Kind::boolean:
                appendMarker(0x0, object.content ? 0x9 : 0x8);
                break;
            case Kind::integer:
                appendInteger(object.content, integerSize(object.content));
                break;
            case Kind::largeInteger:
                appendMarker(0x1, 0x4);
                appendNumber(0, 8);
                appendNumber(object.content, 8);
                break;
            case Kind::wideInteger: {
                const auto& wide = *reinterpret_cast<const WideInteger*>(object.content);
                appendMarker(0x1, 0x4);
                appendNumber(static_cast<std::uint64_t>(wide.high()), 8);
                appendNumber(wide.low(), 8);
                break;
            }
            case Kind::real:
                appendMarker(0x2, 0x3);
                appendNumber(object.content, 8);
                break;
            case Kind::date:
                appendMarker(0x3, 0x3);
                appendNumber(object.content, 8);
                break;
            case Kind::uniqueIdentifier: {
                const unsigned size = integerSize(object.content);
                appendMarker(0x8, size - 1);
                appendNumber(object.content, size);
                break;
            }
            case Kind::data: {
                const auto& bytes = *reinterpret_cast<const Data::Bytes*>(object.content);
                appendMarkerAndCount(0x4, object.count);
                append({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
                break;
            }
            case Kind::asciiText:
                appendMarkerAndCount(0x5, object.count);
                append(*reinterpret_cast<const std::string*>(object.content));
                break;
            case Kind::utf16Text:
                appendMarkerAndCount(0x6, object.count);
                append(utf16FromUtf8(*reinterpret_cast<const std::string*>(object.content)));
                break;
            case Kind::array:
                appendMarkerAndCount(0xA, object.count);
                appendReferences(object.content, object.count);
                break;
            case Kind::dictionary:
                appendMarkerAndCount(0xD, object.count);
                appendReferences(object.content, 2 * std::uint64_t{object.count});
                break;
        }
    }

    void appendReferences(std::uint64_t first, std::uint64_t count) {
        for (std::uint64_t index = first; index < first + count; ++index) {
            appendNumber(m_list.references[index], m_referenceSize);
        }
    }

    void appendOffsetsAndTrailer(std::uint64_t table, unsigned offsetSize) {
        std::size_t offset = binaryPropertyListHeader.size();
        for (const BinaryObject& object : m_list.objects) {
            appendNumber(offset, offsetSize);
            offset += sizeOf(object);
        }
        constexpr unsigned unused = 6;
        appendNumber(0, unused);
        appendNumber(offsetSize, 1);
        appendNumber(m_referenceSize, 1);
        appendNumber(m_list.objects.size(), 8);
        appendNumber(0, 8);  // the root is the first object
        appendNumber(table, 8);
    }

    const BinaryObjects& m_list;
    unsigned m_referenceSize;
    std::string m_bytes;
    std::size_t m_size = 0;  // of m_bytes, what is written
};

}  // namespace

std::optional<std::string> writeBinaryPropertyList(const Value& value) {
    const std::optional<BinaryObjects> list = collectBinaryObjects(value);
    if (!list) {
        return std::nullopt;
    }
    std::string bytes = Writer(*list).write();
    if (list->places > maximumPlaces(bytes.size())) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace kpx
