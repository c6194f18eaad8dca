#pragma once

/// Networks: the addresses that begin with the same bits.
///
///     #include <foundation/network/InetNetwork.hpp>
///
///     InetNetwork const lan("192.168.0.0/16");
///     lan.contains(InetAddress("192.168.7.1"));                       // true
///     InetNetwork::masked(InetAddress("192.168.7.1"), 24).toString(); // 192.168.7.0/24
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <array>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network {

/// A network of IPv4 or IPv6: an address and how many of its first bits all addresses of the network share.
/// The bits behind these, the host bits, are zero.
///
/// A plain value of 18 bytes that owns no memory; copying it allocates nothing.
///
/// Throws: `std::bad_alloc`, of operations that give an `InetAddress` or a text, besides what each
/// operation names.
/// Thread safety: any number of threads may read one value.
/// Source: RFC 4632, section 3.1 (IPv4); RFC 4291, section 2.3 (IPv6).
class ZVFLNETWORK_EXPORT InetNetwork {
public:
    /// The network of the addresses whose first `prefixLength` bits are those of `address`.
    ///
    /// Throws: `std::out_of_range`, "prefix length too large", above 32 bits for IPv4 and 128 for IPv6,
    /// which is no exception of the internal family; the internal `std::invalid_argument`, "Invalid
    /// network: ", the address, "/" and the length, where the address has a scope id or a host bit that is
    /// set: "Invalid network: 10.0.0.1/8".
    /// Complexity: constant; allocates nothing where it does not throw.
    InetNetwork(InetAddress const& address, unsigned short prefixLength);

    /// A network from its text: the numeric text of an address as `InetAddress` takes it, without a "%";
    /// "/"; the length of the prefix in decimal, without a sign and without a zero in front of other
    /// digits.
    ///
    /// Throws: `std::out_of_range`, "prefix length too large", for an address and a length that is a number
    /// above 32 for IPv4 and 128 for IPv6, which is no exception of the internal family; the internal
    /// `std::invalid_argument`, "Invalid network: " and the text, for any other text that is none.
    /// Complexity: linear in the length of `text`.
    explicit InetNetwork(std::string const& text);

    /// The network that an address is in: host bits are cleared and a scope id is left out.
    ///
    /// Throws: `std::out_of_range`, "prefix length too large", above 32 bits for IPv4 and 128 for IPv6,
    /// which is no exception of the internal family.
    /// Complexity: constant; allocates nothing where it does not throw.
    [[nodiscard]] static InetNetwork masked(InetAddress const& address, unsigned short prefixLength);

    /// Whether an address is one of the network's. Its scope id plays no part. Addresses of the other version
    /// are not in it: an IPv4-mapped address (RFC 4291, section 2.5.5.2) is in no IPv4 network, see
    /// `unmapped`.
    ///
    /// Complexity: constant; allocates nothing.
    [[nodiscard]] bool contains(InetAddress const& address) const noexcept;

    /// Whether all addresses of another network are in this one; a network contains itself.
    ///
    /// Complexity: constant; allocates nothing.
    [[nodiscard]] bool contains(InetNetwork const& other) const noexcept;

    /// Whether any address is in both: then one network contains the other.
    ///
    /// Complexity: constant; allocates nothing.
    [[nodiscard]] bool overlaps(InetNetwork const& other) const noexcept;

    /// The lowest address, with all host bits zero.
    ///
    /// Complexity: constant; one allocation, that of an `InetAddress`.
    [[nodiscard]] InetAddress getFirst() const;

    /// The highest address, with all host bits set.
    ///
    /// Complexity: constant; one allocation, that of an `InetAddress`.
    [[nodiscard]] InetAddress getLast() const;

    /// The bits of the prefix set and the host bits zero: 255.0.0.0 for 10.0.0.0/8.
    ///
    /// Complexity: constant; one allocation, that of an `InetAddress`.
    [[nodiscard]] InetAddress getNetmask() const;

    /// The address that reaches all hosts of the network, its last one. None for IPv6, which has no
    /// broadcast, and for a prefix of 31 (RFC 3021) or 32 bits.
    ///
    /// Complexity: constant; one allocation, that of an `InetAddress`.
    [[nodiscard]] std::optional<InetAddress> getBroadcast() const;

    /// The length of the prefix in bits: 0 to 32 for IPv4, 0 to 128 for IPv6.
    [[nodiscard]] unsigned short getPrefixLength() const noexcept { return length; }

    /// The first address' text, "/" and the length of the prefix: `10.0.0.0/8`, `2001:db8::/32`. As a text
    /// it gives the same network again.
    ///
    /// Complexity: constant.
    [[nodiscard]] std::string toString() const;

    /// Whether version, bits and length of the prefix are the same.
    ///
    /// Complexity: constant; allocates nothing.
    friend bool operator==(InetNetwork const& left, InetNetwork const& right) noexcept {
        return left.version == right.version && left.length == right.length && left.bytes == right.bytes;
    }
    friend bool operator!=(InetNetwork const& left, InetNetwork const& right) noexcept {
        return !(left == right);
    }

    /// An order over all networks: IPv4 before IPv6, then the first address, then the length of the prefix. A
    /// network comes before all others that it contains.
    ///
    /// Complexity: constant; allocates nothing.
    friend bool operator<(InetNetwork const& left, InetNetwork const& right) noexcept {
        if (left.version != right.version) {
            return left.version < right.version;
        }
        return left.bytes != right.bytes ? left.bytes < right.bytes : left.length < right.length;
    }

private:
    friend ZVFLNETWORK_EXPORT std::optional<InetNetwork> tryParseNetwork(std::string_view text);
    friend struct std::hash<InetNetwork>;

    struct Reading;
    explicit InetNetwork(Reading const& reading) noexcept;

    // In network order; an IPv4 address is the first four, and zeros follow.
    std::array<unsigned char, 16> bytes;
    unsigned char length;
    unsigned char version; // 4 or 6
};

/// The network of a text, none for a text that `InetNetwork(std::string(text))` refuses.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::optional<InetNetwork> tryParseNetwork(std::string_view text);

/// The network of an address on a link: `InetNetwork::masked` of its address and its prefix.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: constant.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT InetNetwork getNetwork(InterfaceAddress const& address);

/// Writes `toString()` with the stream's formatting.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                             InetNetwork const& network) {
    return stream << network.toString();
}

} // namespace foundation::network

namespace std {

/// Equal networks have equal hashes. The number may differ between versions of the library.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
template <>
struct hash<foundation::network::InetNetwork> {
    ZVFLNETWORK_EXPORT std::size_t operator()(foundation::network::InetNetwork const& network) const noexcept;
};

} // namespace std
