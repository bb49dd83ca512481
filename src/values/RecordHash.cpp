#include "values/RecordHash.h"

#include <functional>
#include <string_view>
#include <type_traits>

namespace kpx {
namespace {

/// Spreads a change of any bit over all of them.
std::uint64_t mixed(std::uint64_t bits) {
    bits = (bits ^ (bits >> 32)) * 0x9e3779b97f4a7c15U;
    bits = (bits ^ (bits >> 29)) * 0x94d049bb133111ebU;
    return bits ^ (bits >> 32);
}

std::uint64_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

std::uint64_t hashOf(const Data::Bytes& bytes) {
    return hashOf(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::uint64_t hashOf(const Value& value);

std::uint64_t hashOf(const Array& array) {
    std::uint64_t hash = 0;
    for (const Value& value : array.values()) {
        hash = mixed(hash + hashOf(value));
    }
    return hash;
}

std::uint64_t hashOf(const Value& value) {
    const std::uint64_t content = std::visit(
        [](const auto& held) -> std::uint64_t {
            using Content = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Content, Text>) {
                return hashOf(held.view());
            } else if constexpr (std::is_same_v<Content, Data>) {
                return hashOf(held.bytes());
            } else if constexpr (std::is_same_v<Content, Array> || std::is_same_v<Content, Record>) {
                return hashOf(held);
            } else if constexpr (std::is_same_v<Content, Date>) {
                return std::hash<double>()(held.secondsSinceReference);
            } else if constexpr (std::is_same_v<Content, UniqueIdentifier>) {
                return held.number;
            } else if constexpr (std::is_same_v<Content, WideInteger>) {
                return mixed(static_cast<std::uint64_t>(held.high())) + held.low();
            } else {
                return std::hash<Content>()(held);
            }
        },
        value.variant());
    return mixed(content + value.variant().index());
}

}  // namespace

std::size_t hashOf(const Record& record) {
    std::uint64_t sum = 0;
    for (const auto& [key, value] : record) {
        sum += mixed(hashOf(key.view()) + 3 * hashOf(value));
    }
    return sum;
}

}  // namespace kpx
