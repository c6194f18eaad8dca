#pragma once

#include <foundation/network/InetAddress.hpp>

#include <boost/asio/ip/address.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network {

/// Reads an `IPv4address` of RFC 3986, section 3.2.2: four decimal numbers up to 255 without leading zeros,
/// and three dots. Returns nothing for any other text.
std::optional<boost::asio::ip::address_v4> strictIpv4(std::string_view text);

/// What copies of an `InetAddress` share. It never changes.
class InetAddressImpl {
public:
    explicit InetAddressImpl(boost::asio::ip::address const& value) : address(value) {}

    /// From numeric text; see `InetAddress(std::string const&)`.
    explicit InetAddressImpl(std::string const& text);

    /// The address that numeric text stands for; nothing if it is none.
    static std::optional<boost::asio::ip::address> read(std::string_view text);

    /// An address without a host name.
    static InetAddress valueOf(boost::asio::ip::address const& address) {
        return {std::make_shared<InetAddressImpl>(address), std::string()};
    }
    static boost::asio::ip::address const& of(InetAddress const& value) noexcept {
        return value.impl->address;
    }

    /// A hash of version, bytes and scope.
    static std::uint64_t hashOf(boost::asio::ip::address const& address) noexcept;

    boost::asio::ip::address const address;
};

} // namespace foundation::network
