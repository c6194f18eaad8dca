#include <foundation/network/NetworkInterface.hpp>

#include "OwnNamespace.hpp"
#include "platform/OperatingSystem.hpp"
#include "support/Iris.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <net/if.h>

namespace {

using namespace foundation::network;
using namespace std::string_literals;
using platform::UnicastAddress;
using namespace testing;
using Adapters = foundation::network::detail::ImmutableIterableRange<NetworkInterface>;

// One line an adapter: all that it says.
std::vector<std::string> linesOf(Adapters const& adapters) {
    std::vector<std::string> lines;
    for (auto const& adapter : adapters) {
        std::string line = adapter.getIdentifier() + ' ' + support::show(adapter.getFriendlyName()) + " [" +
                           support::show(adapter.getDescription()) + ']' + (adapter.isUp() ? " up" : "") +
                           (adapter.isLoopback() ? " loopback" : "") +
                           (adapter.supportsMulticast() ? " multicast" : "") +
                           (adapter.isPointToPoint() ? " point-to-point" : "") +
                           (adapter.getMtu() != 0 ? " mtu" + std::to_string(adapter.getMtu()) : "") + ' ' +
                           adapter.getHardwareAddress().toString();
        auto const plain = adapter.getInetAddresses();
        auto next = plain.begin();
        for (auto const& address : adapter.getInterfaceAddresses()) {
            line += ' ' + address.toString();
            EXPECT_EQ((next++)->toString(), address.getInetAddress().toString());
        }
        EXPECT_EQ(next, plain.end());
        lines.push_back(line);
    }
    return lines;
}

TEST(Listing, SaysWhatTheKernelSays) {
    inOwnNamespace([] {
        ASSERT_EQ(std::system(R"(set -e
            for i in full down bare $(seq 100); do echo link add z$i type veth peer name y$i; done | ip -batch -
            for i in full bare; do
                ip link set dev z$i addrgenmode none up; ip link set dev y$i addrgenmode none up; done
            ip link set dev zfull alias 'Büro 😀 "uplink"' address 02:00:00:00:0a:ff
            ip addr add 192.0.2.1/24 dev zfull; ip addr add 198.51.100.9 peer 203.0.113.9/30 dev zfull
            ip addr add 2001:db8::1/64 dev zfull nodad; ip link set dev zdown address 02:00:00:00:00:02
            ip addr add 192.0.2.99/31 dev zdown; ip link set dev zdown mtu 1280)"),
                  0);
        auto const number = [](char const* name) { return std::to_string(if_nametoindex(name)); };
        auto const full =
            number("zfull") +
            " zfull [B\\u{FC}ro \\u{D83D}\\u{DE00} \"uplink\"] up multicast mtu1500 02:00:00:00:0a:ff"
            " 192.0.2.1/24 198.51.100.9/30 2001:db8::1/64";
        auto const all = linesOf(NetworkInterface::listAll());
        EXPECT_THAT(all, IsSupersetOf(
                             {full, number("zdown") +
                                        " zdown [zdown] multicast mtu1280 02:00:00:00:00:02 192.0.2.99/31"}));
        EXPECT_EQ(linesOf(NetworkInterface::list()),
                  (std::vector{all.front(), full})); // those with addresses
        EXPECT_THAT(all.front(), StartsWith("1 lo [lo] up loopback mtu65536  127.0.0.1/8"));
        EXPECT_GT(all.size(), 204u); // more than one answer of the kernel holds
    });
}

// A system with the adapters that a test wants.
class FakeSystem : public platform::OperatingSystem {
public:
    FakeSystem() { replaceOperatingSystem(this); }
    ~FakeSystem() override { platform::replaceOperatingSystem(nullptr); }

    int readComputerName(std::size_t capacity, std::u16string& name) const override {
        EXPECT_EQ(capacity, 32u);
        name = computerName;
        return nameError;
    }
    platform::AdapterReading readAdapters() const override { return {error, changes-- > 0, adapters}; }

