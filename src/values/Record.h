#pragma once

#include "values/Date.h"
#include "values/Shared.h"
#include "values/Text.h"
#include "values/WideInteger.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kpx {

class Value;
class Record;

/// Binary data; copies share the bytes.
class Data {
public:
    using Bytes = std::vector<std::uint8_t>;

    Data() = default;
    explicit Data(Bytes bytes) : m_bytes(bytes.empty() ? Shared<Bytes>() : Shared<Bytes>(std::move(bytes))) {}

    const Bytes& bytes() const {
        static const Bytes none;
        return m_bytes ? *m_bytes : none;
    }
    friend bool operator==(const Data& left, const Data& right) {
        return left.m_bytes == right.m_bytes || left.bytes() == right.bytes();
    }

private:
    Shared<Bytes> m_bytes;  // null when empty
};

/// An ordered list of values; copies share the elements.
class Array {
public:
    Array();
    explicit Array(std::vector<Value> values);

    const std::vector<Value>& values() const;
    /// The same for arrays that share their elements; null when empty.
    const void* identity() const { return m_values.identity(); }
    friend bool operator==(const Array& left, const Array& right);

private:
    Shared<std::vector<Value>> m_values;  // null when empty
};

/// A keyed-archive reference in a foreign file; carried, never interpreted.
struct UniqueIdentifier {
    std::uint64_t number = 0;
    bool operator==(const UniqueIdentifier&) const = default;
};

/// A string-keyed map. The program's own records hold texts, integers and data; table rows hold dates
/// and numbers too; anything else comes from a foreign file and is carried through a rewrite.
///
/// Keys keep the order in which they were set. Copies share their fields until one of them is changed.
class Record {
public:
    using Field = std::pair<Text, Value>;

    Record() = default;
    /// REQUIRES: no key occurs twice.
    Record(std::initializer_list<Field> fields);
    Record(const Record& other) noexcept : m_block(other.m_block) {
        if (m_block) {
            m_block->holders.retain();
        }
    }
    Record(Record&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    Record& operator=(Record other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~Record() {
        if (m_block && m_block->holders.release()) {
            destroy(m_block);
        }
    }

    /// The value under the key, null when absent. Valid until the record is changed or destroyed.
    const Value* find(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// The value under the key when it is a text.
    std::optional<Text> text(std::string_view key) const;
    /// The value under the key as an integer (integerValue()); 0 when absent.
    std::int64_t integer(std::string_view key) const;
    /// The value under the key when it is a date.
    std::optional<Date> date(std::string_view key) const;

    /// Replaces the value under the key in its place, or appends it.
    void set(const Text& key, Value value);
    void remove(std::string_view key);

    /// Makes room for so many fields in all, so that none need move while they are appended.
    void reserve(std::size_t count);
    /// For building a record: a field behind the others. REQUIRES: the key is not there yet, and the value is
    /// not this very record.
    template <typename Content>
    void append(const Text& key, Content&& value);

    /// The same for records that share their fields; null when there was never room for any.
    const void* identity() const { return m_block; }

    bool empty() const { return size() == 0; }
    std::size_t size() const { return m_block ? m_block->size : 0; }
    const Field* begin() const;
    const Field* end() const;

    /// Equal keys with equal values, whatever their order.
    friend bool operator==(const Record& left, const Record& right);

private:
    /// What all copies share, in one piece of memory with the fields, which stand behind it: a history has
    /// one for every fill.
    struct Block {
        HolderCount holders;
        std::uint32_t size = 0;
        std::uint32_t room = 0;
    };

    static Field* fieldsOf(Block* block);
    static std::size_t bytesOf(std::size_t room);
    static void destroy(Block* block) noexcept;
    /// The fields, not shared with any other record, and with room for so many.
    Field* ownFields(std::size_t room);
    void appendWithMoreRoom(Field field);

    Block* m_block = nullptr;  // null when empty
};

/// Records in their order. Where a file could be damaged, std::optional<Records> without a value is
/// "damaged", an empty array is "nothing there".
using Records = std::vector<Record>;

/// One value of a record, a table row or a property list.
class Value {
public:
    /// The unsigned integer holds only numbers too large for the signed one.
    using Variant = std::variant<Text, std::int64_t, std::uint64_t, double, bool, Date, Data, UniqueIdentifier, Array,
                                 Record, WideInteger>;

    Value(Text text) : m_value(std::move(text)) {}
    Value(std::string text) : m_value(Text(std::move(text))) {}
    Value(std::string_view text) : m_value(Text(text)) {}
    Value(const char* text) : m_value(Text(text)) {}
    Value(int number) : m_value(std::int64_t{number}) {}
    Value(std::int64_t number) : m_value(number) {}
    Value(std::uint64_t number);
    Value(double number) : m_value(number) {}
    Value(bool truth) : m_value(truth) {}
    Value(Date date) : m_value(date) {}
    Value(Data data) : m_value(std::move(data)) {}
    Value(UniqueIdentifier identifier) : m_value(identifier) {}
    Value(Array array) : m_value(std::move(array)) {}
    Value(Record record) : m_value(std::move(record)) {}
    /// REQUIRES: the number does not fit the smaller kinds.
    Value(WideInteger number) : m_value(std::move(number)) {}

    /// The content when it is of the kind T, else null.
    template <typename T>
    const T* as() const {
        return std::get_if<T>(&m_value);
    }
    const Variant& variant() const { return m_value; }

    /// Same kind and same content.
    friend bool operator==(const Value&, const Value&) = default;

private:
    Variant m_value;
};
static_assert(sizeof(Value) == 16);

inline Record::Field* Record::fieldsOf(Block* block) {
    static_assert(sizeof(Block) % alignof(Field) == 0 && alignof(Field) <= alignof(Block));
    return reinterpret_cast<Field*>(block + 1);
}
inline std::size_t Record::bytesOf(std::size_t room) { return sizeof(Block) + room * sizeof(Field); }
inline const Record::Field* Record::begin() const { return m_block ? fieldsOf(m_block) : nullptr; }
inline const Record::Field* Record::end() const { return begin() + size(); }

template <typename Content>
void Record::append(const Text& key, Content&& value) {
    if (!m_block || m_block->size == m_block->room || !m_block->holders.isOne()) {
        return appendWithMoreRoom(Field(key, std::forward<Content>(value)));
    }
    std::construct_at(fieldsOf(m_block) + m_block->size, key, std::forward<Content>(value));
    ++m_block->size;
}

/// A number's whole part, or the leading decimal integer of a text (leadingInteger()); 0 for anything
/// else. A hand-edited file may hold a count as a text.
std::int64_t integerValue(const Value& value);

/// The value as a text: a text as it is, a number in its fewest decimals, a truth value as 1 or 0, since a
/// hand-edited file may hold a number where a name belongs. None for a date, for binary data and the like, and
/// for null, so that what Record::find() answers can be asked at once.
std::optional<Text> textOfValue(const Value* value);

}  // namespace kpx
