#include "inet/InetAddressImpl.hpp"

#include <foundation/core/except/InternalException.hpp>

#include <boost/system/system_error.hpp>

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using core::except::detail::makeInternalException;

// Four decimal numbers up to 255 without leading zeros, three dots, nothing else: what systems leave to their
// own taste in `inet_pton` ends here.
bool isStrictIpv4(std::string_view text) {
    std::size_t at = 0;
    for (int part = 0; part < 4; ++part) {
        if (part > 0 && (at == text.size() || text[at++] != '.')) {
            return false;
        }
        std::size_t const begin = at;
        unsigned int value = 0;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
            value = value * 10 + static_cast<unsigned int>(text[at] - '0');
            if (value > 255 || (at > begin && text[begin] == '0')) {
                return false;
            }
        }
        if (at == begin) {
            return false;
        }
    }
    return at == text.size();
}

ip::address parse(std::string const& text) {
    boost::system::error_code error;
    ip::address address = ip::make_address(text, error);
    if (error) {
        throw makeInternalException(std::invalid_argument(boost::system::system_error(error).what()));
    }
    if (address.is_v4() && !isStrictIpv4(text)) {
        throw makeInternalException(std::invalid_argument("Invalid IP address string: " + text));
    }
    if (address.is_v6() && address.to_v6().scope_id() > UINT32_MAX) {
        // A scope id has 32 bits; "%-1" is widened on the way through Boost.
        ip::address_v6 const v6 = address.to_v6();
        address = ip::address_v6(v6.to_bytes(), v6.scope_id() & UINT32_MAX);
    }
    return address;
}

} // namespace

InetAddressImpl::InetAddressImpl(std::string const& text) : address(parse(text)) {}

} // namespace foundation::network
