#include <foundation/network/InetAddress.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/InetAddressImpl.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;

template <std::size_t Size>
std::array<unsigned char, Size> firstOf(std::vector<unsigned char> const& bytes) {
    std::array<unsigned char, Size> taken;
    std::copy_n(bytes.begin(), Size, taken.begin());
    return taken;
}

ip::address addressFrom(std::vector<unsigned char> const& bytes) {
    switch (bytes.size()) {
    case 0:
        return ip::address_v4();
    case 4:
        return ip::address_v4(firstOf<4>(bytes));
    case 16:
        return ip::address_v6(firstOf<16>(bytes));
    default:
        throw core::except::detail::makeInternalException(
            std::invalid_argument("Can not create InetAddress from " + std::to_string(bytes.size()) +
                                  " elements. Vector must have 0, 4 or 16 elements."));
    }
}

// A byte in decimal with a dot behind it. All have the same size in memory, so each is copied without a
// branch.
struct Octet {
    std::array<char, 4> text;
    std::size_t length;
};
constexpr std::array<Octet, 256> octets = [] {
    std::array<Octet, 256> all{};
    for (unsigned value = 0; value != all.size(); ++value) {
        Octet& octet = all[value];
        for (unsigned const unit : {100U, 10U, 1U}) {
            if (value >= unit || unit == 1) {
                octet.text[octet.length++] = static_cast<char>('0' + value / unit % 10);
            }
        }
        octet.text[octet.length++] = '.';
    }
    return all;
}();

// Writes four numbers and a dot behind each, into 16 characters of room, and returns where they end.
char* writeOctets(char* at, unsigned char const* bytes) {
    for (std::size_t i = 0; i != 4; ++i) {
        Octet const& octet = octets[bytes[i]];
        std::memcpy(at, octet.text.data(), octet.text.size());
        at += octet.length;
    }
    return at;
}

// The two hexadecimal digits of each byte, in the order in which they are stored.
constexpr std::array<std::uint16_t, 256> hexadecimal = [] {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<std::uint16_t, 256> all{};
    for (std::size_t value = 0; value != all.size(); ++value) {
        all[value] = std::bit_cast<std::uint16_t>(std::array{digits[value >> 4U], digits[value & 0xFU]});
    }
    return all;
}();

// Writes a group without its leading zeros, into four characters of room, and returns where it ends. There is
// no branch: the four digits are put together in one word, and leading zeros are shifted out of it.
char* writeGroup(char* at, unsigned int high, unsigned int low) {
    constexpr bool little = std::endian::native == std::endian::little;
    std::uint32_t word = little ? hexadecimal[high] | std::uint32_t{hexadecimal[low]} << 16U
                                : std::uint32_t{hexadecimal[high]} << 16U | hexadecimal[low];
    unsigned int const group = high << 8U | low;
    auto const leading = static_cast<unsigned int>(std::countl_zero(group | 1U) - 16) / 4;
    word = little ? word >> 8 * leading : word << 8 * leading;
    std::memcpy(at, &word, sizeof(word));
    return at + 4 - leading;
}

// The groups that "::" stands for: the longest run of two or more zero groups, and the first of equally long
// ones (RFC 5952, section 4.2); [8, 8) if there is none. The index is the set of zero groups, with the lowest
// bit for the first group.
struct ZeroRun {
    unsigned char begin;
    unsigned char end;
};
constexpr std::array<ZeroRun, 256> longestZeroRuns = [] {
    std::array<ZeroRun, 256> all{};
    for (unsigned int zeros = 0; zeros != all.size(); ++zeros) {
        ZeroRun& longest = all[zeros] = {8, 8};
        for (unsigned int begin = 0; begin != 8; ++begin) {
            unsigned int end = begin;
            while (end != 8 && (zeros >> end & 1U) != 0) {
                ++end;
            }
            if (end - begin >= 2 && end - begin > unsigned{longest.end} - longest.begin) {
                longest = {static_cast<unsigned char>(begin), static_cast<unsigned char>(end)};
            }
        }
    }
    return all;
}();

// The text of RFC 5952, sections 4 and 5. As `inet_ntop` does it, the last 32 bits are written as an IPv4
// address if "::" stands for the 96 bits in front of them, or for 80 and ::ffff makes the address IPv4-mapped
// (RFC 4291, section 2.5.5).
std::string textOf(ip::address_v6::bytes_type const& bytes) {
    unsigned int zeros = 0;
    for (std::size_t i = 0; i != 8; ++i) {
        zeros |= static_cast<unsigned int>((bytes[2 * i] | bytes[2 * i + 1]) == 0) << i;
    }
    ZeroRun const zeroRun = longestZeroRuns[zeros];
    std::array<char, 48> text; // "ffff:" eight times, and what is written behind it and overwritten
    char* at = text.data();
    std::size_t group = 0;
    auto const writeUpTo = [&](std::size_t end) {
        for (; group != end; ++group) {
            at = writeGroup(at, bytes[2 * group], bytes[2 * group + 1]);
            *at++ = ':';
        }
    };
    writeUpTo(zeroRun.begin);
    if (zeroRun.begin == 8) {
        return {text.data(), at - 1};
    }
    *at = ':'; // if a group stands in front, its ":" is the first of the two
    at += zeroRun.begin == 0 ? 1 : 0;
    *at++ = ':';
    group = zeroRun.end;
    bool const mapped = zeroRun.begin == 0 && zeroRun.end == 5 && bytes[10] == 0xFF && bytes[11] == 0xFF;
    if (mapped || (zeroRun.begin == 0 && zeroRun.end == 6)) {
        writeUpTo(6);
        return {text.data(), writeOctets(at, bytes.data() + 12) - 1};
    }
    writeUpTo(8);
    return {text.data(), zeroRun.end == 8 ? at : at - 1};
}

