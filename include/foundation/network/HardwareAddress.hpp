#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/core/StandardLibrary.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foundation::network {

/// The link-layer address of an adapter: any number of bytes, usually 6 (Ethernet), 8 (EUI-64) or 20
/// (InfiniBand), and none for an adapter without one. It iterates over its bytes.
///
/// Thread safety: any number of threads may read one value.
class ZVFLNETWORK_EXPORT HardwareAddress : public detail::ImmutableIterableRange<unsigned char> {
public:
    /// No bytes.
    HardwareAddress() = default;

    /// The bytes in the order in which they are written.
    explicit HardwareAddress(std::vector<unsigned char> bytes);

    /// Each byte as two lower-case hexadecimal digits, ":" between two: `00:1a:2b:3c:4d:5e`. Empty for no
    /// bytes.
    ///
    /// Throws: `std::bad_alloc` alone.
    /// Complexity: linear in the number of bytes.
    std::string toString() const;

    /// A copy of the bytes.
    ///
    /// Throws: `std::bad_alloc` alone.
    /// Complexity: linear in the number of bytes.
    std::vector<unsigned char> bytes() const;
};

/// Whether both have the same bytes.
///
/// Complexity: linear in the number of bytes; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] inline bool operator==(HardwareAddress const& left, HardwareAddress const& right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}
[[nodiscard]] inline bool operator!=(HardwareAddress const& left, HardwareAddress const& right) noexcept {
    return !(left == right);
}

/// An order over all values: the first byte that differs decides; a value comes before others that begin
/// with it.
///
/// Complexity: linear in the number of bytes; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] inline bool operator<(HardwareAddress const& left, HardwareAddress const& right) noexcept {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end());
}

/// The bytes of a text: two hexadecimal digits of either case a byte, and between all of them ":" or
/// between all of them "-". The empty text has no bytes.
///
/// Throws: the internal `std::invalid_argument`, "Invalid hardware address: " and the text;
/// `std::bad_alloc`.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT HardwareAddress parseHardwareAddress(std::string_view text);

/// The same, none for a text that is refused.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::optional<HardwareAddress> tryParseHardwareAddress(
    std::string_view text);

/// Writes `toString()` with the stream's formatting.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                             HardwareAddress const& address) {
    return stream << address.toString();
}

} // namespace foundation::network

namespace std {

/// Equal addresses have equal hashes. The number may differ between versions of the library.
///
/// Complexity: linear in the number of bytes; allocates nothing.
/// Thread safety: any number of threads may call it at once.
template <>
struct hash<foundation::network::HardwareAddress> {
    ZVFLNETWORK_EXPORT std::size_t operator()(
        foundation::network::HardwareAddress const& address) const noexcept;
};

} // namespace std
