#include "inet/InetAddressImpl.hpp"

#include <foundation/core/except/InternalException.hpp>

#include "inet/Bits.hpp"

#include <algorithm>
#include <stdexcept>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using core::except::detail::makeInternalException;

// Four decimal numbers up to 255 without leading zeros, three dots, nothing else.
std::optional<ip::address_v4> strictIpv4(std::string_view text) {
    ip::address_v4::bytes_type bytes{};
    std::size_t at = 0;
    for (std::size_t part = 0; part < bytes.size(); ++part) {
        if (part > 0 && (at == text.size() || text[at++] != '.')) {
            return std::nullopt;
        }
        std::size_t const begin = at;
        unsigned int value = 0;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
            value = value * 10 + static_cast<unsigned int>(text[at] - '0');
            if (value > 255 || (at > begin && text[begin] == '0')) {
                return std::nullopt;
            }
        }
        if (at == begin) {
            return std::nullopt;
        }
        bytes[part] = static_cast<unsigned char>(value);
    }
    return at == text.size() ? std::optional(ip::address_v4(bytes)) : std::nullopt;
}

// Up to eight groups of up to four hexadecimal digits, one "::" at most (RFC 4291 section 2.2, forms 1 and
// 2).
std::optional<ip::address_v6> plainIpv6(std::string_view text) {
    ip::address_v6::bytes_type bytes{};
    std::size_t filled = 0;
    std::optional<std::size_t> gap; // where the zeros of "::" go
    std::size_t at = 0;
    if (text.starts_with("::")) {
        gap = 0;
        at = 2;
    }
    while (at < text.size()) {
        std::size_t const begin = at;
        unsigned int group = 0;
        for (; at < text.size() && at - begin < 5; ++at) {
            unsigned int const decimal = static_cast<unsigned int>(text[at]) - '0';
            unsigned int const letter = (static_cast<unsigned int>(text[at]) | 0x20U) - 'a';
            if (decimal > 9 && letter > 5) {
                break;
            }
            group = group << 4 | (decimal <= 9 ? decimal : letter + 10);
        }
        if (at == begin || at - begin > 4 || filled == bytes.size()) {
            return std::nullopt;
        }
        bytes[filled++] = static_cast<unsigned char>(group >> 8);
        bytes[filled++] = static_cast<unsigned char>(group & 0xFF);
        if (at == text.size()) {
            break;
        }
        if (text[at] != ':' || ++at == text.size()) {
            return std::nullopt;
        }
        if (text[at] == ':') {
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

ip::address parse(std::string const& text) {
    boost::system::error_code reason;
    if (auto const address = InetAddressImpl::read(text, reason)) {
        return *address;
    }
    throw makeInternalException(
        std::invalid_argument(reason ? reason.message() : "Invalid IP address string: " + text));
}

} // namespace

InetAddressImpl::InetAddressImpl(std::string const& text) : address(parse(text)) {}

std::optional<ip::address> InetAddressImpl::read(std::string_view text, boost::system::error_code& reason) {
    // First, for speed: the common forms, which every system takes alike.
    if (auto const strict = strictIpv4(text)) {
        return *strict;
    }
    if (auto const plain = plainIpv6(text)) {
        return *plain;
    }
    ip::address address = ip::make_address(std::string(text), reason);
    if (reason || address.is_v4()) {
        return std::nullopt; // IPv4 that some systems take beside the strict form, or an end in the text
    }
    if (address.to_v6().scope_id() > UINT32_MAX) {
        // A scope id has 32 bits; "%-1" is widened on the way through Boost.
        ip::address_v6 const v6 = address.to_v6();
        address = ip::address_v6(v6.to_bytes(), v6.scope_id() & UINT32_MAX);
    }
    return address;
}

std::uint64_t InetAddressImpl::hashOf(ip::address const& address) noexcept {
    inet::Bits const bits = inet::bitsOf(address);
    // A version and a scope id of 32 bits make one word.
    std::uint64_t const rest = address.is_v4() ? 0 : 1 + (std::uint64_t{address.to_v6().scope_id()} << 1U);
    return inet::mixed(inet::hashOf(bits), rest);
}

} // namespace foundation::network
