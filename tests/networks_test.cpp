#include <foundation/network/InetNetwork.hpp>

#include "support/Generator.hpp"
#include "support/Iris.hpp"
#include "support/Networks.hpp"

#include <gtest/gtest.h>

namespace {

using namespace foundation::network;
using namespace std::string_literals;
using support::ReferenceNetwork;
using support::thrown;

// Networks side by side: the second is made of the first by turning single bits, so that they often share a
// prefix, or is of the other version, or is next to it.
TEST(InetNetwork, AgreesWithTheReference) {
    support::Generator random(7);
    std::size_t nested = 0, apart = 0;
    for (int round = 0; round < 30'000; ++round) {
        ReferenceNetwork a{support::Bytes(random.chance(50) ? 4 : 16), 0};
        for (auto& byte : a.bytes) {
            byte = static_cast<unsigned char>(random.chance(60) ? random.below(256) : random.below(2) * 255);
        }
        ReferenceNetwork b = a;
        if (random.chance(5)) {
            b.bytes.resize(20 - b.bytes.size());
        }
        for (auto* network : {&a, &b}) {
            network->prefix = random.below(network->bytes.size() * 8 + 1);
        }
        for (std::size_t turns = random.below(3); turns != 0; --turns) {
            std::size_t const at = random.below(b.bytes.size() * 8);
            support::setBit(b.bytes, at, !support::bitOf(b.bytes, at));
        }
        if (random.chance(10)) {
            a.bytes = a.filled(false);
        }
        if (random.chance(30)) {
            b.bytes = random.chance(50) ? a.below() : a.above();
            b.prefix = std::min(b.prefix, b.bytes.size() * 8);
        }
        ASSERT_NO_THROW(support::networksHold(a, b));
        nested += a.contains(b);
        apart += !a.overlaps(b);
    }
    EXPECT_GT(nested, 5'000u);
    EXPECT_GT(apart, 5'000u);
}

TEST(InetNetwork, KnowsNoScopes) {
    EXPECT_TRUE(InetNetwork("fe80::/64").contains(InetAddress("fe80::1%7")));
    EXPECT_EQ(InetNetwork::masked(InetAddress("fe80::1%7"), 64), InetNetwork("fe80::/64"));
    EXPECT_EQ(getNetwork(InterfaceAddress(InetAddress("fe80::1%7"), 10)), InetNetwork("fe80::/10"));
}

TEST(InetNetworkText, IsRefusedByTheLetter) {
    // clang-format off
    std::string const malformed[] = {
        ""s, "/"s, "/8"s, "10.0.0.0"s, "10.0.0.0/"s, "10.0.0.1/8"s, "10.0.0.0/-1"s, "10.0.0.0/+8"s,
        "10.0.0.0/08"s, "10.0.0.0/00"s, "10.0.0.0/033"s, "10.0.0.0/8 "s, "10.0.0.0/ 8"s, " 10.0.0.0/8"s,
        "10.0.0.0 /8"s, "10.0.0.0/8/8"s, "10.0.0.0/0x8"s, "10.0.0.0/8a"s, "10.0.0.0/a"s, "10/8"s, "10.0.0/8"s,
        "010.0.0.0/8"s, "10.0.0.0/255.0.0.0"s, "10.0.0.0\\8"s, "10.0.0.0/8\0"s, "10.0.0.0\0/8"s, "::1/127"s,
        "::/-0"s, "[::]/0"s, "::%/0"s, "fe80::%1/64"s, "fe80::%lo/64"s, "fe80::%none/64"s, "::\0x/0"s,
        "::/1\0"s, "::ffff:10.0.0.1/8"s, "localhost/8"s, "-1/33"s, "/33"s, "10.0.0.0/\xD9\xA3"s,
    };
    // clang-format on
    for (auto const& text : malformed) {
        EXPECT_EQ(thrown<std::invalid_argument>([&] { (void)InetNetwork(text); }),
                  ("Invalid network: " + text).c_str());
        EXPECT_EQ(tryParseNetwork(text), std::nullopt) << text;
    }
    EXPECT_EQ(std::size(malformed), 40u);
    std::size_t rows = 0;
    for (char const* text : {"10.0.0.0/33", "10.0.0.1/33", "0.0.0.0/128", "::/129", "::1/65535", "::/65536",
                             "::/4294967296", "10.0.0.0/18446744073709551624", "10.0.0.0/256",
                             "10.0.0.0/99999999999999999999999999999999999999999", "fe80::%1/129"}) {
        try {
            (void)InetNetwork(text);
            ADD_FAILURE() << text;
        } catch (std::out_of_range const& e) {
            EXPECT_STREQ(e.what(), "prefix length too large");
            EXPECT_EQ(dynamic_cast<foundation::core::except::IException const*>(&e), nullptr);
        }
        EXPECT_EQ(tryParseNetwork(text), std::nullopt) << text;
        ++rows;
    }
    EXPECT_EQ(rows, 11u);
}

TEST(InetNetworkText, OfAnAddressAndALengthIsRefusedAsBoth) {
    EXPECT_EQ(thrown<std::invalid_argument>([] { (void)InetNetwork(InetAddress("::%1"), 0); }),
              "Invalid network: ::%1/0"); // those without a scope are the law's
    for (unsigned int const length : {33u, 255u, 256u, 264u, 65535u}) {
        auto const prefix = static_cast<unsigned short>(length);
        EXPECT_THROW((void)InetNetwork(InetAddress("10.0.0.1"), prefix), std::out_of_range);
        EXPECT_THROW((void)InetNetwork::masked(InetAddress("10.0.0.1"), prefix), std::out_of_range);
    }
    EXPECT_THROW((void)InetNetwork::masked(InetAddress("::1"), 129), std::out_of_range);
}

// Texts of networks, and texts near the border of what is one.
TEST(InetNetworkText, AgreesWithAPlainReadingOfGeneratedRows) {
    constexpr std::string_view pieces[] = {"",   "0",  "1",  "8", "/",  "//", "/0", "/32", "/33", "/128",
                                           "::", ":0", "f:", "%", "%1", ".",  " ",  "-",   "+",   "1.2.0.0"};
    support::Generator random(8);
    std::size_t taken = 0, refused = 0;
    for (int row = 0; row < 60'000; ++row) {
        ReferenceNetwork plain{support::Bytes(random.chance(50) ? 4 : 16), 0};
        for (auto& byte : plain.bytes) {
            byte = static_cast<unsigned char>(random.chance(33) ? random.below(256) : 0);
        }
        plain.prefix = random.below(plain.bytes.size() * 8 + 1);
        std::string text = plain.toString();
        for (std::size_t edits = random.below(4); edits > 0; --edits) {
            text.replace(random.below(text.size() + 1), random.below(3), random.pick(pieces));
        }
        ASSERT_NO_THROW(++(support::networkHolds(text) ? taken : refused));
    }
    EXPECT_GT(taken, 15'000u);
    EXPECT_GT(refused, 15'000u);
}

} // namespace
