#include <foundation/network/InetAddress.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/InetAddressImpl.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
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

// A byte in decimal and a dot behind it, in room of one size, so that it is written without a branch.
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

// As Asio's `to_string`, which writes IPv4 by `inet_ntop`, several times as slowly.
std::string textOf(ip::address const& address) {
    if (!address.is_v4()) {
        return address.to_string();
    }
    std::array<char, 16> text;
    std::size_t length = 0;
    for (unsigned char const byte : address.to_v4().to_bytes()) {
        std::memcpy(text.data() + length, octets[byte].text.data(), octets[byte].text.size());
        length += octets[byte].length;
    }
    return {text.data(), length - 1};
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
    InetAddress copy(other); // the name may need memory; then nothing has changed
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

// Asio compares as it is meant here: version, bytes, scope.
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
    boost::system::error_code reason;
    auto const address = InetAddressImpl::read(text, reason);
    return address ? std::optional(InetAddressImpl::valueOf(*address)) : std::nullopt;
}

} // namespace foundation::network

std::size_t std::hash<foundation::network::InetAddress>::operator()(
    foundation::network::InetAddress const& address) const noexcept {
    using foundation::network::InetAddressImpl;
    return static_cast<std::size_t>(InetAddressImpl::hashOf(InetAddressImpl::of(address)));
}
