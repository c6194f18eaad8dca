#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/core/StandardLibrary.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace foundation::network {

/// The link-layer address of an adapter: any number of bytes, usually 6 (Ethernet), 8 (EUI-64) or 20
/// (InfiniBand), and none for an adapter without one. It iterates over its bytes.
class ZVFLNETWORK_EXPORT HardwareAddress : public detail::ImmutableIterableRange<unsigned char> {
public:
    /// No bytes.
    HardwareAddress() = default;

    /// The bytes in the order in which they are written.
    explicit HardwareAddress(std::vector<unsigned char> bytes);

    /// Each byte as two lower-case hexadecimal digits, ":" between two: `00:1a:2b:3c:4d:5e`. Empty for no
    /// bytes.
    std::string toString() const;

    /// A copy of the bytes.
    std::vector<unsigned char> bytes() const;
};

/// Writes `toString()` with the stream's formatting.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                             HardwareAddress const& address) {
    return stream << address.toString();
}

} // namespace foundation::network
