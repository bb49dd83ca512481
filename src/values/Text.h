#pragma once

#include "values/Shared.h"

#include <string>
#include <string_view>
#include <utility>

namespace kpx {

/// An immutable UTF-8 text. Copies share their bytes, so a name that stands in ten thousand records
/// is kept once.
class Text {
public:
    Text() = default;
    Text(std::string text) : m_bytes(text.empty() ? Shared<std::string>() : Shared<std::string>(std::move(text))) {}
    Text(std::string_view text) : Text(std::string(text)) {}
    Text(const char* text) : Text(std::string(text)) {}

    const std::string& string() const {
        static const std::string none;
        return m_bytes ? *m_bytes : none;
    }
    std::string_view view() const { return m_bytes ? std::string_view(*m_bytes) : std::string_view(); }
    operator std::string_view() const { return view(); }
    bool empty() const { return !m_bytes; }

    /// Exact equality, byte for byte.
    friend bool operator==(const Text& left, const Text& right) {
        return left.m_bytes == right.m_bytes || left.view() == right.view();
    }
    friend auto operator<=>(const Text& left, const Text& right) { return left.view() <=> right.view(); }

private:
    Shared<std::string> m_bytes;  // null when empty
};

}  // namespace kpx