// The same text as Asio's `to_string`, which calls `inet_ntop` and takes several times as long.
std::string textOf(ip::address const& address) {
    if (address.is_v4()) {
        std::array<char, 16> text;
        auto const bytes = address.to_v4().to_bytes();
        return {text.data(), writeOctets(text.data(), bytes.data()) - 1};
    }
    ip::address_v6 const v6 = address.to_v6();
    return v6.scope_id() == 0 ? textOf(v6.to_bytes()) : v6.to_string();
}

template <class Bytes>
std::vector<unsigned char> vectorOf(Bytes const& bytes) {
    return {bytes.begin(), bytes.end()};
}

} // namespace

InetAddress::InetAddress() : InetAddress(std::array<unsigned char, 4>{}) {}

InetAddress::InetAddress(std::array<unsigned char, 4> bytes)
    : impl(std::make_shared<InetAddressImpl>(ip::address_v4(bytes))) {}

InetAddress::InetAddress(std::array<unsigned char, 16> bytes)
    : impl(std::make_shared<InetAddressImpl>(ip::address_v6(bytes))) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a fixed shape
InetAddress::InetAddress(std::vector<unsigned char> bytes)
    : impl(std::make_shared<InetAddressImpl>(addressFrom(bytes))) {}

InetAddress::InetAddress(std::string const& text) : impl(std::make_shared<InetAddressImpl>(text)) {}

InetAddress::InetAddress(std::shared_ptr<InetAddressImpl> address, std::string name) noexcept
    : impl(std::move(address)), hostName(std::move(name)) {}

InetAddress::InetAddress(InetAddress const&) = default;
InetAddress& InetAddress::operator=(InetAddress const& other) {
    InetAddress copy(other); // copying the name may throw; then nothing has changed
    return *this = std::move(copy);
}
InetAddress::InetAddress(InetAddress&& other) noexcept
    : impl(std::move(other.impl)), hostName(std::exchange(other.hostName, {})) {}
InetAddress& InetAddress::operator=(InetAddress&& other) noexcept {
    InetAddress taken(std::move(other));
    impl.swap(taken.impl);
    hostName.swap(taken.hostName);
    return *this;
}
InetAddress::~InetAddress() = default;

unsigned int InetAddress::getVersion() const noexcept {
    return impl->address.is_v4() ? 4 : 6;
}

bool InetAddress::isLoopback() const noexcept {
    return impl->address.is_loopback();
}

bool InetAddress::isMulticast() const noexcept {
    return impl->address.is_multicast();
}

std::string InetAddress::toString() const {
    return textOf(impl->address);
}

std::string InetAddress::getHostAddress() const {
    return textOf(impl->address);
}

std::vector<unsigned char> InetAddress::bytes() const {
    return impl->address.is_v4() ? vectorOf(impl->address.to_v4().to_bytes())
                                 : vectorOf(impl->address.to_v6().to_bytes());
}

// Asio compares version, bytes and scope.
bool operator==(InetAddress const& left, InetAddress const& right) noexcept {
    return InetAddressImpl::of(left) == InetAddressImpl::of(right);
}

bool operator<(InetAddress const& left, InetAddress const& right) noexcept {
    return InetAddressImpl::of(left) < InetAddressImpl::of(right);
}

unsigned long getScopeId(InetAddress const& address) noexcept {
    ip::address const& value = InetAddressImpl::of(address);
    return value.is_v4() ? 0 : value.to_v6().scope_id();
}

std::optional<InetAddress> tryParseAddress(std::string_view text) {
    auto const address = InetAddressImpl::read(text);
    if (!address) {
        return std::nullopt;
    }
    // Without a scope the bytes are all, and the value is made in place.
    if (address->is_v4()) {
        return std::optional<InetAddress>(std::in_place, address->to_v4().to_bytes());
    }
    ip::address_v6 const v6 = address->to_v6();
    return v6.scope_id() == 0 ? std::optional<InetAddress>(std::in_place, v6.to_bytes())
                              : std::optional(InetAddressImpl::valueOf(v6));
}

} // namespace foundation::network

std::size_t std::hash<foundation::network::InetAddress>::operator()(
    foundation::network::InetAddress const& address) const noexcept {
    using foundation::network::InetAddressImpl;
    return static_cast<std::size_t>(InetAddressImpl::hashOf(InetAddressImpl::of(address)));
}
