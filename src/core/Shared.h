#pragma once

#include <sys/single_threaded.h>

#include <atomic>
#include <cstddef>
#include <utility>

namespace kpx {

/// A counted pointer to a value that its copies share; null by default.
///
/// One word, where std::shared_ptr takes two: a hundred thousand records hold four million of them.
/// Counting is safe between threads, and without its cost as long as the program has only one.
template <typename T>
class Shared {
public:
    Shared() = default;
    explicit Shared(T content) : m_block(new Block{1, std::move(content)}) {}
    Shared(const Shared& other) noexcept : m_block(other.m_block) {
        if (m_block) {
            m_block->retain();
        }
    }
    Shared(Shared&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~Shared() {
        if (m_block && m_block->release()) {
            delete m_block;
        }
    }

    explicit operator bool() const { return m_block != nullptr; }
    const T& operator*() const { return m_block->content; }
    const T* operator->() const { return &m_block->content; }

    /// The same for copies that share their content, another for every other live one, null when null.
    const void* identity() const { return m_block; }

    /// REQUIRES: isUnique().
    T& mutableContent() { return m_block->content; }
    bool isUnique() const { return m_block && m_block->count.load(std::memory_order_acquire) == 1; }

    /// The same content, or both null; equal contents of their own do not count.
    friend bool operator==(const Shared& left, const Shared& right) { return left.m_block == right.m_block; }

private:
    struct Block {
        std::atomic<std::size_t> count;
        T content;

        void retain() {
            if (__libc_single_threaded) {
                count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
            } else {
                count.fetch_add(1, std::memory_order_relaxed);
            }
        }
        /// Whether this was the last holder.
        bool release() {
            if (__libc_single_threaded) {
                const std::size_t left = count.load(std::memory_order_relaxed) - 1;
                count.store(left, std::memory_order_relaxed);
                return left == 0;
            }
            return count.fetch_sub(1, std::memory_order_acq_rel) == 1;
        }
    };

    Block* m_block = nullptr;
};

}  // namespace kpx
