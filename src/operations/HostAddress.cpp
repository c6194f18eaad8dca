#include <foundation/network/HostAddress.hpp>

#include "inet/InetAddressImpl.hpp"
#include "operations/IriFormText.hpp"
#include "text/Scans.hpp"

#include <string>

namespace foundation::network {

std::optional<InetAddress> getHostAddress(IRI const& iri) {
    if (!iri.hasHost()) {
        return std::nullopt;
    }
    operations::IriFormText const form(iri);
    std::u32string_view const host = form.stored().given(iri::detail::Part::host);
    if (host.empty() || !text::isAllWithin(host, U'!', U'~')) {
        return std::nullopt;
    }
    std::string const ascii(host.begin(), host.end());
    if (ascii.front() == '[') { // IP-literal is IPv6address or IPvFuture
        return ascii[1] == 'v' ? std::nullopt : std::optional(InetAddress(ascii.substr(1, ascii.size() - 2)));
    }
    auto const address = strictIpv4(ascii);
    return address ? std::optional(InetAddress(address->to_bytes())) : std::nullopt;
}

} // namespace foundation::network
