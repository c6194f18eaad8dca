#pragma once

/// Addresses of both versions as bits from the left, so that the same code works on prefixes of both.

#include <boost/asio/ip/address.hpp>

#include <array>
#include <cstddef>
#include <cstdint>

namespace foundation::network::inet {

/// 128 bits in network order; the first is the highest bit of `high`. An IPv4 address takes the first 32, and
/// zeros follow.
struct Bits {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    friend constexpr bool operator==(Bits const&, Bits const&) = default;
    friend constexpr auto operator<=>(Bits const&, Bits const&) = default;
    friend constexpr Bits operator&(Bits a, Bits b) { return {a.high & b.high, a.low & b.low}; }
    friend constexpr Bits operator|(Bits a, Bits b) { return {a.high | b.high, a.low | b.low}; }
    friend constexpr Bits operator^(Bits a, Bits b) { return {a.high ^ b.high, a.low ^ b.low}; }
    friend constexpr Bits operator~(Bits a) { return {~a.high, ~a.low}; }
};

using Bytes16 = std::array<unsigned char, 16>;

constexpr Bits bitsOf(Bytes16 const& bytes) {
    Bits bits;
    for (std::size_t i = 0; i != 8; ++i) {
        bits.high = bits.high << 8U | bytes[i];
        bits.low = bits.low << 8U | bytes[i + 8];
    }
    return bits;
}

constexpr Bytes16 bytesOf(Bits const& bits) {
    Bytes16 bytes{};
    for (std::size_t i = 0; i != 8; ++i) {
        bytes[i] = static_cast<unsigned char>(bits.high >> (56 - 8 * i));
        bytes[i + 8] = static_cast<unsigned char>(bits.low >> (56 - 8 * i));
    }
    return bytes;
}

inline Bits bitsOf(boost::asio::ip::address const& address) {
    return address.is_v4() ? Bits{std::uint64_t{address.to_v4().to_uint()} << 32U, 0}
                           : bitsOf(address.to_v6().to_bytes());
}

/// A mask of the first `length` bits, 128 at most.
constexpr Bits maskOf(unsigned int length) {
    auto const ones = [](unsigned int count) { return count == 0 ? 0 : ~std::uint64_t{0} << (64 - count); };
    return {ones(length < 64 ? length : 64), ones(length < 64 ? 0 : length - 64)};
}
static_assert(maskOf(0) == Bits{} && maskOf(64) == Bits{~std::uint64_t{0}, 0} && maskOf(128) == ~Bits{});

/// How many bits the addresses of a version have.
constexpr unsigned int widthOf(bool ipv4) {
    return ipv4 ? 32 : 128;
}

/// Mixes a word into a hash. Every bit of both affects every bit of the result.
constexpr std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
    std::uint64_t z = (hash ^ word) + 0x9E3779B97F4A7C15; // the steps of SplitMix64
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EB;
    return z ^ (z >> 31U);
}

constexpr std::uint64_t hashOf(Bits const& bits) {
    return mixed(mixed(0, bits.high), bits.low); // one after the other, so that their order counts
}

} // namespace foundation::network::inet
