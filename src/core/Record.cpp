#include "core/Record.h"

#include "core/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace kpx {

Array::Array() = default;
Array::Array(std::vector<Value> values)
    : m_values(values.empty() ? Shared<std::vector<Value>>() : Shared<std::vector<Value>>(std::move(values))) {}

const std::vector<Value>& Array::values() const {
    static const std::vector<Value> none;
    return m_values ? *m_values : none;
}

bool operator==(const Array& left, const Array& right) {
    return left.m_values == right.m_values || left.values() == right.values();
}

Value::Value(std::uint64_t number) {
    constexpr auto largestSigned = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (number <= largestSigned) {
        m_value = static_cast<std::int64_t>(number);
    } else {
        m_value = number;
    }
}

Record::Record() = default;
Record::Record(std::initializer_list<Field> fields) : Record(Fields(fields)) {}
Record::Record(Fields fields) : m_fields(fields.empty() ? Shared<Fields>() : Shared<Fields>(std::move(fields))) {}

const Value* Record::find(std::string_view key) const {
    for (const Field& field : *this) {
        if (field.first.view() == key) {
            return &field.second;
        }
    }
    return nullptr;
}

std::optional<Text> Record::text(std::string_view key) const {
    const Value* value = find(key);
    const Text* text = value ? value->as<Text>() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

std::int64_t Record::integer(std::string_view key) const {
    const Value* value = find(key);
    return value ? integerValue(*value) : 0;
}

std::optional<Date> Record::date(std::string_view key) const {
    const Value* value = find(key);
    const Date* date = value ? value->as<Date>() : nullptr;
    return date ? std::optional(*date) : std::nullopt;
}

Record::Fields& Record::mutableFields() {
    if (!m_fields.isUnique()) {
        m_fields = Shared<Fields>(m_fields ? *m_fields : Fields());
    }
    return m_fields.mutableContent();
}

void Record::set(const Text& key, Value value) {
    Fields& fields = mutableFields();
    const auto field = std::ranges::find(fields, key, &Field::first);
    if (field != fields.end()) {
        field->second = std::move(value);
    } else {
        fields.emplace_back(key, std::move(value));
    }
}

void Record::remove(std::string_view key) {
    if (contains(key)) {
        std::erase_if(mutableFields(), [&](const Field& field) { return field.first.view() == key; });
    }
}

bool operator==(const Record& left, const Record& right) {
    if (left.m_fields == right.m_fields) {
        return true;
    }
    if (left.size() != right.size()) {
        return false;
    }
    // Most records that are compared have their keys in the same order.
    const auto [leftOther, rightOther] = std::mismatch(left.begin(), left.end(), right.begin());
    if (leftOther == left.end()) {
        return true;
    }
    if (leftOther->first == rightOther->first) {
        return false;
    }
    constexpr std::size_t fewFields = 32;
    if (left.size() <= fewFields) {
        return std::all_of(leftOther, left.end(), [&](const Record::Field& field) {
            const Value* other = right.find(field.first);
            return other && *other == field.second;
        });
    }
    std::unordered_map<std::string_view, const Value*> others;
    for (auto field = rightOther; field != right.end(); ++field) {
        others.emplace(field->first.view(), &field->second);
    }
    return std::all_of(leftOther, left.end(), [&](const Record::Field& field) {
        const auto other = others.find(field.first.view());
        return other != others.end() && *other->second == field.second;
    });
}

std::int64_t integerValue(const Value& value) {
    if (const auto* number = value.as<std::int64_t>()) {
        return *number;
    }
    if (const auto* text = value.as<Text>()) {
        return leadingInteger(*text);
    }
    if (const auto* number = value.as<double>()) {
        // Both bounds are exact doubles; a cast from outside them would be undefined.
        if (!(std::abs(*number) < 9223372036854775808.0)) {
            return 0;
        }
        return static_cast<std::int64_t>(*number);
    }
    if (const auto* truth = value.as<bool>()) {
        return *truth ? 1 : 0;
    }
    if (value.as<std::uint64_t>()) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return 0;
}

}  // namespace kpx
