#pragma once

#include "core/Date.h"
#include "core/Shared.h"
#include "core/Text.h"

#include <cstdint>
#include <initializer_list>
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
    using Fields = std::vector<Field>;

    Record();
    Record(std::initializer_list<Field> fields);
    /// REQUIRES: no key occurs twice.
    explicit Record(Fields fields);

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

    /// The same for records that share their fields; null when it never had any.
    const void* identity() const { return m_fields.identity(); }

    bool empty() const;
    std::size_t size() const;
    Fields::const_iterator begin() const;
    Fields::const_iterator end() const;

    /// Equal keys with equal values, whatever their order.
    friend bool operator==(const Record& left, const Record& right);

private:
    Fields& mutableFields();

    Shared<Fields> m_fields;  // null when empty
};

/// Records in their order. Where a file could be damaged, std::optional<Records> without a value is
/// "damaged", an empty array is "nothing there".
using Records = std::vector<Record>;

/// One value of a record, a table row or a property list.
class Value {
public:
    /// The unsigned integer holds only numbers too large for the signed one.
    using Variant =
        std::variant<Text, std::int64_t, std::uint64_t, double, bool, Date, Data, UniqueIdentifier, Array, Record>;

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

inline bool Record::empty() const { return size() == 0; }
inline std::size_t Record::size() const { return m_fields ? m_fields->size() : 0; }
inline Record::Fields::const_iterator Record::begin() const {
    return m_fields ? m_fields->begin() : Fields::const_iterator{};
}
inline Record::Fields::const_iterator Record::end() const {
    return m_fields ? m_fields->end() : Fields::const_iterator{};
}

/// A number's whole part, or the leading decimal integer of a text (leadingInteger()); 0 for anything
/// else. A hand-edited file may hold a count as a text.
std::int64_t integerValue(const Value& value);

}  // namespace kpx
