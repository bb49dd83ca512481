#include "core/BinaryPropertyList.h"
#include "core/PropertyListFields.h"
#include "core/PropertyListLimits.h"
#include "core/PropertyListUnicode.h"

#include <algorithm>
#include <bit>

namespace kpx {
namespace {

constexpr std::size_t trailerSize = 32;

class Reader {
public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes), m_maximumPlaces(maximumPlaces(bytes.size())) {}

    std::optional<Value> read() {
        if (!readTrailer() || !offsetsAreInside() || !readObject(m_root, 1)) {
            return std::nullopt;
        }
        return std::move(m_objects[m_root].value);
    }

private:
    enum class State : std::uint8_t { unread, beingRead, read };

    struct Object {
        Value value = Text();
        std::uint64_t places = 1;  // the values it stands for, itself included
        std::uint16_t height = 0;  // containers inside one another, itself included
        State state = State::unread;
    };

    /// The bytes of one object still to be read.
    struct Cursor {
        std::size_t position;
        std::size_t end;
        std::size_t left() const { return end - position; }
    };

    std::uint8_t byteAt(std::size_t position) const { return static_cast<std::uint8_t>(m_bytes[position]); }

    /// A big-endian number of 1 to 8 bytes. REQUIRES: they lie inside the input.
    std::uint64_t numberAt(std::size_t position, std::size_t size) const {
        std::uint64_t number = 0;
        for (std::size_t index = 0; index < size; ++index) {
            number = number << 8 | byteAt(position + index);
        }
        return number;
    }

    bool readTrailer() {
        if (!m_bytes.starts_with(binaryPropertyListHeader) ||
            m_bytes.size() < binaryPropertyListHeader.size() + trailerSize) {
            return false;
        }
        const std::size_t trailer = m_bytes.size() - trailerSize;
        m_offsetSize = byteAt(trailer + 6);
        m_referenceSize = byteAt(trailer + 7);
        const std::uint64_t count = numberAt(trailer + 8, 8);
        const std::uint64_t root = numberAt(trailer + 16, 8);
        const std::uint64_t table = numberAt(trailer + 24, 8);
        if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8 || root >= count ||
            table <= binaryPropertyListHeader.size() || table >= trailer) {
            return false;
        }
        const std::size_t tableSize = trailer - table;
        const std::size_t objectBytes = table - binaryPropertyListHeader.size();
        if (tableSize % m_offsetSize != 0 || tableSize / m_offsetSize != count || count > objectBytes) {
            return false;
        }
        m_table = table;
        m_root = root;
        m_bytesLeft = objectBytes;
        m_objects.resize(count);
        return true;
    }

    std::uint64_t offsetOf(std::uint64_t object) const {
        return numberAt(m_table + object * m_offsetSize, m_offsetSize);
    }

    bool offsetsAreInside() const {
        for (std::size_t object = 0; object < m_objects.size(); ++object) {
            const std::uint64_t offset = offsetOf(object);
            if (offset < binaryPropertyListHeader.size() || offset >= m_table) {
                return false;
            }
        }
        return true;
    }

    /// Makes m_objects[index] hold its value. `depth` is how many containers the object would stand in,
    /// itself included.
    bool readObject(std::uint64_t index, std::uint32_t depth) {
        Object& object = m_objects[index];
        if (object.state == State::read) {
            return true;
        }
        if (object.state == State::beingRead) {
            return false;  // a cycle
        }
        object.state = State::beingRead;
        const std::size_t start = offsetOf(index);
        Cursor cursor{start + 1, m_table};
        const std::uint8_t marker = byteAt(start);
        if (!readContent(object, marker >> 4, marker & 0x0F, cursor, depth)) {
            return false;
        }
        object.state = State::read;
        return true;
    }

    bool readContent(Object& object, unsigned kind, unsigned low, Cursor cursor, std::uint32_t depth) {
        switch (kind) {
            case 0x0:
                object.value = low == 0x9;
                return (low == 0x8 || low == 0x9) && spend(1);
            case 0x1:
                return readInteger(object, low, cursor);
            case 0x2:
                return readReal(object, low, cursor);
            case 0x3:
                return low == 0x3 && readDate(object, cursor);
            case 0x4:
                return readData(object, low, cursor);
            case 0x5:
                return readAsciiText(object, low, cursor);
            case 0x6:
                return readUtf16Text(object, low, cursor);
            case 0x8:
                return readUniqueIdentifier(object, low, cursor);
            case 0xA:
                return readArray(object, low, cursor, depth);
            case 0xD:
                return readDictionary(object, low, cursor, depth);
            default:
                return false;
        }
    }

    /// Objects that do not overlap have no more bytes together than there are. Without this bound a
    /// short file could lay a million long arrays over the same bytes.
    bool spend(std::size_t byteCount) {
        if (byteCount > m_bytesLeft) {
            return false;
        }
        m_bytesLeft -= byteCount;
        return true;
    }

    bool readInteger(Object& object, unsigned low, Cursor cursor) {
        const std::size_t size = std::size_t{1} << low;
        if (low > 4 || cursor.left() < size || !spend(1 + size)) {
            return false;
        }
        if (size == 16) {
            const std::uint64_t high = numberAt(cursor.position, 8);
            const std::uint64_t number = numberAt(cursor.position + 8, 8);
            const bool isNegative = number >> 63 != 0 && high == ~std::uint64_t{0};
            object.value = isNegative ? Value(static_cast<std::int64_t>(number)) : Value(number);
            return isNegative || high == 0;
        }
        // Eight bytes are signed, fewer are not.
        object.value = static_cast<std::int64_t>(numberAt(cursor.position, size));
        return true;
    }

