#include <foundation/network/AddressClass.hpp>

#include "support/Generator.hpp"
#include "support/Networks.hpp"

#include <gtest/gtest.h>

namespace {

using namespace foundation::network;
using support::Bytes;
using support::ReferenceNetwork;
using enum AddressClass;

// The registries as they are published, in their order, and the two multicast blocks. Where a registry says
// "N/A" of what can be reached globally, this library says no.
// clang-format off
struct Row { std::string block; AddressClass kind; bool global; };
Row const registry[] = {
    {"0.0.0.0/32", Unspecified, false}, {"0.0.0.0/8", ThisNetwork, false}, {"10.0.0.0/8", PrivateUse, false},
    {"100.64.0.0/10", Shared, false}, {"127.0.0.0/8", Loopback, false}, {"169.254.0.0/16", LinkLocal, false},
    {"172.16.0.0/12", PrivateUse, false}, {"192.0.0.0/24", ProtocolAssignment, false},
    {"192.0.0.0/29", ProtocolAssignment, false}, {"192.0.0.8/32", ProtocolAssignment, false},
    {"192.0.0.9/32", ProtocolAssignment, true}, {"192.0.0.10/32", ProtocolAssignment, true},
    {"192.0.0.170/32", ProtocolAssignment, false}, {"192.0.0.171/32", ProtocolAssignment, false},
    {"192.0.2.0/24", Documentation, false}, {"192.31.196.0/24", ProtocolAssignment, true},
    {"192.52.193.0/24", ProtocolAssignment, true}, {"192.88.99.0/24", ProtocolAssignment, false},
    {"192.88.99.2/32", ProtocolAssignment, false}, {"192.168.0.0/16", PrivateUse, false},
    {"192.175.48.0/24", ProtocolAssignment, true}, {"198.18.0.0/15", Benchmarking, false},
    {"198.51.100.0/24", Documentation, false}, {"203.0.113.0/24", Documentation, false},
    {"224.0.0.0/4", Multicast, false}, {"240.0.0.0/4", Reserved, false},
    {"255.255.255.255/32", Broadcast, false}, {"::1/128", Loopback, false}, {"::/128", Unspecified, false},
    {"::ffff:0:0/96", Mapped, false}, {"64:ff9b::/96", Translated, true}, {"64:ff9b:1::/48", Translated, false},
    {"100::/64", Discard, false}, {"100:0:0:1::/64", Discard, false}, {"2001::/23", ProtocolAssignment, false},
    {"2001::/32", Translated, false}, {"2001:1::1/128", ProtocolAssignment, true},
    {"2001:1::2/128", ProtocolAssignment, true}, {"2001:1::3/128", ProtocolAssignment, true},
    {"2001:2::/48", Benchmarking, false}, {"2001:3::/32", ProtocolAssignment, true},
    {"2001:4:112::/48", ProtocolAssignment, true}, {"2001:10::/28", ProtocolAssignment, false},
    {"2001:20::/28", ProtocolAssignment, true}, {"2001:30::/28", ProtocolAssignment, true},
    {"2001:db8::/32", Documentation, false}, {"2002::/16", Translated, false},
    {"2620:4f:8000::/48", ProtocolAssignment, true}, {"3fff::/20", Documentation, false},
    {"5f00::/16", ProtocolAssignment, false}, {"fc00::/7", UniqueLocal, false}, {"fe80::/10", LinkLocal, false},
    {"ff00::/8", Multicast, false},
};
// clang-format on

ReferenceNetwork blockOf(std::string const& text) {
    std::size_t const slash = text.find('/');
    return {InetAddress(text.substr(0, slash)).bytes(), std::stoul(text.substr(slash + 1))};
}

// By the longest of all rows that hold the address, looked for one by one.
Row plainly(Bytes const& address) {
    Row found{address.size() == 4 ? "0.0.0.0/0" : "::/0", Global, true};
    for (auto const& row : registry) {
        auto const block = blockOf(row.block);
        if (block.contains(address) && block.prefix > blockOf(found.block).prefix) {
            found = row;
        }
    }
    return found;
}

TEST(AddressClass, IsThatOfTheSmallestBlock) {
    support::Generator random(9);
    std::size_t addresses = 0;
    for (auto const& row : registry) {
        auto const block = blockOf(row.block);
        ASSERT_FALSE(block.hasHostBits()) << row.block;
        Bytes inside = block.bytes;
        for (std::size_t at = block.prefix; at != inside.size() * 8; ++at) {
            support::setBit(inside, at, random.chance(50));
        }
        for (auto const& bytes :
             {block.filled(false), block.filled(true), block.below(), block.above(), inside}) {
            InetAddress const address(bytes);
            auto const [_, kind, global] = plainly(bytes);
            // A scope plays no part.
            for (auto const& each :
                 {address, InetAddress(address.toString() + (bytes.size() == 4 ? "" : "%7"))}) {
                EXPECT_EQ(classify(each), kind) << each;
                EXPECT_EQ(isGlobal(each), global) << each;
            }
            EXPECT_EQ(isPrivate(address), kind == PrivateUse || kind == UniqueLocal) << address;
            EXPECT_EQ(isLinkLocal(address), kind == LinkLocal) << address;
            ++addresses;
        }
    }
    EXPECT_EQ(addresses, 53u * 5);
}

TEST(Unmapped, IsTheAddressInAMappedOne) {
    EXPECT_EQ(unmapped(InetAddress("::ffff:192.0.2.1")), InetAddress("192.0.2.1"));
    EXPECT_EQ(unmapped(InetAddress("::ffff:0.0.0.0%5")), InetAddress("0.0.0.0"));
    EXPECT_EQ(unmapped(InetAddress("::ffff:ffff:ffff")), InetAddress("255.255.255.255"));
    for (char const* text : {"192.0.2.1", "::192.0.2.1", "::fffe:ffff:ffff", "::1:0:0:0", "::1:ffff:c000:201",
                             "8000::ffff:192.0.2.1", "64:ff9b::192.0.2.1"}) {
        EXPECT_EQ(unmapped(InetAddress(text)), std::nullopt) << text;
    }
}

} // namespace
