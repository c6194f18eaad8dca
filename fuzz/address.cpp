// The laws of addresses, of an address with a prefix, and of networks.

#include "Input.hpp"

#include "support/Addresses.hpp"
#include "support/Networks.hpp"

#include <foundation/network/InterfaceAddress.hpp>

using namespace foundation::network;

int fuzz::holds(std::string_view input) {
    std::string const text(input);
    support::networkHolds(text);
    if (support::addressHolds(text)) {
        InetAddress const address(text);
        auto const prefix = static_cast<unsigned short>(input.size() % 130);
        auto const onLink =
            unlessRefused<std::out_of_range>([&] { return InterfaceAddress(address, prefix); });
        require(onLink.has_value() == (prefix <= address.bytes().size() * 8), "a prefix", text);
        require(!onLink || onLink->toString() == address.toString() + '/' + std::to_string(prefix), "text",
                text);
        if (onLink) {
            support::ReferenceNetwork const network{address.bytes(), prefix};
            auto other = network;
            support::setBit(other.bytes, input.size() % (other.bytes.size() * 8), input.size() % 2 != 0);
            support::networksHold(network, other);
        }
    }
    return 0;
}
