// Nothing here runs. The library is usually built without debug information, and a program sees the insides
// of its values only by name; so this one source is always compiled with it, and tells debuggers how values
// lie in memory. What reads that: debug/zvflnetwork-gdb.py and debug/zvflnetwork.natvis.

#include "inet/InetAddressImpl.hpp"
#include "interfaces/InterfaceAddressImpl.hpp"
#include "interfaces/NetworkInterfaceImpl.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/Utf8.hpp>

namespace foundation::network {

namespace {

struct Layouts {
    IRI const* iri;
    iri::detail::TemplateIRI<std::u32string> const* value;
    InetAddressImpl const* inetAddress;
    InetNetwork const* inetNetwork;
    InterfaceAddressImpl const* interfaceAddress;
    NetworkInterfaceImpl const* networkInterface;
    ParseResult const* parseResult;
    Utf8View const* utf8View;
    QueryParameters const* queryParameters;
};

[[gnu::used]] constinit Layouts const* const layouts = nullptr;

} // namespace

} // namespace foundation::network
