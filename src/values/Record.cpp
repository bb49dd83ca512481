#include "values/Record.h"

#include "values/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory_resource>
#include <new>
#include <type_traits>
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

namespace {

/// Where records keep their fields: a hundred thousand blocks of a few sizes come and go with every reading of a
/// history: an Add to so many takes 270 ms with a pool of such blocks and 450 ms without (bench/history). Never
/// destroyed, as records may outlive every other object.
std::pmr::memory_resource& recordMemory() {
#ifdef KPX_SANITIZED
    return *std::pmr::new_delete_resource();  // a sanitizer sees through this one
#else
    static auto* const pool = new std::pmr::unsynchronized_pool_resource();
    return *pool;
#endif
}

}  // namespace

Record::Record(std::initializer_list<Field> fields) {
    reserve(fields.size());
    for (const auto& [key, value] : fields) {
        append(key, value);
    }
}

void Record::destroy(Block* block) noexcept {
    const std::size_t bytes = bytesOf(block->room);
    std::destroy_n(fieldsOf(block), block->size);
    std::destroy_at(block);
    recordMemory().deallocate(block, bytes, alignof(Block));
}

Record::Field* Record::ownFields(std::size_t room) {
    const bool isOwn = m_block && m_block->holders.isOne();
    if (isOwn && room <= m_block->room) {
        return fieldsOf(m_block);
    }
    if (m_block && room > m_block->room) {
        room = std::max(room, 2 * std::size_t{m_block->room});
    }
    if (room > std::numeric_limits<std::uint32_t>::max()) {
        throw std::bad_alloc();
    }
    Record own;
    own.m_block = std::construct_at(static_cast<Block*>(recordMemory().allocate(bytesOf(room), alignof(Block))));
    own.m_block->room = static_cast<std::uint32_t>(room);
    for (std::size_t place = 0; place < size(); ++place) {
        Field& field = fieldsOf(m_block)[place];
        if (isOwn) {
            own.append(field.first, std::move(field.second));
        } else {
            own.append(field.first, field.second);
        }
    }
    *this = std::move(own);
    return fieldsOf(m_block);
}

void Record::appendWithMoreRoom(Field field) {
    Field* fields = ownFields(size() + 1);
    std::construct_at(fields + size(), std::move(field));
    ++m_block->size;
}

void Record::reserve(std::size_t count) {
    if (count > 0) {
        ownFields(std::max(count, size()));
    }
}

const Value* Record::find(std::string_view key) const {
    const auto field =
        std::find_if(begin(), end(), [&](const Field& candidate) { return candidate.first.view() == key; });
    return field == end() ? nullptr : &field->second;
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

void Record::set(const Text& key, Value value) {
    const auto place = std::ranges::find(*this, key, &Field::first) - begin();
    if (static_cast<std::size_t>(place) < size()) {
        ownFields(size())[place].second = std::move(value);
    } else {
        append(key, std::move(value));
    }
}

void Record::remove(std::string_view key) {
    const auto place =
        std::find_if(begin(), end(), [&](const Field& field) { return field.first.view() == key; }) - begin();
    if (static_cast<std::size_t>(place) == size()) {
        return;
    }
    Field* fields = ownFields(size());
    std::move(fields + place + 1, fields + size(), fields + place);
    --m_block->size;
    std::destroy_at(fields + size());
}

bool operator==(const Record& left, const Record& right) {
    if (left.m_block == right.m_block) {
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
    if (const auto* number = value.as<WideInteger>()) {
        return number->high() < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    return 0;
}

std::optional<Text> textOfValue(const Value* value) {
    if (!value) {
        return std::nullopt;
    }
    return std::visit(
        [](const auto& content) -> std::optional<Text> {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, Text>) {
                return content;
            } else if constexpr (std::is_same_v<Content, WideInteger>) {
                return content.decimalText();
            } else if constexpr (std::is_same_v<Content, bool>) {
                return content ? "1" : "0";
            } else if constexpr (std::is_arithmetic_v<Content>) {
                std::array<char, 32> buffer;
                char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), content).ptr;
                return std::string(buffer.data(), end);
            } else {
                return std::nullopt;
            }
        },
        value->variant());
}

}  // namespace kpx
