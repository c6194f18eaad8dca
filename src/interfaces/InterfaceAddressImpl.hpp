#pragma once

#include <foundation/network/InterfaceAddress.hpp>

#include <boost/asio/ip/address.hpp>

#include <string>

namespace foundation::network {

/// What copies of an `InterfaceAddress` share. It never changes.
class InterfaceAddressImpl {
public:
    /// Throws: `std::out_of_range` of Asio, "prefix length too large".
    InterfaceAddressImpl(boost::asio::ip::address const& value, unsigned short prefix);

    static InterfaceAddressImpl const& of(InterfaceAddress const& value) noexcept { return *value.impl; }

    boost::asio::ip::address const address;
    unsigned short const prefixLength;
    std::string const text;
};

} // namespace foundation::network
