// Values for a debugger to look at; tests/debugger/run says what it must see.

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <cstdlib>

using namespace foundation::network;

namespace {

int look(IRI const& parsed, IRI const& built, IRI const& empty, InetAddress const& four,
         InetAddress const& six, InetAddress const& moved, InterfaceAddress const& onLink,
         HardwareAddress const& hardware) {
    return parsed.hasHost() && built.hasHost() && empty.isEmpty() && four.isLoopback() && six.isLoopback() &&
                   onLink.prefixLength() > 0 && !hardware.empty() && &moved != &six
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
}

} // namespace

int main() {
    IRI const parsed(u"http://b\u00FCcher.example/a?q");
    IRI const built =
        IRI(IRIArgs().setScheme(u"http").setHost(u"h").setPort(8080).setPath(u"/a b").setQuery(u"q"))
            .resolveAgainst(parsed);
    InetAddress moved("::1");
    InetAddress const six(std::move(moved));
    return look(parsed, built, IRI(), InetAddress::getByName("127.0.0.1"), six, moved,
                InterfaceAddress(InetAddress("192.0.2.1"), 24), HardwareAddress({0, 0x1A, 0xFF}));
}
