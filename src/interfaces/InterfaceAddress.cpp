#include <foundation/network/InterfaceAddress.hpp>

#include <foundation/network/InetNetwork.hpp>

#include "inet/Bits.hpp"
#include "inet/InetAddressImpl.hpp"
#include "interfaces/InterfaceAddressImpl.hpp"

#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

#include <tuple>
#include <utility>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;

std::string networkText(ip::address const& address, unsigned short prefix) {
    return address.is_v4() ? ip::network_v4(address.to_v4(), prefix).to_string()
                           : ip::network_v6(address.to_v6(), prefix).to_string();
}

auto comparable(InterfaceAddress const& value) noexcept {
    auto const& content = InterfaceAddressImpl::of(value);
    return std::tie(content.address, content.prefixLength);
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

bool operator==(InterfaceAddress const& left, InterfaceAddress const& right) noexcept {
    return comparable(left) == comparable(right);
}

bool operator<(InterfaceAddress const& left, InterfaceAddress const& right) noexcept {
    return comparable(left) < comparable(right);
}

InetNetwork getNetwork(InterfaceAddress const& address) {
    return InetNetwork::masked(address.getInetAddress(), address.prefixLength());
}

} // namespace foundation::network

std::size_t std::hash<foundation::network::InterfaceAddress>::operator()(
    foundation::network::InterfaceAddress const& address) const noexcept {
    using namespace foundation::network;
    auto const& content = InterfaceAddressImpl::of(address);
    return static_cast<std::size_t>(
        inet::mixed(InetAddressImpl::hashOf(content.address), content.prefixLength));
}
