// The adapters of this machine with their addresses. Prints lines like
//
//   lo (loopback)
//     127.0.0.1/8
//     ::1/128
//   eth0 02:fc:00:00:00:01
//     192.0.2.2/24

#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/Utf8.hpp>

#include <iostream>

int main() {
    using foundation::network::NetworkInterface;
    using foundation::network::toUtf8;

    for (auto const& adapter : NetworkInterface::list()) {
        std::cout << toUtf8(adapter.getFriendlyName()) << ' ';
        if (adapter.isLoopback()) {
            std::cout << "(loopback)\n";
        } else {
            std::cout << adapter.getHardwareAddress() << '\n';
        }
        for (auto const& address : adapter.getInterfaceAddresses()) {
            std::cout << "  " << address << '\n';
        }
    }
}
