#include <foundation/network/NetworkInterface.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/InetAddressImpl.hpp"
#include "interfaces/InterfaceAddressImpl.hpp"
#include "interfaces/NetworkInterfaceImpl.hpp"
#include "platform/OperatingSystem.hpp"
#include "platform/TextConverters.hpp"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using platform::UnicastAddress;

// How often the adapters are read again if they change while they are read.
constexpr int maximalRereads = 16;

[[noreturn]] void fail(int error) {
    throw core::except::detail::makeInternalException(
        std::system_error(error, std::system_category(), "Call to GetAdaptersAddresses failed."));
}

std::vector<platform::Adapter> queryAdapters() {
    for (int rereads = 0; rereads <= maximalRereads; ++rereads) {
        auto reading = platform::operatingSystem().readAdapters();
        if (reading.error != 0) {
            fail(reading.error);
        }
        if (!reading.changed) {
            return std::move(reading.adapters);
        }
    }
    fail(EAGAIN);
}

std::optional<ip::address> addressOf(UnicastAddress const& entry) {
    switch (entry.family) {
    case UnicastAddress::Family::Ipv4: {
        ip::address_v4::bytes_type bytes;
        std::copy_n(entry.bytes.begin(), bytes.size(), bytes.begin());
        return ip::address_v4(bytes);
    }
    case UnicastAddress::Family::Ipv6:
        return ip::address_v6(entry.bytes);
    case UnicastAddress::Family::Other:
        break;
    }
    return std::nullopt;
}

} // namespace

detail::ImmutableIterableRange<NetworkInterface> NetworkInterface::getAdapters(FilterType filter) {
    fl::i18n::codecvt_wstring_to_ustring const fromWide(false);
    std::vector<NetworkInterface> adapters;
    for (auto& entry : queryAdapters()) {
        auto adapter = std::make_shared<NetworkInterfaceImpl>();
        adapter->identifier = std::to_string(entry.index != 0 ? entry.index : entry.ipv6Index);
        adapter->friendlyName = fromWide.convert(entry.friendlyName);
        adapter->description = fromWide.convert(entry.description);
        adapter->up = entry.up;
        adapter->loopback = entry.loopback;
        adapter->multicast = entry.multicast;
        adapter->pointToPoint = entry.pointToPoint;
        adapter->mtu = entry.mtu;
        if (!entry.loopback) {
            adapter->hardwareAddress = HardwareAddress(std::move(entry.physicalAddress));
        }
        for (auto const& unicast : entry.addresses) {
            if (auto const address = addressOf(unicast)) {
                adapter->interfaceAddresses.push_back(
                    InterfaceAddress(std::make_shared<InterfaceAddressImpl>(*address, unicast.prefixLength)));
            }
        }
        if (filter == FilterType::All || (adapter->up && !adapter->interfaceAddresses.empty())) {
            adapters.push_back(NetworkInterface(std::move(adapter)));
        }
    }
    return detail::ImmutableIterableRange<NetworkInterface>(std::move(adapters));
}

detail::ImmutableIterableRange<NetworkInterface> NetworkInterface::list() {
    return getAdapters(FilterType::Active);
}

detail::ImmutableIterableRange<NetworkInterface> NetworkInterface::listAll() {
    return getAdapters(FilterType::All);
}

NetworkInterface::NetworkInterface(std::shared_ptr<NetworkInterfaceImpl> adapter) noexcept
    : impl(std::move(adapter)) {}

NetworkInterface::NetworkInterface(NetworkInterface const&) = default;
NetworkInterface::NetworkInterface(NetworkInterface&&) noexcept = default;
NetworkInterface& NetworkInterface::operator=(NetworkInterface const&) = default;
NetworkInterface& NetworkInterface::operator=(NetworkInterface&&) noexcept = default;
NetworkInterface::~NetworkInterface() = default;

std::string NetworkInterface::getIdentifier() const {
    return impl->identifier;
}

std::u16string NetworkInterface::getFriendlyName() const {
    return impl->friendlyName.empty() ? fl::i18n::codecvt_ascii_to_ustring(false).convert(impl->identifier)
                                      : impl->friendlyName;
}

std::u16string NetworkInterface::getDescription() const {
    return impl->description;
}

HardwareAddress NetworkInterface::getHardwareAddress() const {
    return impl->hardwareAddress;
}

detail::ImmutableIterableRange<InterfaceAddress> NetworkInterface::getInterfaceAddresses() const {
    return detail::ImmutableIterableRange<InterfaceAddress>(impl->interfaceAddresses);
}

detail::ImmutableIterableRange<InetAddress> NetworkInterface::getInetAddresses() const {
    std::vector<InetAddress> addresses;
    addresses.reserve(impl->interfaceAddresses.size());
    for (auto const& address : impl->interfaceAddresses) {
        addresses.push_back(address.getInetAddress());
    }
    return detail::ImmutableIterableRange<InetAddress>(std::move(addresses));
}

bool NetworkInterface::isUp() const noexcept {
    return impl->up;
}

bool NetworkInterface::isLoopback() const noexcept {
    return impl->loopback;
}

bool NetworkInterface::supportsMulticast() const noexcept {
    return impl->multicast;
}

unsigned int NetworkInterface::getMtu() const noexcept {
    return impl->mtu;
}

bool NetworkInterface::isPointToPoint() const noexcept {
    return impl->pointToPoint;
}

} // namespace foundation::network
