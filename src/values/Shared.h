#pragma once

#include <cstddef>
#include <utility>

namespace kpx {

/// How many hold something together; one at first. Not for two threads: the records of a program are its main thread's.
/// Counting for several would take half as long again to read a history.
class HolderCount {
public:
    void retain() noexcept { ++m_count; }
    /// Whether this was the last holder.
    [[nodiscard]] bool release() noexcept { return --m_count == 0; }
    bool isOne() const noexcept { return m_count == 1; }

private:
    std::size_t m_count = 1;
};

/// A counted pointer to a value that its copies share; null by default.
///
/// One word, where std::shared_ptr takes two: a hundred thousand records hold four million of them.
template <typename T>
class Shared {
public:
    Shared() = default;
    explicit Shared(T content) : m_block(new Block{{}, std::move(content)}) {}
    Shared(const Shared& other) noexcept : m_block(other.m_block) {
        if (m_block) {
            m_block->holders.retain();
        }
    }
    Shared(Shared&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~Shared() {
        if (m_block && m_block->holders.release()) {
            delete m_block;
        }
    }

    explicit operator bool() const { return m_block != nullptr; }
    const T& operator*() const { return m_block->content; }
    const T* operator->() const { return &m_block->content; }

    /// The same for copies that share their content, another for every other live one, null when null.
    const void* identity() const { return m_block; }

    /// The same content, or both null; equal contents of their own do not count.
    friend bool operator==(const Shared& left, const Shared& right) { return left.m_block == right.m_block; }

private:
    struct Block {
        HolderCount holders;
        T content;
    };

    Block* m_block = nullptr;
};

}  // namespace kpx
