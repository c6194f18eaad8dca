#pragma once

/// The read-only range that listing operations return.
///
///     for (NetworkInterface const& adapter : NetworkInterface::list()) { ... }

#include <foundation/core/Export.hpp>
#include <foundation/core/StandardLibrary.hpp>

#include <cstdint>
#include <utility>
#include <vector>

namespace foundation::network::detail {

/// Elements in a fixed order that can be read and not changed. A copy holds its own elements. A range that
/// was moved from is empty.
///
/// Thread safety: any number of threads may read one range.
template <class T>
class ZVFLNETWORK_EXPORT ImmutableIterableRange {
public:
    using value_type = T;
    using const_iterator = typename std::vector<T>::const_iterator;

    /// The empty range.
    ImmutableIterableRange() = default;

    /// The elements, in their order.
    explicit ImmutableIterableRange(std::vector<T> elements) : items(std::move(elements)) {}

    ImmutableIterableRange(ImmutableIterableRange const&) = default;
    ImmutableIterableRange(ImmutableIterableRange&&) noexcept = default;
    ImmutableIterableRange& operator=(ImmutableIterableRange const&) = default;
    /// A range that is moved to itself stays as it is.
    ImmutableIterableRange& operator=(ImmutableIterableRange&& other) noexcept {
        std::vector<T>(std::move(other.items)).swap(items);
        return *this;
    }
    ~ImmutableIterableRange() = default;

    /// The first element. Iterators are valid as long as the range, and until it is assigned to or moved
    /// from.
    const_iterator begin() const noexcept { return items.begin(); }

    /// Past the last element.
    const_iterator end() const noexcept { return items.end(); }

    /// True if there are no elements.
    bool empty() const noexcept { return items.empty(); }

    /// The number of elements.
    std::uint64_t size() const noexcept { return items.size(); }

private:
    std::vector<T> items;
};

/// The bytes under a `HardwareAddress`; they live in the library.
extern template class ImmutableIterableRange<unsigned char>;

} // namespace foundation::network::detail
