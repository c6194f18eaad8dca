#include "inet/InetAddressImpl.hpp"

#include <foundation/core/except/InternalException.hpp>

#include "inet/Bits.hpp"
#include "text/Escapes.hpp"

#include <boost/system/error_code.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace foundation::network {

namespace ip = boost::asio::ip;
using core::except::detail::makeInternalException;

std::optional<ip::address_v4> strictIpv4(std::string_view text) {
    char const* at = text.data();
    char const* const end = at + text.size();
    unsigned int digit = 0;
    auto const takesDigit = [&] { return at != end && (digit = static_cast<unsigned int>(*at) - '0') <= 9; };
    ip::address_v4::uint_type bits = 0;
    for (int part = 0; part != 4; ++part) {
        if (part != 0 && (at == end || *at++ != '.')) {
            return std::nullopt;
        }
        if (!takesDigit()) {
            return std::nullopt;
        }
        unsigned int value = digit;
        ++at;
        for (int more = 0; more != 2 && value != 0 && takesDigit(); ++more, ++at) {
            value = value * 10 + digit;
        }
        if (value > 255) {
            return std::nullopt;
        }
        bits = bits << 8U | value;
    }
    return at == end ? std::optional(ip::address_v4(bits)) : std::nullopt;
}

namespace {

// Reads eight groups of up to four hexadecimal digits, or fewer and one "::" (RFC 4291, section 2.2, forms 1
// and 2).
std::optional<ip::address_v6> plainIpv6(std::string_view text) {
    ip::address_v6::bytes_type bytes{};
    std::size_t filled = 0;
    std::optional<std::size_t> gap; // the byte where the zeros of "::" begin
    char const* at = text.data();
    char const* const end = at + text.size();
    if (text.starts_with("::")) {
        gap = 0;
        at += 2;
    }
    while (at != end) {
        char const* const begin = at;
        unsigned int group = 0; // not used if there are more than four digits
        for (int value = 0; at != end && (value = text::hexValue(*at)) >= 0; ++at) {
            group = group << 4U | static_cast<unsigned int>(value);
        }
        if (at == begin || at - begin > 4 || filled == bytes.size()) {
            return std::nullopt;
        }
        bytes[filled++] = static_cast<unsigned char>(group >> 8U);
        bytes[filled++] = static_cast<unsigned char>(group & 0xFFU);
        if (at == end) {
            break;
        }
        if (*at != ':' || ++at == end) {
            return std::nullopt;
        }
        if (*at == ':') {
            if (gap) {
                return std::nullopt;
            }
            gap = filled;
            ++at;
        }
    }
    if (gap.has_value() == (filled == bytes.size())) {
        return std::nullopt;
    }
    if (gap) {
        auto* const from = bytes.data() + *gap;
        auto* const zeros = std::copy_backward(from, bytes.data() + filled, bytes.data() + bytes.size());
        std::fill(from, zeros, static_cast<unsigned char>(0));
    }
    return ip::address_v6(bytes);
}

// Reads all other forms, which Boost leaves to the system: IPv6 with a scope id or an IPv4 address at its
// end.
std::optional<ip::address> readBySystem(std::string_view text, boost::system::error_code& reason) {
    ip::address address = ip::make_address(std::string(text), reason);
    if (reason || address.is_v4()) {
        return std::nullopt; // some systems read more forms of IPv4, or stop at a zero character
    }
    if (address.to_v6().scope_id() > UINT32_MAX) {
        // A scope id has 32 bits; Boost widens that of "%-1" to more.
        ip::address_v6 const v6 = address.to_v6();
        address = ip::address_v6(v6.to_bytes(), v6.scope_id() & UINT32_MAX);
    }
    return address;
}

ip::address parse(std::string const& text) {
    // The common forms first, which is quicker.
    if (auto const strict = strictIpv4(text)) {
        return *strict;
    }
    if (auto const plain = plainIpv6(text)) {
        return *plain;
    }
    boost::system::error_code reason;
    if (auto const other = readBySystem(text, reason)) {
        return *other;
    }
    throw makeInternalException(
        std::invalid_argument(reason ? reason.message() : "Invalid IP address string: " + text));
}

} // namespace

InetAddressImpl::InetAddressImpl(std::string const& text) : address(parse(text)) {}

std::optional<ip::address> InetAddressImpl::read(std::string_view text) {
    if (auto const strict = strictIpv4(text)) {
        return *strict;
    }
    if (auto const plain = plainIpv6(text)) {
        return *plain;
    }
    boost::system::error_code reason;
    return readBySystem(text, reason);
}

std::uint64_t InetAddressImpl::hashOf(ip::address const& address) noexcept {
    inet::Bits const bits = inet::bitsOf(address);
    // The version and the scope id fit into one word.
    std::uint64_t const rest = address.is_v4() ? 0 : 1 + (std::uint64_t{address.to_v6().scope_id()} << 1U);
    return inet::mixed(inet::hashOf(bits), rest);
}

} // namespace foundation::network
