#include <foundation/network/InetNetwork.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/Bits.hpp"
#include "inet/InetAddressImpl.hpp"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <stdexcept>
#include <type_traits>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using inet::Bits;
using inet::bitsOf;
using inet::maskOf;

static_assert(std::is_trivially_copyable_v<InetNetwork> && sizeof(InetNetwork) == 18);

InetAddress addressOf(unsigned int version, Bits const& bits) {
    return InetAddressImpl::valueOf(
        version == 4 ? ip::address(ip::address_v4(static_cast<ip::address_v4::uint_type>(bits.high >> 32U)))
                     : ip::address(ip::address_v6(inet::bytesOf(bits))));
}

// Reads a prefix length in decimal without leading zeros. Numbers too large for any prefix all become
// `tooLarge`, so that nothing overflows.
std::optional<unsigned int> readPrefixLength(std::string_view digits) {
    constexpr unsigned int tooLarge = 999;
    if (digits.empty() || (digits.size() > 1 && digits.front() == '0')) {
        return std::nullopt;
    }
    unsigned int number = 0;
    for (char const digit : digits) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        number = std::min(number * 10 + static_cast<unsigned int>(digit - '0'), tooLarge);
    }
    return number;
}

} // namespace

// The network that an address and a prefix length make, or why they make none. A length that is too large
// comes before host bits that are set, since host bits are those behind the prefix.
struct InetNetwork::Reading {
    enum class Outcome { Taken, Refused, TooLong };

    static Reading masked(ip::address const& address, unsigned int length) {
        bool const tooLong = length > inet::widthOf(address.is_v4());
        return {tooLong ? Outcome::TooLong : Outcome::Taken, bitsOf(address) & maskOf(tooLong ? 0 : length),
                static_cast<unsigned char>(length), static_cast<unsigned char>(address.is_v4() ? 4 : 6)};
    }

    static Reading exact(ip::address const& address, unsigned int length) {
        Reading reading = masked(address, length);
        bool const scoped = address.is_v6() && address.to_v6().scope_id() != 0;
        if (reading.outcome == Outcome::Taken && (scoped || reading.bits != bitsOf(address))) {
            reading.outcome = Outcome::Refused;
        }
        return reading;
    }

    static Reading of(std::string_view text) {
        std::size_t const slash = text.rfind('/');
        if (slash == std::string_view::npos) {
            return {};
        }
        auto const length = readPrefixLength(text.substr(slash + 1));
        auto const address = InetAddressImpl::read(text.substr(0, slash));
        if (!length || !address) {
            return {};
        }
        Reading reading = exact(*address, *length);
        // A scope id of 0, or a zero character, which reading the address did not refuse.
        if (reading.outcome == Outcome::Taken && text.find_first_of(std::string_view("%\0", 2)) < slash) {
            reading.outcome = Outcome::Refused;
        }
        return reading;
    }

    // Returns itself, or throws. `text` makes the text for the message.
    template <class Text>
    Reading const& checked(Text const& text) const {
        if (outcome == Outcome::TooLong) {
            boost::throw_exception(std::out_of_range("prefix length too large")); // as Asio does
        }
        if (outcome == Outcome::Refused) {
            throw core::except::detail::makeInternalException(
                std::invalid_argument("Invalid network: " + text()));
        }
        return *this;
    }

    Outcome outcome = Outcome::Refused;
    Bits bits;
    unsigned char length = 0;
    unsigned char version = 4;
};

InetNetwork::InetNetwork(Reading const& reading) noexcept
    : bytes(inet::bytesOf(reading.bits)), length(reading.length), version(reading.version) {}

InetNetwork::InetNetwork(InetAddress const& address, unsigned short prefixLength)
    : InetNetwork(Reading::exact(InetAddressImpl::of(address), prefixLength).checked([&] {
          return address.toString() + '/' + std::to_string(prefixLength);
      })) {}

InetNetwork::InetNetwork(std::string const& text)
    : InetNetwork(Reading::of(text).checked([&text] { return text; })) {}

InetNetwork InetNetwork::masked(InetAddress const& address, unsigned short prefixLength) {
    return InetNetwork(
        Reading::masked(InetAddressImpl::of(address), prefixLength).checked([] { return std::string(); }));
}

bool InetNetwork::contains(InetAddress const& address) const noexcept {
    ip::address const& value = InetAddressImpl::of(address);
    return value.is_v4() == (version == 4) && (bitsOf(value) & maskOf(length)) == bitsOf(bytes);
}

bool InetNetwork::contains(InetNetwork const& other) const noexcept {
    return other.version == version && other.length >= length &&
           (bitsOf(other.bytes) & maskOf(length)) == bitsOf(bytes);
}

bool InetNetwork::overlaps(InetNetwork const& other) const noexcept {
    return contains(other) || other.contains(*this);
}

InetAddress InetNetwork::getFirst() const {
    return addressOf(version, bitsOf(bytes));
}

InetAddress InetNetwork::getLast() const {
    return addressOf(version, bitsOf(bytes) | ~maskOf(length));
}

InetAddress InetNetwork::getNetmask() const {
    return addressOf(version, maskOf(length));
}

std::optional<InetAddress> InetNetwork::getBroadcast() const {
    return version == 4 && length < 31 ? std::optional(getLast()) : std::nullopt;
}

std::string InetNetwork::toString() const {
    return getFirst().toString() + '/' + std::to_string(length);
}

std::optional<InetNetwork> tryParseNetwork(std::string_view text) {
    auto const reading = InetNetwork::Reading::of(text);
    return reading.outcome == InetNetwork::Reading::Outcome::Taken ? std::optional(InetNetwork(reading))
                                                                   : std::nullopt;
}

} // namespace foundation::network

std::size_t std::hash<foundation::network::InetNetwork>::operator()(
    foundation::network::InetNetwork const& network) const noexcept {
    namespace inet = foundation::network::inet;
    std::uint64_t const rest = std::uint64_t{network.length} << 8U | network.version;
    return static_cast<std::size_t>(inet::mixed(inet::hashOf(inet::bitsOf(network.bytes)), rest));
}
