#include <foundation/network/AddressClass.hpp>

#include "inet/Bits.hpp"
#include "inet/InetAddressImpl.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using inet::Bits;

/// A block of addresses. In a table the longest prefixes come first, so the first block that holds an address
/// is the smallest one. The last block holds every address.
struct Block {
    Bits first;
    unsigned int length;
    AddressClass kind;
    bool reachable; // the column "Globally Reachable"
    Bits mask = inet::maskOf(length);

    constexpr bool holds(Bits const& address) const { return (address & mask) == first; }
};

constexpr Bits ipv4(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) {
    return {a << 56U | b << 48U | c << 40U | d << 32U, 0};
}
constexpr Bits ipv6(std::array<std::uint64_t, 8> const& groups) {
    auto const half = [&groups](std::size_t at) {
        return groups[at] << 48U | groups[at + 1] << 32U | groups[at + 2] << 16U | groups[at + 3];
    };
    return {half(0), half(4)};
}

using enum AddressClass;
constexpr bool yes = true, no = false;
constexpr bool unsaid = false; // "N/A"

// IANA's special-purpose address registries of 2026-11-23, with the RFC and the name of each block. The last
// row of each table stands for all other addresses.
// clang-format off
constexpr auto ipv4Blocks = std::to_array<Block>({
    {ipv4(0, 0, 0, 0), 32, Unspecified, no},                // RFC 1122: This host on this network
    {ipv4(192, 0, 0, 8), 32, ProtocolAssignment, no},       // RFC 7600: IPv4 dummy address
    {ipv4(192, 0, 0, 9), 32, ProtocolAssignment, yes},      // RFC 7723: Port Control Protocol Anycast
    {ipv4(192, 0, 0, 10), 32, ProtocolAssignment, yes},     // RFC 8155: TURN Anycast
    {ipv4(192, 0, 0, 170), 32, ProtocolAssignment, no},     // RFC 8880: NAT64/DNS64 Discovery
    {ipv4(192, 0, 0, 171), 32, ProtocolAssignment, no},     // RFC 8880: NAT64/DNS64 Discovery
    {ipv4(192, 88, 99, 2), 32, ProtocolAssignment, no},     // RFC 6751: 6a44-relay anycast address
    {ipv4(255, 255, 255, 255), 32, Broadcast, no},          // RFC 8190: Limited Broadcast
    {ipv4(192, 0, 0, 0), 29, ProtocolAssignment, no},       // RFC 7335: IPv4 Service Continuity Prefix
    {ipv4(192, 0, 0, 0), 24, ProtocolAssignment, no},       // RFC 6890: IETF Protocol Assignments
    {ipv4(192, 0, 2, 0), 24, Documentation, no},            // RFC 5737: Documentation (TEST-NET-1)
    {ipv4(192, 31, 196, 0), 24, ProtocolAssignment, yes},   // RFC 7535: AS112-v4
    {ipv4(192, 52, 193, 0), 24, ProtocolAssignment, yes},   // RFC 7450: AMT
    {ipv4(192, 88, 99, 0), 24, ProtocolAssignment, unsaid}, // RFC 7526: Deprecated (6to4 Relay Anycast)
    {ipv4(192, 175, 48, 0), 24, ProtocolAssignment, yes},   // RFC 7534: Direct Delegation AS112 Service
    {ipv4(198, 51, 100, 0), 24, Documentation, no},         // RFC 5737: Documentation (TEST-NET-2)
    {ipv4(203, 0, 113, 0), 24, Documentation, no},          // RFC 5737: Documentation (TEST-NET-3)
    {ipv4(169, 254, 0, 0), 16, LinkLocal, no},              // RFC 3927: Link Local
    {ipv4(192, 168, 0, 0), 16, PrivateUse, no},             // RFC 1918: Private-Use
    {ipv4(198, 18, 0, 0), 15, Benchmarking, no},            // RFC 2544: Benchmarking
    {ipv4(172, 16, 0, 0), 12, PrivateUse, no},              // RFC 1918: Private-Use
    {ipv4(100, 64, 0, 0), 10, Shared, no},                  // RFC 6598: Shared Address Space
    {ipv4(0, 0, 0, 0), 8, ThisNetwork, no},                 // RFC 791: This network
    {ipv4(10, 0, 0, 0), 8, PrivateUse, no},                 // RFC 1918: Private-Use
    {ipv4(127, 0, 0, 0), 8, Loopback, no},                  // RFC 1122: Loopback
    {ipv4(224, 0, 0, 0), 4, Multicast, no},                 // RFC 5771: Multicast
    {ipv4(240, 0, 0, 0), 4, Reserved, no},                  // RFC 1112: Reserved
    {ipv4(0, 0, 0, 0), 0, Global, yes}});
