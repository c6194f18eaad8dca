#include <foundation/network/InterfaceAddress.hpp>

#include "inet/InetAddressImpl.hpp"
#include "interfaces/InterfaceAddressImpl.hpp"

#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

#include <utility>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;

std::string networkText(ip::address const& address, unsigned short prefix) {
    return address.is_v4() ? ip::network_v4(address.to_v4(), prefix).to_string()
                           : ip::network_v6(address.to_v6(), prefix).to_string();
}

} // namespace

InterfaceAddressImpl::InterfaceAddressImpl(ip::address const& value, unsigned short prefix)
    : address(value), prefixLength(prefix), text(networkText(value, prefix)) {}

InterfaceAddress::InterfaceAddress() : InterfaceAddress(InetAddress(), 0) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a fixed shape
InterfaceAddress::InterfaceAddress(InetAddress address, unsigned short prefixLength)
    : impl(std::make_shared<InterfaceAddressImpl>(address.impl->address, prefixLength)) {}

InterfaceAddress::InterfaceAddress(std::shared_ptr<InterfaceAddressImpl> address) noexcept
    : impl(std::move(address)) {}

InterfaceAddress::InterfaceAddress(InterfaceAddress const&) = default;
InterfaceAddress::InterfaceAddress(InterfaceAddress&&) noexcept = default;
InterfaceAddress& InterfaceAddress::operator=(InterfaceAddress const&) = default;
InterfaceAddress& InterfaceAddress::operator=(InterfaceAddress&&) noexcept = default;
InterfaceAddress::~InterfaceAddress() = default;

InetAddress InterfaceAddress::getInetAddress() const {
    return {std::make_shared<InetAddressImpl>(impl->address), std::string()};
}

unsigned short InterfaceAddress::prefixLength() const noexcept {
    return impl->prefixLength;
}

std::string InterfaceAddress::toString() const {
    return impl->text;
}

} // namespace foundation::network
