#pragma once

#include <boost/asio/ip/address.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace foundation::network {

/// Four decimal numbers up to 255 without leading zeros, three dots, nothing else: `IPv4address` of RFC 3986,
/// section 3.2.2. Nothing for any other text.
std::optional<boost::asio::ip::address_v4> strictIpv4(std::string_view text);

/// What copies of an `InetAddress` share. It doesn't change.
class InetAddressImpl {
public:
    explicit InetAddressImpl(boost::asio::ip::address const& value) : address(value) {}

    /// From numeric text; see `InetAddress(std::string const&)`.
    explicit InetAddressImpl(std::string const& text);

    boost::asio::ip::address const address;
};

} // namespace foundation::network
