// Tells debuggers how values are laid out in memory. The library is usually built without debug information,
// and its public headers only declare the classes that values are made of, so this source is always compiled
// with it. Nothing in it runs. debug/zvflnetwork-gdb.py and debug/zvflnetwork.natvis read what it tells.

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
