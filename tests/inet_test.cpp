#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "support/Addresses.hpp"
#include "support/Generator.hpp"
#include "support/Iris.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace {

using namespace foundation::network;
using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::ElementsAre;

// What construction from `argument` says: the text of the address, or "! " and the words of the refusal.
template <class Argument>
std::string answer(Argument const& argument) {
    try {
        return InetAddress(argument).toString();
    } catch (foundation::core::except::IInternalException const& e) {
        EXPECT_NE(dynamic_cast<std::invalid_argument const*>(&e), nullptr);
        return "! "s + e.what();
    }
}

TEST(InetAddressText, IsTheStrictFormOfEitherVersion) {
    // clang-format off
    struct Row { std::string text, expected; };
    Row const rows[] = {
        {"192.0.2.1", "192.0.2.1"}, {"255.255.255.255", "255.255.255.255"}, {"::1%7", "::1%7"},
        {"::1%", "::1"}, {"2001:DB8::00aB", "2001:db8::ab"}, {"1:0:0:2:0:0:0:3", "1:0:0:2::3"},
        {"::ffff:192.0.2.1", "::ffff:192.0.2.1"}, {"::192.0.2.1", "::192.0.2.1"},
        {"64:ff9b::192.0.2.33", "64:ff9b::c000:221"}, {"1:2:3:4:5:6:7::", "1:2:3:4:5:6:7:0"},
        {"fe80::1%no-such-adapter", "fe80::1"}, {"::1%4294967295", "::1%4294967295"},
        {"::1%-1", "::1%4294967295"}, {"fe80::1%1", "fe80::1%lo"}, {"::1\0x"s, "::1"},
        {"1.2.3.4\0x"s, "! Invalid IP address string: 1.2.3.4"},
    };
    // clang-format on
    for (auto const& [text, expected] : rows) {
        EXPECT_EQ(answer(text), expected) << testing::PrintToString(text);
        EXPECT_EQ(support::addressHolds(text), expected[0] != '!');
    }
    for (char const* text : {"127.1", "0x7f.0.0.1", "0177.0.0.1", "1.2.3.256", "1.2.3.4%1", "",
                             "host.example", "1::2::3", "[::1]", " ::1", "::1 ", "::1/128"}) {
        EXPECT_EQ(answer(std::string(text)), "! Invalid argument") << text;
    }
}