    std::u16string computerName;
    int nameError = 0;
    int error = 0;
    mutable int changes = 0; // how many readings find that the list has changed
    std::vector<platform::Adapter> adapters;
};

UnicastAddress ipv4(std::array<unsigned char, 4> bytes, unsigned short prefix) {
    UnicastAddress address{UnicastAddress::Family::Ipv4, {}, prefix};
    std::copy(bytes.begin(), bytes.end(), address.bytes.begin());
    return address;
}

TEST(FakeListing, KeepsTheSystemsOrderAndTellsEachAdapter) {
    FakeSystem system;
    std::vector<unsigned char> const infiniband(20, 0xAB);
    using enum UnicastAddress::Family;
    // clang-format off
    system.adapters = {
        {4, 9, L"", L"no name", {0, 1}, false, true, true, {ipv4({10, 1, 2, 3}, 8)}, 1280, true},
        {0, 7, L"v6", L"b\u00FC\U0001F600", infiniband, false, false, false,
         {{Ipv6, {0xfe, 0x80}, 64}, {Other, {1}, 200}}},
        {1, 1, L"lo", L"", {0, 0, 0, 0, 0, 0}, true, true, false, {{Other, {1}, 8}}},
    };
    // clang-format on
    auto const all = linesOf(NetworkInterface::listAll());
    std::string const groups = HardwareAddress(infiniband).toString();
    EXPECT_THAT(all, ElementsAre("4 4 [no name] up multicast point-to-point mtu1280 00:01 10.1.2.3/8",
                                 "7 v6 [b\\u{FC}\\u{D83D}\\u{DE00}] " + groups + " fe80::/64",
                                 "1 lo [] up loopback "));
    EXPECT_THAT(linesOf(NetworkInterface::list()), ElementsAre(all[0]));
}

TEST(FakeListing, IsReadAgainSixteenTimes) {
    FakeSystem system;
    system.adapters = {{3, 3, L"grown", L"", {}, false, true, false, {ipv4({10, 0, 0, 1}, 8)}}};
    system.changes = 16;
    EXPECT_EQ(NetworkInterface::list().size(), 1u);
    system.changes = 17;
    EXPECT_EQ(support::thrown<std::system_error>([] { NetworkInterface::list(); }),
              "Call to GetAdaptersAddresses failed.: Resource temporarily unavailable");
    system.error = EACCES;
    EXPECT_EQ(support::thrown<std::system_error>([] { NetworkInterface::list(); }),
              "Call to GetAdaptersAddresses failed.: Permission denied");
}

TEST(FakeHost, BehindALoopbackNameHasTheFirstActiveAddress) {
    FakeSystem system;
    system.computerName = u"\uFF11\uFF12\uFF17.0.0.1"; // which is found without a network
    system.adapters = {
        {1, 1, L"lo", L"", {}, true, true, false, {ipv4({127, 0, 0, 1}, 8)}},
        {2, 2, L"down", L"", {}, false, false, false, {ipv4({10, 0, 0, 2}, 8)}},
        {3, 3, L"bare", L"", {}, false, true, false, {}},
        {4, 4, L"used", L"", {}, false, true, false, {ipv4({10, 0, 0, 4}, 8), ipv4({10, 0, 0, 5}, 8)}},
    };
    auto const host = InetAddress::getLocalHost();
    EXPECT_EQ(host.toString(), "10.0.0.4");
    EXPECT_EQ(host.getHostName(), "127.0.0.1") << "not the name in its ASCII form";
    system.adapters.pop_back();
    EXPECT_TRUE(InetAddress::getLocalHost().isLoopback());
    system.nameError = EPERM;
    EXPECT_EQ(support::thrown<std::system_error>([] { InetAddress::getLocalHost(); }),
              "Call to GetComputerName failed.: Operation not permitted");
}

} // namespace
