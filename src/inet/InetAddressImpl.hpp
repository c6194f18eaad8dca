#pragma once

#include <boost/asio/ip/address.hpp>

#include <string>

namespace foundation::network {

/// What copies of an `InetAddress` share. It doesn't change.
class InetAddressImpl {
public:
    explicit InetAddressImpl(boost::asio::ip::address const& value) : address(value) {}

    /// From numeric text; see `InetAddress(std::string const&)`.
    explicit InetAddressImpl(std::string const& text);

    boost::asio::ip::address const address;
};

} // namespace foundation::network
