// The lookups of InetAddress.

#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/InetAddressImpl.hpp"
#include "lookup/ResolverContext.hpp"
#include "platform/OperatingSystem.hpp"

#include <system_error>
#include <utility>

namespace foundation::network {

namespace {

// The room for the computer's name and its terminating zero, in the units of the system: bytes on Linux. A
// longer name is refused.
constexpr std::size_t computerNameCapacity = 32;

std::string getComputerHostName() {
    std::u16string name;
    int const error = platform::operatingSystem().readComputerName(computerNameCapacity, name);
    if (error != 0) {
        throw core::except::detail::makeInternalException(
            std::system_error(error, std::system_category(), "Call to GetComputerName failed."));
    }
    return idn_to_ascii(name);
}

} // namespace

InetAddress InetAddress::getByName(std::string const& host) {
    return {ResolverContext().forwardLookupFirst(host), host};
}

detail::ImmutableIterableRange<InetAddress> InetAddress::getAllByName(std::string const& host) {
    std::vector<InetAddress> addresses;
    for (auto& address : ResolverContext().forwardLookupAll(host)) {
        addresses.push_back(InetAddress(std::move(address), host));
    }
    return detail::ImmutableIterableRange<InetAddress>(std::move(addresses));
}

InetAddress InetAddress::getLocalHost() {
    std::string name = getComputerHostName();
    InetAddress result = getByName(name);
    if (!result.isLoopback()) {
        return result;
    }
    for (NetworkInterface const& adapter :
         NetworkInterface::getAdapters(NetworkInterface::FilterType::Active)) {
        if (adapter.isLoopback()) {
            continue;
        }
        auto const addresses = adapter.getInetAddresses();
        if (!addresses.empty()) {
            return {std::make_shared<InetAddressImpl>(*addresses.begin()->impl), std::move(name)};
        }
    }
    return result;
}

std::string InetAddress::getHostName() const {
    return hostName.empty() ? ResolverContext().reverseLookup(impl->address) : hostName;
}

std::string InetAddress::getCanonicalHostName() const {
    ResolverContext context;
    return context.canonicalLookup(context.reverseLookup(impl->address));
}

} // namespace foundation::network