// Every set of groups that are zero with groups of each length in the others, and texts near the border of
// what is an address.
TEST(InetAddressText, AgreesWithTheSystemOnGeneratedRows) {
    constexpr std::string_view pieces[] = {"",   "0",   "7", "25",      "aB", "FFFF", "12345", ":",
                                           "::", ":0:", ".", "1.2.3.4", "g",  " ",    "-"};
    support::Generator random(6);
    std::size_t valid = 0, withDots = 0;
    for (int row = 0; row < 100'000; ++row) {
        std::vector<unsigned char> bytes(row % 2 == 0 ? 4 : 16);
        for (std::size_t at = 0; at != bytes.size(); ++at) {
            bool const zero = (row / 2 >> at / 2 & 1) != 0;
            bytes[at] =
                static_cast<unsigned char>(zero ? 0 : random.below(std::size_t{1} << random.below(9)));
        }
        std::string text = InetAddress(bytes).toString();
        ASSERT_TRUE(support::addressHolds(text));
        ASSERT_EQ(InetAddress(text).bytes(), bytes);
        withDots += bytes.size() == 16 && text.find('.') != text.npos;
        for (std::size_t edits = random.below(4); edits > 0; --edits) {
            text.replace(random.below(text.size() + 1), random.below(3), random.pick(pieces));
        }
        valid += support::addressHolds(text);
    }
    EXPECT_GT(valid, 30'000u);
    EXPECT_GT(withDots, 100u);
}

// Values in ascending order, no two the same: each comparison of each pair, and hashes.
template <class Value>
void ascends(std::vector<Value> const& values) {
    std::set<std::size_t> hashes;
    for (std::size_t i = 0; i != values.size(); ++i) {
        for (std::size_t j = 0; j != values.size(); ++j) {
            SCOPED_TRACE(values[i].toString() + " and " + values[j].toString());
            EXPECT_EQ(values[i] == values[j], i == j);
            EXPECT_EQ(values[i] != values[j], i != j);
            EXPECT_EQ(values[i] < values[j], i < j);
        }
        hashes.insert(std::hash<Value>()(values[i]));
    }
    EXPECT_EQ(hashes.size(), values.size()) << "a part is left out of the hash";
}

TEST(InetAddressOrder, IsVersionThenBytesThenScope) {
    std::vector<InetAddress> values;
    for (char const* text : {"0.0.0.0", "0.0.0.1", "0.0.1.0", "1.0.0.0", "127.0.0.1", "128.0.0.0",
                             "255.255.255.255", "::", "::1", "::1%1", "::1%2", "::1%4294967295", "::1.2.3.4",
                             "::1:0:0:0", "1::", "7fff::", "8000::", "ffff::"}) {
        values.emplace_back(text);
    }
    ASSERT_EQ(values.size(), 18u);
    ascends(values);
    // However a value was made, and whatever its name.
    InetAddress const named = InetAddress::getByName("127.0.0.1");
    EXPECT_EQ(named, InetAddress(std::vector<unsigned char>{127, 0, 0, 1}));
    EXPECT_EQ(std::hash<InetAddress>()(named), std::hash<InetAddress>()(InetAddress("127.0.0.1")));
    EXPECT_FALSE(named < InetAddress("127.0.0.1"));
}

TEST(InetAddressScope, IsTheNumberBehindTheAddress) {
    EXPECT_EQ(getScopeId(InetAddress("127.0.0.1")), 0u);
    EXPECT_EQ(getScopeId(InetAddress("::1")), 0u);
    EXPECT_EQ(getScopeId(InetAddress("::1%4294967295")), 4294967295u);
    EXPECT_EQ(getScopeId(InetAddress("fe80::1%lo")), 1u);
}

TEST(InetAddressBytes, MakeAnAddressByTheirNumber) {
    EXPECT_EQ(InetAddress().toString(), "0.0.0.0");
    EXPECT_EQ(answer(std::vector<unsigned char>{}), "0.0.0.0");
    EXPECT_EQ(answer(std::vector<unsigned char>(16)), "::");
    EXPECT_EQ(InetAddress(std::array<unsigned char, 4>{192, 0, 2, 1}).toString(), "192.0.2.1");
    EXPECT_EQ(InetAddress(std::array<unsigned char, 16>{0x20, 1, 0xd, 0xb8}).getHostAddress(), "2001:db8::");
    for (std::size_t const size : {1u, 3u, 5u, 15u, 17u}) {
        EXPECT_EQ(answer(std::vector<unsigned char>(size)),
                  "! Can not create InetAddress from " + std::to_string(size) +
                      " elements. Vector must have 0, 4 or 16 elements.");
    }
}

TEST(InetAddressKinds, EndWhereTheirRangesEnd) {
    // clang-format off
    std::string const rows[] = { // "loopback " or "multicast " before the addresses that are
        "126.255.255.255", "loopback 127.0.0.0", "loopback 127.255.255.255", "128.0.0.0", "223.255.255.255",
        "multicast 224.0.0.0", "multicast 239.255.255.255", "240.0.0.0", "::", "loopback ::1",
        "loopback ::1%3", "::2", "::ffff:127.0.0.1", "::ffff:224.0.0.1", "feff::", "multicast ff00::",
        "multicast ffff::",
    };
    // clang-format on
    for (auto const& row : rows) {
        InetAddress const address(row.substr(row.rfind(' ') + 1));
        EXPECT_EQ(address.isLoopback(), row[0] == 'l') << row;
        EXPECT_EQ(address.isMulticast(), row[0] == 'm') << row;
    }
}

TEST(InterfaceAddressValue, KeepsAddressAndPrefix) {
    EXPECT_EQ(InterfaceAddress().toString(), "0.0.0.0/0");
    EXPECT_EQ(InterfaceAddress().prefixLength(), 0);
    // clang-format off
    struct Row { std::string address; unsigned short prefix; std::string expected; };
    Row const rows[] = {
        {"10.1.2.3", 8, "10.1.2.3/8"}, {"10.1.2.3", 32, "10.1.2.3/32"},
        {"10.1.2.3", 33, "! prefix length too large"}, {"::1", 128, "::1/128"},
        {"fe80::1%5", 64, "fe80::1%5/64"}, {"::1", 129, "! prefix length too large"},
        {"::1", 65535, "! prefix length too large"},
    };
    // clang-format on
    for (auto const& [address, prefix, expected] : rows) {
        try {
            InterfaceAddress const made(InetAddress(address), prefix);
            EXPECT_EQ(made.prefixLength(), prefix);
            EXPECT_EQ(made.getInetAddress().toString(), address);
            EXPECT_EQ(made.toString(), expected);
        } catch (std::out_of_range const& e) {
            EXPECT_EQ(dynamic_cast<foundation::core::except::IException const*>(&e), nullptr);
            EXPECT_EQ("! "s + e.what(), expected);
        }
    }
}

TEST(InterfaceAddressValue, IsOrderedByAddressThenPrefix) {
    auto const made = [](char const* address, unsigned short prefix) {
        return InterfaceAddress(InetAddress(address), prefix);
    };
    std::vector const values{
        made("9.255.255.255", 32), made("10.0.0.0", 0), made("10.0.0.0", 8), made("10.0.0.0", 9),
        made("10.0.0.1", 8),       made("::", 0),       made("::1", 8),      made("::1", 128),
        made("::1%1", 8)};
    ascends(values);
    EXPECT_EQ(values.front(), InterfaceAddress(values.front().getInetAddress(), 32));
}

TEST(HardwareAddressText, TakesAnyLength) {
    EXPECT_EQ(HardwareAddress().toString(), "");
    HardwareAddress const ethernet({0x00, 0x1a, 0x2b, 0x3c, 0x4d, 0xfe});
    EXPECT_EQ(ethernet.toString(), "00:1a:2b:3c:4d:fe");
    EXPECT_THAT(ethernet, ElementsAre(0x00, 0x1a, 0x2b, 0x3c, 0x4d, 0xfe));
    EXPECT_EQ(HardwareAddress(std::vector<unsigned char>(8, 0xA0)).toString(), "a0:a0:a0:a0:a0:a0:a0:a0");
    EXPECT_EQ(HardwareAddress(ethernet.bytes()).toString(), ethernet.toString());
}

TEST(HardwareAddressText, IsReadBack) {
    // clang-format off
    struct Row { std::string text, expected; };
    Row const rows[] = {
        {"", ""}, {"00", "00"}, {"fF-0a", "ff:0a"}, {"00:1A:2b:3C:4d:5e", "00:1a:2b:3c:4d:5e"},
        {"09-90-af-FA-00-01-02-03", "09:90:af:fa:00:01:02:03"},
    };
    // clang-format on
    for (auto const& [text, expected] : rows) {
        EXPECT_EQ(parseHardwareAddress(text).toString(), expected);
        EXPECT_EQ(tryParseHardwareAddress(text), parseHardwareAddress(expected)) << text;
    }
    std::vector<unsigned char> bytes;
    for (unsigned char byte = 0; bytes.size() != 32; byte = static_cast<unsigned char>(byte + 57)) {
        EXPECT_EQ(parseHardwareAddress(HardwareAddress(bytes).toString()), HardwareAddress(bytes));
        bytes.push_back(byte);
    }
    // clang-format off
    std::string_view const malformed[] = {
        "0"sv, "000"sv, ":"sv, "00:"sv, ":00"sv, "00:0"sv, "0:00"sv, "00:000"sv, "00::00"sv, "00 00"sv,
        "00.00"sv, "00/00"sv, "0011"sv, "001122334455"sv, "00:11-22"sv, "00-11:22"sv, "00:11:22-33"sv, "g0"sv,
        "0g"sv, "0@"sv, "0`"sv, "/0"sv, ":0"sv, "G0"sv, "00:11 "sv, " 00:11"sv, "0x:11"sv, "00:\xC1\xB1"sv,
        "00:1\0"sv, "\x10\x11"sv,
    };
    // clang-format on
    for (auto const text : malformed) {
        EXPECT_EQ(tryParseHardwareAddress(text), std::nullopt) << text;
        EXPECT_EQ(support::thrown<std::invalid_argument>([&] { (void)parseHardwareAddress(text); }),
                  ("Invalid hardware address: " + std::string(text)).c_str());
    }
    EXPECT_EQ(std::size(malformed), 30u);
}

TEST(HardwareAddressOrder, IsThatOfTheBytes) {
    std::vector<HardwareAddress> values;
    for (char const* text : {"", "00", "00:00", "00:00:01", "00:01", "01", "7f:ff", "80", "ff"}) {
        values.push_back(parseHardwareAddress(text));
    }
    ASSERT_EQ(values.size(), 9u);
    ascends(values);
}

} // namespace
