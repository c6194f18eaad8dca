#include <foundation/network/AddressClass.hpp>

#include "support/Generator.hpp"
#include "support/Networks.hpp"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace foundation::network;
using support::Bytes;
using support::PlainNetwork;

struct Row {
    std::string block, name, reachable;
};

// The registries as they are published, in their order, and the two multicast blocks.
// clang-format off
Row const registry[] = {
    {"0.0.0.0/32", "unspecified", "false"},
    {"0.0.0.0/8", "thisNetwork", "false"},
    {"10.0.0.0/8", "privateUse", "false"},
    {"100.64.0.0/10", "shared", "false"},
    {"127.0.0.0/8", "loopback", "false"},
    {"169.254.0.0/16", "linkLocal", "false"},
    {"172.16.0.0/12", "privateUse", "false"},
    {"192.0.0.0/24", "protocolAssignment", "false"},
    {"192.0.0.0/29", "protocolAssignment", "false"},
    {"192.0.0.8/32", "protocolAssignment", "false"},
    {"192.0.0.9/32", "protocolAssignment", "true"},
    {"192.0.0.10/32", "protocolAssignment", "true"},
    {"192.0.0.170/32", "protocolAssignment", "false"},
    {"192.0.0.171/32", "protocolAssignment", "false"},
    {"192.0.2.0/24", "documentation", "false"},
    {"192.31.196.0/24", "protocolAssignment", "true"},
    {"192.52.193.0/24", "protocolAssignment", "true"},
    {"192.88.99.0/24", "protocolAssignment", "n/a"},
    {"192.88.99.2/32", "protocolAssignment", "false"},
    {"192.168.0.0/16", "privateUse", "false"},
    {"192.175.48.0/24", "protocolAssignment", "true"},
    {"198.18.0.0/15", "benchmarking", "false"},
    {"198.51.100.0/24", "documentation", "false"},
    {"203.0.113.0/24", "documentation", "false"},
    {"224.0.0.0/4", "multicast", "false"},
    {"240.0.0.0/4", "reserved", "false"},
    {"255.255.255.255/32", "broadcast", "false"},
    {"::1/128", "loopback", "false"},
    {"::/128", "unspecified", "false"},
    {"::ffff:0:0/96", "mapped", "false"},
    {"64:ff9b::/96", "translated", "true"},
    {"64:ff9b:1::/48", "translated", "false"},
    {"100::/64", "discard", "false"},
    {"100:0:0:1::/64", "discard", "false"},
    {"2001::/23", "protocolAssignment", "false"},
    {"2001::/32", "translated", "n/a"},
    {"2001:1::1/128", "protocolAssignment", "true"},
    {"2001:1::2/128", "protocolAssignment", "true"},
    {"2001:1::3/128", "protocolAssignment", "true"},
    {"2001:2::/48", "benchmarking", "false"},
    {"2001:3::/32", "protocolAssignment", "true"},
    {"2001:4:112::/48", "protocolAssignment", "true"},
    {"2001:10::/28", "protocolAssignment", "n/a"},
    {"2001:20::/28", "protocolAssignment", "true"},
    {"2001:30::/28", "protocolAssignment", "true"},
    {"2001:db8::/32", "documentation", "false"},
    {"2002::/16", "translated", "n/a"},
    {"2620:4f:8000::/48", "protocolAssignment", "true"},
    {"3fff::/20", "documentation", "false"},
    {"5f00::/16", "protocolAssignment", "false"},
    {"fc00::/7", "uniqueLocal", "false"},
    {"fe80::/10", "linkLocal", "false"},
    {"ff00::/8", "multicast", "false"}
};
// clang-format on

std::string nameOf(AddressClass found) {
    static std::map<AddressClass, std::string> const names{
        {AddressClass::Global, "global"},
        {AddressClass::Unspecified, "unspecified"},
        {AddressClass::ThisNetwork, "thisNetwork"},
        {AddressClass::PrivateUse, "privateUse"},
        {AddressClass::Shared, "shared"},
        {AddressClass::Loopback, "loopback"},
        {AddressClass::LinkLocal, "linkLocal"},
        {AddressClass::ProtocolAssignment, "protocolAssignment"},
        {AddressClass::Documentation, "documentation"},
        {AddressClass::Benchmarking, "benchmarking"},
        {AddressClass::Multicast, "multicast"},
        {AddressClass::Reserved, "reserved"},
        {AddressClass::Broadcast, "broadcast"},
        {AddressClass::Mapped, "mapped"},
        {AddressClass::Translated, "translated"},
        {AddressClass::Discard, "discard"},
        {AddressClass::UniqueLocal, "uniqueLocal"}};
    return names.at(found);
}

