// Values for a debugger to look at; tests/debugger/run says what it must see.

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/Utf8.hpp>

#include <cstdlib>

using namespace foundation::network;

namespace {

int look(IRI const& parsed, IRI const& built, IRI const& empty, InetAddress const& four,
         InetAddress const& six, InetAddress const& moved, InterfaceAddress const& onLink,
         InetNetwork const& network, InetNetwork const& wide, HardwareAddress const& hardware,
         ParseResult const& taken, ParseResult const& refused, ParseFault const& fault,
         Utf8View const& narrow, QueryParameters const& query) {
    return parsed.hasHost() && built.hasHost() && empty.isEmpty() && four.isLoopback() && six.isLoopback() &&
                   onLink.prefixLength() > 0 && !network.overlaps(wide) && !hardware.empty() &&
                   &moved != &six && taken && !refused && fault.offset != 0 && !narrow.getScheme().empty() &&
                   !query.empty()
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
    // NOLINTNEXTLINE(bugprone-use-after-move): how that looks is what is shown
    return look(parsed, built, IRI(), InetAddress::getByName("127.0.0.1"), six, moved,
                InterfaceAddress(InetAddress("192.0.2.1"), 24), InetNetwork("10.32.0.0/11"),
                InetNetwork("2001:db8::/33"), HardwareAddress({0, 0x1A, 0xFF}), tryParse("http://h/\u00E9"),
                tryParse("http://\u00FC b/"), tryParse(std::u16string{u'a', char16_t{0xD800}}).error(),
                utf8(parsed), QueryParameters(u"name=J+%26+\u00E9&flag"));
}