constexpr auto ipv6Blocks = std::to_array<Block>({
    {ipv6({}), 128, Unspecified, no},                  // RFC 4291: Unspecified Address
    {ipv6({0, 0, 0, 0, 0, 0, 0, 0x1}), 128, Loopback, no}, // RFC 4291: Loopback Address
    {ipv6({0x2001, 0x1, 0, 0, 0, 0, 0, 0x1}), 128, ProtocolAssignment, yes}, // RFC 7723: PCP Anycast
    {ipv6({0x2001, 0x1, 0, 0, 0, 0, 0, 0x2}), 128, ProtocolAssignment, yes}, // RFC 8155: TURN Anycast
    {ipv6({0x2001, 0x1, 0, 0, 0, 0, 0, 0x3}), 128, ProtocolAssignment, yes}, // RFC 9665: DNS-SD SRP Anycast
    {ipv6({0, 0, 0, 0, 0, 0xffff, 0, 0}), 96, Mapped, no}, // RFC 4291: IPv4-mapped Address
    {ipv6({0x64, 0xff9b}), 96, Translated, yes},       // RFC 6052: IPv4-IPv6 Translat.
    {ipv6({0x100}), 64, Discard, no},                  // RFC 6666: Discard-Only Address Block
    {ipv6({0x100, 0, 0, 0x1}), 64, Discard, no},       // RFC 9780: Dummy IPv6 Prefix
    {ipv6({0x64, 0xff9b, 0x1}), 48, Translated, no},   // RFC 8215: IPv4-IPv6 Translat.
    {ipv6({0x2001, 0x2}), 48, Benchmarking, no},       // RFC 5180: Benchmarking
    {ipv6({0x2001, 0x4, 0x112}), 48, ProtocolAssignment, yes}, // RFC 7535: AS112-v6
    {ipv6({0x2620, 0x4f, 0x8000}), 48, ProtocolAssignment, yes}, // RFC 7534: Direct Delegation AS112 Service
    {ipv6({0x2001}), 32, Translated, unsaid},          // RFC 4380: TEREDO
    {ipv6({0x2001, 0x3}), 32, ProtocolAssignment, yes}, // RFC 7450: AMT
    {ipv6({0x2001, 0xdb8}), 32, Documentation, no},    // RFC 3849: Documentation
    {ipv6({0x2001, 0x10}), 28, ProtocolAssignment, unsaid}, // RFC 4843: Deprecated (previously ORCHID)
    {ipv6({0x2001, 0x20}), 28, ProtocolAssignment, yes}, // RFC 7343: ORCHIDv2
    {ipv6({0x2001, 0x30}), 28, ProtocolAssignment, yes}, // RFC 9374: Drone Remote ID Protocol Entity Tags
    {ipv6({0x2001}), 23, ProtocolAssignment, no},      // RFC 2928: IETF Protocol Assignments
    {ipv6({0x3fff}), 20, Documentation, no},           // RFC 9637: Documentation
    {ipv6({0x2002}), 16, Translated, unsaid},          // RFC 3056: 6to4
    {ipv6({0x5f00}), 16, ProtocolAssignment, no},      // RFC 9602: Segment Routing (SRv6) SIDs
    {ipv6({0xfe80}), 10, LinkLocal, no},               // RFC 4291: Link-Local Unicast
    {ipv6({0xff00}), 8, Multicast, no},                // RFC 4291: Multicast
    {ipv6({0xfc00}), 7, UniqueLocal, no},              // RFC 4193: Unique-Local
    {ipv6({}), 0, Global, yes}});
// clang-format on

template <std::size_t Size>
constexpr bool isInOrder(std::array<Block, Size> const& blocks) {
    return std::is_sorted(blocks.begin(), blocks.end(),
                          [](Block const& a, Block const& b) { return a.length > b.length; }) &&
           std::all_of(blocks.begin(), blocks.end(),
                       [](Block const& block) { return block.holds(block.first); });
}
static_assert(ipv4Blocks.size() + ipv6Blocks.size() == 53 + 2);
static_assert(isInOrder(ipv4Blocks) && isInOrder(ipv6Blocks));

template <std::size_t Size>
Block const& blockHolding(std::array<Block, Size> const& blocks, Bits const& address) {
    return *std::find_if(blocks.begin(), blocks.end(),
                         [&address](Block const& block) { return block.holds(address); });
}

Block const& blockOf(InetAddress const& address) {
    ip::address const& value = InetAddressImpl::of(address);
    return value.is_v4() ? blockHolding(ipv4Blocks, inet::bitsOf(value))
                         : blockHolding(ipv6Blocks, inet::bitsOf(value));
}

} // namespace

AddressClass classify(InetAddress const& address) noexcept {
    return blockOf(address).kind;
}

bool isGlobal(InetAddress const& address) noexcept {
    return blockOf(address).reachable;
}

std::optional<InetAddress> unmapped(InetAddress const& address) {
    ip::address const& value = InetAddressImpl::of(address);
    if (value.is_v4() || !value.to_v6().is_v4_mapped()) {
        return std::nullopt;
    }
    return InetAddressImpl::valueOf(
        ip::address_v4(static_cast<ip::address_v4::uint_type>(inet::bitsOf(value).low)));
}

} // namespace foundation::network
