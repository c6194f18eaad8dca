#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace foundation::network::iri::detail {

/// A place for a value that is worked out on demand, at most once kept, and read by any number of threads.
///
/// Thread safety: `publish` and `get` may run at the same time on one object, and a copy may be taken
/// meanwhile; nobody waits. A reader sees nothing or a complete value. A published value is never replaced,
/// so a reference to it stays valid until the object is assigned to, reset, swapped or destroyed; these
/// need exclusive use of the object. Two threads may work out the value at once: the second throws its own
/// away.
template <class T>
class PublishedOnce {
public:
    PublishedOnce() noexcept = default;
    PublishedOnce(PublishedOnce const& other)
        : value(other.get() != nullptr ? new T(*other.get()) : nullptr) {}
    PublishedOnce(PublishedOnce&& other) noexcept : value(other.release()) {}
    PublishedOnce& operator=(PublishedOnce const& other) {
        PublishedOnce(other).swap(*this);
        return *this;
    }
    PublishedOnce& operator=(PublishedOnce&& other) noexcept {
        T* const taken = other.release();
        reset();
        value.store(taken, std::memory_order_relaxed);
        return *this;
    }
    ~PublishedOnce() { delete value.load(std::memory_order_relaxed); }

    /// The value, or null while there is none.
    [[nodiscard]] T const* get() const noexcept { return value.load(std::memory_order_acquire); }

    /// Makes `fresh` the value unless there is one, and gives the value that there is then.
    T const& publish(T&& fresh) const {
        auto own = std::make_unique<T>(std::move(fresh));
        T* there = nullptr;
        if (value.compare_exchange_strong(there, own.get(), std::memory_order_acq_rel,
                                          std::memory_order_acquire)) {
            there = own.release();
        }
        return *there;
    }

    void reset() noexcept { delete release(); }

    void swap(PublishedOnce& other) noexcept {
        T* const mine = value.load(std::memory_order_relaxed);
        value.store(other.value.load(std::memory_order_relaxed), std::memory_order_relaxed);
        other.value.store(mine, std::memory_order_relaxed);
    }

private:
    T* release() noexcept {
        T* const held = value.load(std::memory_order_relaxed);
        value.store(nullptr, std::memory_order_relaxed);
        return held;
    }

    mutable std::atomic<T*> value{nullptr};
};

} // namespace foundation::network::iri::detail