PlainNetwork blockOf(std::string const& text) {
    std::size_t const slash = text.find('/');
    return {InetAddress(text.substr(0, slash)).bytes(), std::stoul(text.substr(slash + 1))};
}

// By the longest of all rows that hold the address, looked for one by one.
Row plainly(Bytes const& address) {
    Row found{address.size() == 4 ? "0.0.0.0/0" : "::/0", "global", "true"};
    for (auto const& row : registry) {
        auto const block = blockOf(row.block);
        if (block.contains(address) && block.prefix > blockOf(found.block).prefix) {
            found = row;
        }
    }
    return found;
}

void agrees(Bytes const& bytes) {
    InetAddress const address(bytes);
    auto const [block, name, reachable] = plainly(bytes);
    EXPECT_EQ(nameOf(classify(address)), name) << address;
    EXPECT_EQ(isGlobal(address), reachable == "true") << address;
    EXPECT_EQ(isPrivate(address), name == "privateUse" || name == "uniqueLocal") << address;
    EXPECT_EQ(isLinkLocal(address), name == "linkLocal") << address;
}

TEST(AddressClass, IsThatOfTheSmallestBlock) {
    support::Generator random(9);
    std::size_t addresses = 0;
    for (auto const& row : registry) {
        auto const block = blockOf(row.block);
        ASSERT_FALSE(block.hasHostBits()) << row.block;
        Bytes const first = block.filled(false), last = block.filled(true);
        Bytes below = first, above = last, inside = first;
        for (std::size_t at = below.size(); at-- > 0 && below[at]-- == 0;) {
        }
        for (std::size_t at = above.size(); at-- > 0 && ++above[at] == 0;) {
        }
        for (std::size_t at = block.prefix; at != inside.size() * 8; ++at) {
            support::setBit(inside, at, random.chance(50));
        }
        for (auto const& address : {first, last, below, above, inside}) {
            agrees(address);
            ++addresses;
        }
    }
    EXPECT_EQ(addresses, 53u * 5);
}

TEST(AddressClass, AnswersByHand) {
    // clang-format off
    struct Answer { char const* address; AddressClass kind; bool global; };
    Answer const rows[] = {
        {"8.8.4.4", AddressClass::Global, true}, {"2600::1", AddressClass::Global, true},
        {"4000::", AddressClass::Global, true}, {"192.168.7.1", AddressClass::PrivateUse, false},
        {"172.32.0.0", AddressClass::Global, true}, {"fd00::1", AddressClass::UniqueLocal, false},
        {"fe80::1%7", AddressClass::LinkLocal, false}, {"fec0::1", AddressClass::Global, true},
        {"192.0.0.9", AddressClass::ProtocolAssignment, true},
        {"192.88.99.1", AddressClass::ProtocolAssignment, false}, // "N/A"
        {"2001::1", AddressClass::Translated, false},
        {"2002::1", AddressClass::Translated, false},
        {"64:ff9b::8.8.8.8", AddressClass::Translated, true},
        {"::ffff:10.0.0.1", AddressClass::Mapped, false}, {"::10.0.0.1", AddressClass::Global, true},
        {"ff0e::1", AddressClass::Multicast, false}, {"ff02::1%7", AddressClass::Multicast, false},
        {"255.255.255.255", AddressClass::Broadcast, false}, {"255.255.255.254", AddressClass::Reserved, false},
        {"0.0.0.0", AddressClass::Unspecified, false}, {"0.0.0.1", AddressClass::ThisNetwork, false},
        {"::", AddressClass::Unspecified, false}, {"::1%3", AddressClass::Loopback, false},
    };
    // clang-format on
    for (auto const& [address, kind, global] : rows) {
        EXPECT_EQ(classify(InetAddress(address)), kind) << address;
        EXPECT_EQ(isGlobal(InetAddress(address)), global) << address;
    }
    EXPECT_EQ(std::size(rows), 23u);
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