    bool readReal(Object& object, unsigned low, Cursor cursor) {
        const std::size_t size = std::size_t{1} << low;
        if ((low != 2 && low != 3) || cursor.left() < size || !spend(1 + size)) {
            return false;
        }
        const std::uint64_t bits = numberAt(cursor.position, size);
        object.value =
            low == 3 ? std::bit_cast<double>(bits) : double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))};
        return true;
    }

    bool readDate(Object& object, Cursor cursor) {
        if (cursor.left() < 8 || !spend(9)) {
            return false;
        }
        object.value = Date{std::bit_cast<double>(numberAt(cursor.position, 8))};
        return true;
    }

    bool readUniqueIdentifier(Object& object, unsigned low, Cursor cursor) {
        const std::size_t size = low + 1;
        if (size > 8 || cursor.left() < size || !spend(1 + size)) {
            return false;
        }
        object.value = UniqueIdentifier{numberAt(cursor.position, size)};
        return true;
    }

    /// Reads the length of an object of elements of the given size, moving the cursor to the first of
    /// them. False when they do not lie inside.
    bool readLength(unsigned low, std::size_t elementSize, Cursor& cursor, std::size_t& length) {
        const std::size_t start = cursor.position;
        length = low;
        if (low == 0xF) {
            if (cursor.left() < 1 || (byteAt(start) & 0xF0) != 0x10) {
                return false;
            }
            const unsigned exponent = byteAt(start) & 0x0F;
            const std::size_t size = std::size_t{1} << exponent;
            if (exponent > 3 || cursor.left() < 1 + size) {
                return false;
            }
            length = numberAt(start + 1, size);
            cursor.position += 1 + size;
        }
        return length <= cursor.left() / elementSize && spend(1 + (cursor.position - start) + length * elementSize);
    }

    bool readData(Object& object, unsigned low, Cursor cursor) {
        std::size_t length = 0;
        if (!readLength(low, 1, cursor, length)) {
            return false;
        }
        const std::string_view bytes = m_bytes.substr(cursor.position, length);
        object.value = Data(Data::Bytes(bytes.begin(), bytes.end()));
        return true;
    }

    bool readAsciiText(Object& object, unsigned low, Cursor cursor) {
        std::size_t length = 0;
        if (!readLength(low, 1, cursor, length)) {
            return false;
        }
        const std::string_view text = m_bytes.substr(cursor.position, length);
        object.value = text;
        return isAscii(text);
    }

    bool readUtf16Text(Object& object, unsigned low, Cursor cursor) {
        std::size_t length = 0;
        if (!readLength(low, 2, cursor, length)) {
            return false;
        }
        object.value = *utf8FromUtf16(m_bytes.substr(cursor.position, length * 2), true);
        return true;
    }

    /// Reads the object that the reference at the position names and counts it to its container. Null
    /// when it cannot be read.
    const Value* readElement(Object& container, std::size_t position, std::uint32_t depth) {
        const std::uint64_t index = numberAt(position, m_referenceSize);
        if (index >= m_objects.size() || !readObject(index, depth + 1)) {
            return nullptr;
        }
        const Object& element = m_objects[index];
        container.height = std::max<std::uint16_t>(container.height, element.height + 1);
        container.places += element.places;
        const bool isBounded = container.height <= maximumNesting && container.places <= m_maximumPlaces;
        return isBounded ? &element.value : nullptr;
    }

    bool readArray(Object& object, unsigned low, Cursor cursor, std::uint32_t depth) {
        std::size_t length = 0;
        if (depth > maximumNesting || !readLength(low, m_referenceSize, cursor, length)) {
            return false;
        }
        object.height = 1;
        std::vector<Value> values;
        values.reserve(length);
        for (std::size_t index = 0; index < length; ++index) {
            const Value* value = readElement(object, cursor.position + index * m_referenceSize, depth);
            if (!value) {
                return false;
            }
            values.push_back(*value);
        }
        object.value = Array(std::move(values));
        return true;
    }

    bool readDictionary(Object& object, unsigned low, Cursor cursor, std::uint32_t depth) {
        std::size_t length = 0;
        if (depth > maximumNesting || !readLength(low, 2 * m_referenceSize, cursor, length)) {
            return false;
        }
        object.height = 1;
        Record::Fields fields;
        fields.reserve(length);
        const std::size_t keysSize = length * m_referenceSize;
        for (std::size_t index = 0; index < length; ++index) {
            const std::size_t position = cursor.position + index * m_referenceSize;
            const Value* key = readElement(object, position, depth);
            const Text* text = key ? key->as<Text>() : nullptr;
            const Value* value = text ? readElement(object, position + keysSize, depth) : nullptr;
            if (!value) {
                return false;
            }
            fields.emplace_back(*text, *value);
        }
        const std::string_view keys = m_bytes.substr(cursor.position, keysSize);
        if (keys == m_distinctKeys) {
            object.value = Record(std::move(fields));
            return true;
        }
        Record record = recordKeepingLastValues(std::move(fields));
        if (record.size() == length) {
            m_distinctKeys = keys;
        }
        object.value = std::move(record);
        return true;
    }

    std::string_view m_bytes;
    std::uint64_t m_maximumPlaces;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::size_t m_table = 0;
    std::uint64_t m_root = 0;
    std::size_t m_bytesLeft = 0;  // of the objects, for those not yet read
    std::vector<Object> m_objects;
    std::string_view m_distinctKeys;  // the key references last found without a repetition: most records have the same
};

}  // namespace

std::optional<Value> readBinaryPropertyList(std::string_view bytes) { return Reader(bytes).read(); }

}  // namespace kpx
