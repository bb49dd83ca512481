#include "tests/support/Json.h"

#include "tests/support/Base64.h"

#include <cmath>
#include <type_traits>
#include <utility>
#include <variant>

namespace kpx::test {

namespace {

constexpr int deepestNesting = 1000;

std::optional<Value> valueFromJson(const Json& json, const LocalTime& localTime, int depth);

std::optional<Value> valueFromObject(const Json& json, const LocalTime& localTime, int depth) {
    if (json.size() == 1 && json.begin().value().is_string()) {
        const std::string& text = json.begin().value().get_ref<const std::string&>();
        if (json.begin().key() == "date") {
            const std::optional<Date> date = localTime.parse(text);
            return date ? std::optional<Value>(*date) : std::nullopt;
        }
        if (json.begin().key() == "data") {
            std::optional<Data::Bytes> bytes = bytesFromBase64(text);
            return bytes ? std::optional<Value>(Data(std::move(*bytes))) : std::nullopt;
        }
    }
    Record record;
    for (const auto& [key, element] : json.items()) {
        std::optional<Value> value = valueFromJson(element, localTime, depth + 1);
        if (!value) {
            return std::nullopt;
        }
        record.set(key, std::move(*value));
    }
    return Value(std::move(record));
}

std::optional<Value> valueFromArray(const Json& json, const LocalTime& localTime, int depth) {
    std::vector<Value> values;
    values.reserve(json.size());
    for (const Json& element : json) {
        std::optional<Value> value = valueFromJson(element, localTime, depth + 1);
        if (!value) {
            return std::nullopt;
        }
        values.push_back(std::move(*value));
    }
    return Value(Array(std::move(values)));
}

std::optional<Value> valueFromJson(const Json& json, const LocalTime& localTime, int depth) {
    if (depth > deepestNesting) {
        return std::nullopt;
    }
    switch (json.type()) {
        case Json::value_t::string:
            return Value(json.get<std::string>());
        case Json::value_t::boolean:
            return Value(json.get<bool>());
        case Json::value_t::number_integer:
            return Value(json.get<std::int64_t>());
        case Json::value_t::number_unsigned: {
            const auto number = json.get<std::uint64_t>();
            return std::in_range<std::int64_t>(number) ? Value(static_cast<std::int64_t>(number)) : Value(number);
        }
        case Json::value_t::number_float:
            return Value(json.get<double>());
        case Json::value_t::array:
            return valueFromArray(json, localTime, depth);
        case Json::value_t::object:
            return valueFromObject(json, localTime, depth);
        default:
            return std::nullopt;
    }
}

}  // namespace

Json numberToJson(double number) {
    constexpr double exactIntegers = 9007199254740992.0;
    if (!std::isfinite(number)) {
        return nullptr;
    }
    if (number == std::trunc(number) && std::abs(number) <= exactIntegers) {
        return static_cast<std::int64_t>(number);
    }
    return number;
}

Json toJson(const Value& value, const LocalTime& localTime) {
    return std::visit(
        [&](const auto& content) -> Json {
            using Kind = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Kind, Text>) {
                return content.string();
            } else if constexpr (std::is_same_v<Kind, double>) {
                return numberToJson(content);
            } else if constexpr (std::is_same_v<Kind, Date>) {
                return Json{{"date", localTime.format(content)}};
            } else if constexpr (std::is_same_v<Kind, Data>) {
                return Json{{"data", base64FromBytes(content.bytes())}};
            } else if constexpr (std::is_same_v<Kind, UniqueIdentifier>) {
                return Json{{"uid", content.number}};
            } else if constexpr (std::is_same_v<Kind, WideInteger>) {
                return Json{{"integer", content.decimalText()}};
            } else if constexpr (std::is_same_v<Kind, Array>) {
                Json array = Json::array();
                for (const Value& element : content.values()) {
                    array.push_back(toJson(element, localTime));
                }
                return array;
            } else if constexpr (std::is_same_v<Kind, Record>) {
                return toJson(content, localTime);
            } else {
                return content;
            }
        },
        value.variant());
}

Json toJson(const Record& record, const LocalTime& localTime) {
    Json object = Json::object();
    for (const auto& [key, value] : record) {
        object[key.string()] = toJson(value, localTime);
    }
    return object;
}

Json toJson(const Records& records, const LocalTime& localTime) {
    Json array = Json::array();
    for (const Record& record : records) {
        array.push_back(toJson(record, localTime));
    }
    return array;
}

std::optional<Value> valueFromJson(const Json& json, const LocalTime& localTime) {
    return valueFromJson(json, localTime, 0);
}

std::optional<Records> recordsFromJson(const std::string& text, const LocalTime& localTime) {
    const std::optional<Json> json = parseJson(text);
    if (!json || !json->is_array()) {
        return std::nullopt;
    }
    Records records;
    for (const Json& element : *json) {
        const std::optional<Value> value = valueFromJson(element, localTime);
        const Record* record = value ? value->as<Record>() : nullptr;
        if (!record) {
            return std::nullopt;
        }
        records.push_back(*record);
    }
    return records;
}

std::optional<Json> parseJson(const std::string& text) {
    Json json = Json::parse(text, nullptr, false);
    return json.is_discarded() ? std::nullopt : std::optional(std::move(json));
}

std::string toLine(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace kpx::test
