#pragma once

/// Internet addresses and the names of hosts.
///
///     InetAddress const address("2001:db8::1");
///     address.getVersion();                                // 6
///     for (auto const& a : InetAddress::getAllByName("localhost")) {
///         std::cout << a.toString() << '\n';               // ::1, 127.0.0.1 in the system's order
///     }

#include <foundation/core/Export.hpp>
#include <foundation/core/StandardLibrary.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <array>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foundation::network {

class InetAddressImpl;

/// An IPv4 or IPv6 address, with the name that it was found by if it was found by name.
///
/// Copies share the address, which never changes. Values are compared, ordered and hashed by their
/// addresses; the name plays no part. A value that was moved from holds no address: it may be assigned to
/// or destroyed, and nothing else.
///
/// Lookups block for as long as the system's resolver takes. Each asks the system again; nothing is cached.
///
/// Throws: besides what each operation names, `std::bad_alloc`, unless the operation is `noexcept`.
/// Exception safety: an operation that throws changes nothing.
/// Thread safety: any number of threads may read one value, and look up at once.
class ZVFLNETWORK_EXPORT InetAddress {
public:
    /// IPv4 0.0.0.0.
    InetAddress();

    /// An IPv4 address from its bytes in network order: `{127, 0, 0, 1}` is 127.0.0.1.
    explicit InetAddress(std::array<unsigned char, 4> bytes);

    /// An IPv6 address from its bytes in network order, without a scope id.
    explicit InetAddress(std::array<unsigned char, 16> bytes);

    /// An address from 4 (IPv4) or 16 (IPv6) bytes in network order, 0.0.0.0 from none.
    ///
    /// Throws: the internal `std::invalid_argument`, "Can not create InetAddress from 5 elements. Vector
    /// must have 0, 4 or 16 elements." for 5 elements.
    explicit InetAddress(std::vector<unsigned char> bytes);

    /// An address from its numeric text; no name is looked up.
    ///
    /// IPv4 is four decimal numbers with dots between; no shorter, octal or hexadecimal form. IPv6 is any
    /// form of RFC 4291, section 2.2. Behind it may stand "%" and a scope id: for a link-local address,
    /// unicast or multicast, the name of an adapter; else a number, as `strtol` reads it in decimal, of
    /// which the lower 32 bits count (`::1%4294967297` has the scope 1). Where there is no number, the
    /// scope is 0, which is none. An IPv6 text ends at its first zero character.
    ///
    /// Throws: the internal `std::invalid_argument` with the system's sentence for a text that is no
    /// address ("Invalid argument", in the language of the locale); with "Invalid IP address string: " and
    /// the text where the system takes an IPv4 address that is not of the strict form.
    /// Complexity: linear in the length of `text`.
    explicit InetAddress(std::string const& text);

    InetAddress(InetAddress const& other);
    InetAddress(InetAddress&& other) noexcept;
    InetAddress& operator=(InetAddress const& other);
    InetAddress& operator=(InetAddress&& other) noexcept;
    ~InetAddress();

    /// 4 or 6.
    unsigned int getVersion() const noexcept;

    /// True for 127.0.0.0/8 and for ::1. An IPv4-mapped address (RFC 4291, section 2.5.5.2) is none.
    bool isLoopback() const noexcept;

    /// True for 224.0.0.0/4 and for ff00::/8.
    bool isMulticast() const noexcept;

    /// The numeric text, the same as `getHostAddress`; never the name.
    std::string toString() const;

    /// The numeric text: `192.0.2.1`; `2001:db8::1`, lower case and compressed. A scope id follows as "%"
    /// and its number; for a link-local address, as "%" and the name of its adapter if there is one.
    std::string getHostAddress() const;

    /// The 4 or 16 bytes in network order, without the scope id.
    std::vector<unsigned char> bytes() const;

    /// The first address of a host. The value's name is `host` as it was given, also for a numeric text.
    ///
    /// `host` is what the system's resolver takes, up to its first zero character.
    ///
    /// Throws: the internal `std::system_error` with the resolver's code and text, for instance "Host not
    /// found (authoritative)". The category's `name()` tells codes of the resolver ("asio.netdb",
    /// "asio.addrinfo") from those of the system.
    static InetAddress getByName(std::string const& host);

    /// All addresses of a host, in the order of the system's resolver (RFC 6724); there is at least one.
    ///
    /// Throws: as `getByName`.
    static detail::ImmutableIterableRange<InetAddress> getAllByName(std::string const& host);

    /// An address of this machine, under the machine's own name.
    ///
    /// It is what the name resolves to, if that is no loopback address; else the first address of the first
    /// adapter that is up, is no loopback adapter and has one; else the loopback address.
    ///
    /// Throws: the internal `std::system_error`, "Call to GetComputerName failed.: " and the system's text,
    /// if the name cannot be read, as on Linux a name of 32 bytes or more; as `getByName` if it cannot be
    /// resolved; as `NetworkInterface::list` if the adapters cannot be listed; `IdnConverterException` if
    /// the name cannot be converted.
    static InetAddress getLocalHost();

    /// The name that this address was found by; else the name that the system has for it, or its numeric
    /// text if the system has none. The latter is a lookup at each call.
    ///
    /// Throws: as `getByName`, where it looks up.
    std::string getHostName() const;

    /// The name that the system has for this address, made canonical: two lookups at each call. The name
    /// that the address was found by plays no part.
    ///
    /// Throws: as `getByName`.
    std::string getCanonicalHostName() const;

private:
    friend class InetAddressImpl;
    friend class InterfaceAddress;
    friend class NetworkInterface;

    InetAddress(std::shared_ptr<InetAddressImpl> address, std::string name) noexcept;

    std::shared_ptr<InetAddressImpl> impl;
    std::string hostName;
};

/// Whether both are the same address: version, bytes and scope id. The names that they were found by play
/// no part. An IPv4-mapped address is another one than the IPv4 address in it.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT bool operator==(InetAddress const& left, InetAddress const& right) noexcept;
[[nodiscard]] inline bool operator!=(InetAddress const& left, InetAddress const& right) noexcept {
    return !(left == right);
}

/// An order over all addresses: IPv4 before IPv6, then the bytes as a number, then the scope id.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT bool operator<(InetAddress const& left, InetAddress const& right) noexcept;

/// The scope id behind the "%" of an IPv6 address (RFC 4007), 0 where there is none. On Linux it is the
/// index of an adapter.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT unsigned long getScopeId(InetAddress const& address) noexcept;

/// The address of a numeric text, none for a text that is no address. It takes exactly what
/// `InetAddress(std::string(text))` takes, and gives the same.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::optional<InetAddress> tryParseAddress(std::string_view text);

/// Writes `toString()` with the stream's formatting.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                             InetAddress const& address) {
    return stream << address.toString();
}

} // namespace foundation::network

namespace std {

/// Equal addresses have equal hashes. The number may differ between versions of the library.
///
/// Complexity: constant; allocates nothing.
/// Thread safety: any number of threads may call it at once.
template <>
struct hash<foundation::network::InetAddress> {
    ZVFLNETWORK_EXPORT std::size_t operator()(foundation::network::InetAddress const& address) const noexcept;
};

} // namespace std
