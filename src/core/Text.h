#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace kpx {

/// An immutable UTF-8 text. Copies share their bytes, so a name that stands in ten thousand records
/// is kept once.
class Text {
public:
    Text() = default;
    Text(std::string text) : m_bytes(text.empty() ? nullptr : std::make_shared<const std::string>(std::move(text))) {}
    Text(std::string_view text) : Text(std::string(text)) {}
    Text(const char* text) : Text(std::string(text)) {}

    const std::string& string() const {
        static const std::string none;
        return m_bytes ? *m_bytes : none;
    }
    std::string_view view() const { return m_bytes ? std::string_view(*m_bytes) : std::string_view(); }
    operator std::string_view() const { return view(); }
    bool empty() const { return m_bytes == nullptr; }

    /// Exact equality, byte for byte.
    friend bool operator==(const Text& left, const Text& right) {
        return left.m_bytes == right.m_bytes || left.view() == right.view();
    }
    friend auto operator<=>(const Text& left, const Text& right) { return left.view() <=> right.view(); }

private:
    std::shared_ptr<const std::string> m_bytes;
};

}  // namespace kpx
