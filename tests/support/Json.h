#pragma once

#include "tests/support/LocalTime.h"
#include "values/Record.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <optional>
#include <string>

namespace kpx::test {

/// Keys keep the order in which they were set.
using Json = nlohmann::ordered_json;

/// Receives what happens while the program runs, one object an event.
using EventSink = std::function<void(const Json& event)>;

/// A whole number without ".0", any other as its shortest text; null for one that is no number.
Json numberToJson(double number);

/// Texts and numbers as themselves, a date as {"date":"2024-03-05T00:00:00"}, data as
/// {"data":"BASE64"}, a record as an object.
Json toJson(const Value& value, const LocalTime& localTime);
Json toJson(const Record& record, const LocalTime& localTime);
Json toJson(const Records& records, const LocalTime& localTime);

/// The inverse; null for a JSON null, for a date or data that does not read, and for nesting without end.
std::optional<Value> valueFromJson(const Json& json, const LocalTime& localTime);
/// Null unless the text is a JSON array of objects.
std::optional<Records> recordsFromJson(const std::string& text, const LocalTime& localTime);
/// Null unless the text is JSON.
std::optional<Json> parseJson(const std::string& text);

/// On one line; bytes that are no UTF-8 become U+FFFD.
std::string toLine(const Json& json);

}  // namespace kpx::test
