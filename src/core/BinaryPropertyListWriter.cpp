#include "core/BinaryPropertyList.h"
#include "core/BinaryPropertyListObjects.h"
#include "core/PropertyListLimits.h"
#include "core/PropertyListUnicode.h"

#include <bit>

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
        m_offsets.reserve(m_list.objects.size());
        m_bytes.reserve(expectedSize());
        m_bytes = binaryPropertyListHeader;
        for (const BinaryObject& object : m_list.objects) {
            m_offsets.push_back(m_bytes.size());
            appendObject(object);
        }
        appendOffsetsAndTrailer();
        return std::move(m_bytes);
    }

private:
    std::size_t expectedSize() const {
        constexpr std::size_t wholeFrame = 64;
        std::size_t size = wholeFrame + m_list.references.size() * m_referenceSize;
        for (const BinaryObject& object : m_list.objects) {
            const std::size_t content = object.kind == Kind::utf16Text ? 2 * std::size_t{object.count} : object.count;
            constexpr std::size_t markerLengthAndOffset = 8;
            size += markerLengthAndOffset + (object.kind < Kind::array ? content : 0);
        }
        return size;
    }

    void appendNumber(std::uint64_t number, unsigned size) {
        char bytes[8];
        for (unsigned index = 0; index < size; ++index) {
            bytes[index] = static_cast<char>(number >> (8 * (size - 1 - index)));
        }
        m_bytes.append(bytes, size);
    }

    void appendMarker(unsigned kind, unsigned low) { m_bytes.push_back(static_cast<char>(kind << 4 | low)); }

    void appendInteger(std::uint64_t number, unsigned size) {
        appendMarker(0x1, static_cast<unsigned>(std::countr_zero(size)));
        appendNumber(number, size);
    }

    void appendMarkerAndCount(unsigned kind, std::uint64_t count) {
        constexpr unsigned countFollows = 0xF;
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
                m_bytes.append(bytes.begin(), bytes.end());
                break;
            }
            case Kind::asciiText:
                appendMarkerAndCount(0x5, object.count);
                m_bytes.append(*reinterpret_cast<const std::string*>(object.content));
                break;
            case Kind::utf16Text:
                appendMarkerAndCount(0x6, object.count);
                appendUtf16(m_bytes, *reinterpret_cast<const std::string*>(object.content));
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

    void appendOffsetsAndTrailer() {
        const std::uint64_t table = m_bytes.size();
        const unsigned offsetSize = fewestBytes(table);
        for (const std::uint64_t offset : m_offsets) {
            appendNumber(offset, offsetSize);
        }
        constexpr std::size_t unused = 6;
        m_bytes.append(unused, '\0');
        appendNumber(offsetSize, 1);
        appendNumber(m_referenceSize, 1);
        appendNumber(m_list.objects.size(), 8);
        appendNumber(0, 8);  // the root is the first object
        appendNumber(table, 8);
    }

    const BinaryObjects& m_list;
    unsigned m_referenceSize;
    std::string m_bytes;
    std::vector<std::uint64_t> m_offsets;
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
