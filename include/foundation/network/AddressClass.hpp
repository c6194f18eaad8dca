#pragma once

/// What an address is for, by the registries of IANA.
///
///     #include <foundation/network/AddressClass.hpp>
///
///     classify(InetAddress("192.168.7.1"));     // AddressClass::PrivateUse
///     isGlobal(InetAddress("2001:db8::1"));     // false: that is for documentation
///
/// The blocks are those of the IPv4 and the IPv6 Special-Purpose Address Registry as they were on 2026-11-23,
/// and the two multicast blocks. A later version of this library may know more blocks.
///
/// An IPv4-mapped address is `Mapped`, whatever is in it; ask for the address in it with `unmapped`.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/InetAddress.hpp>

#include <optional>

namespace foundation::network {

/// What the smallest block is for that holds an address.
enum class AddressClass : unsigned char {
    Global,             ///< in no block
    Unspecified,        ///< 0.0.0.0 and ::
    ThisNetwork,        ///< 0.0.0.0/8, hosts of this network
    PrivateUse,         ///< 10.0.0.0/8, 172.16.0.0/12, 192.168.0.0/16
    UniqueLocal,        ///< fc00::/7, what private use is in IPv6
    Shared,             ///< 100.64.0.0/10, between a provider and its customers
    Loopback,           ///< 127.0.0.0/8 and ::1
    LinkLocal,          ///< 169.254.0.0/16 and fe80::/10
    ProtocolAssignment, ///< set aside for a protocol: anycast, AS112, ORCHID, segment identifiers and others
    Documentation,      ///< 192.0.2.0/24, 2001:db8::/32 and others
    Benchmarking,       ///< 198.18.0.0/15 and 2001:2::/48
    Multicast,          ///< 224.0.0.0/4 and ff00::/8
    Reserved,           ///< 240.0.0.0/4
    Broadcast,          ///< 255.255.255.255
    Mapped,             ///< an IPv4 address written as IPv6 (RFC 4291, section 2.5.5.2)
    Translated,         ///< between the versions: 64:ff9b::/96, 64:ff9b:1::/48, Teredo, 6to4
    Discard,            ///< 100::/64, where nothing arrives, and the dummy prefix 100:0:0:1::/64
};

/// The class of the smallest block that holds an address, `AddressClass::Global` where none does. A scope
/// id plays no part.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 6890 and the registries; the RFC of each block stands beside it in
/// `src/inet/AddressClass.cpp`.
[[nodiscard]] ZVFLNETWORK_EXPORT AddressClass classify(InetAddress const& address) noexcept;

/// Whether the registries call the smallest block that holds an address "Globally Reachable", or no block
/// holds it. False where they say "N/A", as for 6to4, and for all multicast.
///
/// This is not whether the class is `Global`: 192.0.0.9 is a `ProtocolAssignment` and globally reachable.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT bool isGlobal(InetAddress const& address) noexcept;

/// Whether the class is `PrivateUse` (RFC 1918) or `UniqueLocal` (RFC 4193).
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] inline bool isPrivate(InetAddress const& address) noexcept {
    AddressClass const found = classify(address);
    return found == AddressClass::PrivateUse || found == AddressClass::UniqueLocal;
}

/// Whether the class is `LinkLocal` (RFC 3927, RFC 4291). Link-local multicast is none.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] inline bool isLinkLocal(InetAddress const& address) noexcept {
    return classify(address) == AddressClass::LinkLocal;
}

/// The IPv4 address in an IPv4-mapped one, 192.0.2.1 for `::ffff:192.0.2.1`; none for any other address. A
/// scope id plays no part.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: constant; one allocation, that of an `InetAddress`.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 4291, section 2.5.5.2.
[[nodiscard]] ZVFLNETWORK_EXPORT std::optional<InetAddress> unmapped(InetAddress const& address);

} // namespace foundation::network
