// Which of this machine's adapters reaches an address without a router: 10_which_network [ADDRESS]... looks
// for the smallest network on a link that holds each, and tells what the address is for.
//
// Prints:
//   127.0.0.53 is in 127.0.0.0/8 on lo
//   ::ffff:127.0.0.1 is in 127.0.0.0/8 on lo
//   240.0.0.1 is on no link of this machine, and not global

#include <foundation/network/AddressClass.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/Utf8.hpp>

#include <iostream>
#include <string>
#include <vector>

using namespace foundation::network;

namespace {

struct Link {
    InetNetwork network;
    NetworkInterface adapter;
};

bool reaches(Link const& link, InetAddress const& address) {
    // "fe80::1%2" is meant on the adapter with the index 2 alone.
    unsigned long const scope = getScopeId(address);
    return link.network.contains(address) &&
           (scope == 0 || std::to_string(scope) == link.adapter.getIdentifier());
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> texts(argv + 1, argv + argc);
    if (texts.empty()) {
        texts = {"127.0.0.53", "::ffff:127.0.0.1", "240.0.0.1"};
    }
    std::vector<Link> links;
    for (NetworkInterface const& adapter : NetworkInterface::list()) {
        for (InterfaceAddress const& address : adapter.getInterfaceAddresses()) {
            links.push_back({getNetwork(address), adapter});
        }
    }
    int status = 0;
    for (std::string const& text : texts) {
        auto const parsed = tryParseAddress(text);
        if (!parsed) {
            std::cerr << text << " is no address\n";
            status = 1;
            continue;
        }
        InetAddress const address = unmapped(*parsed).value_or(*parsed);
        Link const* best = nullptr;
        for (Link const& link : links) {
            if (reaches(link, address) &&
                (best == nullptr || link.network.getPrefixLength() > best->network.getPrefixLength())) {
                best = &link;
            }
        }
        std::cout << *parsed << " is ";
        if (best != nullptr) {
            std::cout << "in " << best->network << " on " << toUtf8(best->adapter.getFriendlyName()) << '\n';
        } else {
            std::cout << "on no link of this machine, and " << (isGlobal(address) ? "" : "not ")
                      << "global\n";
        }
    }
    return status;
}
