#pragma once

/// The address that the host of an IRI is.
///
///     #include <foundation/network/HostAddress.hpp>
///
///     getHostAddress(IRI(u"http://[2001:DB8::1]/"))->toString();  // "2001:db8::1"
///     getHostAddress(IRI(u"http://192.0.2.1/"))->toString();      // "192.0.2.1"
///     getHostAddress(IRI(u"http://example.org/")).has_value();    // false
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/InetAddress.hpp>

#include <optional>

namespace foundation::network {

/// The address of a host that is written as one: an IPv6 address in brackets, or four decimal numbers
/// without leading zeros. Nothing for any other host, and where there is no host.
///
/// Nothing is looked up or decoded: "127.1", "0x7F.0.0.1", "%31.2.3.4", an "IPvFuture" and digits that are
/// not ASCII are no addresses here, though other programs may take some of them for one.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of the host; for a built value, of the whole.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 3986, section 3.2.2.
[[nodiscard]] ZVFLNETWORK_EXPORT std::optional<InetAddress> getHostAddress(IRI const& iri);

} // namespace foundation::network
