#pragma once

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <string>
#include <vector>

namespace foundation::network {

/// What copies of a `NetworkInterface` share. It is filled once and never changes afterwards.
class NetworkInterfaceImpl {
public:
    std::string identifier;
    std::u16string friendlyName;
    std::u16string description;
    HardwareAddress hardwareAddress;
    std::vector<InterfaceAddress> interfaceAddresses;
    bool up = false;
    bool loopback = false;
    bool multicast = false;
    bool pointToPoint = false;
    unsigned int mtu = 0;
};

} // namespace foundation::network
