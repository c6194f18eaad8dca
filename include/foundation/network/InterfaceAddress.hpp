#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/network/InetAddress.hpp>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

namespace foundation::network {

class InterfaceAddressImpl;

/// An address on a link: the host's address and the length of the link's prefix.
///
/// Copies share the content, which never changes. A value that was moved from holds nothing: it may be
/// assigned to or destroyed, and nothing else.
///
/// Throws: besides what each operation names, `std::bad_alloc`, unless the operation is `noexcept`.
/// Exception safety: an operation that throws changes nothing.
/// Thread safety: any number of threads may read one value.
class ZVFLNETWORK_EXPORT InterfaceAddress {
public:
    /// 0.0.0.0 with a prefix of 0 bits.
    InterfaceAddress();

    /// The address, not masked by the prefix; the name that it was found by is not kept.
    ///
    /// Throws: `std::out_of_range`, "prefix length too large", above 32 bits for IPv4 and 128 for IPv6.
    /// That is no exception of the internal family.
    InterfaceAddress(InetAddress address, unsigned short prefixLength);

    InterfaceAddress(InterfaceAddress const& other);
    InterfaceAddress(InterfaceAddress&& other) noexcept;
    InterfaceAddress& operator=(InterfaceAddress const& other);
    InterfaceAddress& operator=(InterfaceAddress&& other) noexcept;
    ~InterfaceAddress();

    /// The address, under no name.
    InetAddress getInetAddress() const;

    /// The length of the prefix in bits.
    unsigned short prefixLength() const noexcept;

    /// The address' text with its scope id, "/" and the length of the prefix: `192.168.1.10/24`,
    /// `fe80::1/64`.
    std::string toString() const;

private:
    friend class InterfaceAddressImpl;
    friend class NetworkInterface;

    explicit InterfaceAddress(std::shared_ptr<InterfaceAddressImpl> address) noexcept;

    std::shared_ptr<InterfaceAddressImpl> impl;
};

/// Whether address, scope id and length of the prefix are the same.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT bool operator==(InterfaceAddress const& left,
                                                 InterfaceAddress const& right) noexcept;
[[nodiscard]] inline bool operator!=(InterfaceAddress const& left, InterfaceAddress const& right) noexcept {
    return !(left == right);
}

/// An order over all values: that of the addresses, then the length of the prefix.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT bool operator<(InterfaceAddress const& left,
                                                InterfaceAddress const& right) noexcept;

/// Writes `toString()` with the stream's formatting.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                             InterfaceAddress const& address) {
    return stream << address.toString();
}

} // namespace foundation::network

namespace std {

/// Equal values have equal hashes. The number may differ between versions of the library.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
template <>
struct hash<foundation::network::InterfaceAddress> {
    ZVFLNETWORK_EXPORT std::size_t operator()(
        foundation::network::InterfaceAddress const& address) const noexcept;
};

} // namespace std
