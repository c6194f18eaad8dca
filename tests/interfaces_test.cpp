#include <foundation/network/NetworkInterface.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "OwnNamespace.hpp"
#include "platform/OperatingSystem.hpp"

#include <boost/property_tree/json_parser.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <sstream>

namespace {

using namespace foundation::network;
using namespace std::string_literals;
using platform::UnicastAddress;
using namespace testing;
using Failure = foundation::core::except::detail::AnonymousInternalException<std::system_error>;
using Adapters = foundation::network::detail::ImmutableIterableRange<NetworkInterface>;

std::string utf8(std::u16string const& text) {
    std::string narrow;
    return icu::UnicodeString(text.data(), static_cast<int32_t>(text.size())).toUTF8String(narrow);
}

// One line an adapter: all that it says.
std::vector<std::string> linesOf(Adapters const& adapters) {
    std::vector<std::string> lines;
    for (auto const& adapter : adapters) {
        std::string line = adapter.getIdentifier() + ' ' + utf8(adapter.getFriendlyName()) + " [" +
                           utf8(adapter.getDescription()) + ']' + (adapter.isUp() ? " up" : "") +
                           (adapter.isLoopback() ? " loopback" : "") +
                           (adapter.supportsMulticast() ? " multicast" : "") + ' ' +
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

// iproute2 writes the hardware address of a tunnel as that of its end.
std::string hardwareText(std::string const& text) {
    bool const tunnel = text.find('.') != std::string::npos || text.find("::") != std::string::npos;
    return tunnel ? HardwareAddress(InetAddress(text).bytes()).toString() : text;
}

// The same lines by the word of iproute2.
std::vector<std::string> linesOfIp() {
    std::unique_ptr<FILE, int (*)(FILE*)> const pipe(popen("ip -d -j addr", "r"), pclose);
    std::stringstream stream;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) {
        stream << static_cast<char>(c);
    }
    boost::property_tree::ptree list;
    read_json(stream, list);
    std::vector<std::string> lines;
    for (auto const& [key, link] : list) {
        auto const& flags = link.get_child("flags");
        auto const has = [&flags](char const* flag) {
            return std::any_of(flags.begin(), flags.end(),
                               [&](auto& each) { return each.second.data() == flag; });
        };
        auto const name = link.get<std::string>("ifname");
        std::string line = link.get<std::string>("ifindex") + ' ' + name + " [" +
                           link.get<std::string>("ifalias", name) + ']' +
                           (has("UP") && !has("NO-CARRIER") ? " up" : "") +
                           (has("LOOPBACK") ? " loopback" : "") + (has("MULTICAST") ? " multicast" : "") +
                           ' ' + (has("LOOPBACK") ? "" : hardwareText(link.get<std::string>("address", "")));
        for (auto const& [none, address] : link.get_child("addr_info")) {
            line += ' ' + address.get<std::string>("local") + '/' + address.get<std::string>("prefixlen");
        }
        lines.push_back(line);
    }
    return lines;
}

TEST(Listing, SaysWhatTheKernelSays) {
    inOwnNamespace([] {
        ASSERT_EQ(std::system(R"(set -e
            add() { ip link add $1 type dummy 2>/dev/null || ip link add $1 type veth peer name $1p
                    for i in $1 $1p; do ip link set dev $i addrgenmode none 2>/dev/null || true; done; }
            up() { ip link set dev $1 up; ip link set dev $1p up 2>/dev/null || true; }
            add zfull; add zdown; add zbare; up zfull; up zbare
            ip link set dev zfull alias 'Büro 😀 "uplink"'
            ip addr add 192.0.2.1/24 dev zfull; ip addr add 192.0.2.7/24 dev zfull
            ip addr add 198.51.100.9 peer 203.0.113.9/30 dev zfull
            ip addr add 203.0.113.1/32 dev zfull
            ip addr add 2001:db8::1/64 dev zfull nodad; ip addr add fd00::1/128 dev zfull nodad
            ip addr add 192.0.2.99/31 dev zdown)"),
                  0);
        auto const expected = linesOfIp();
        ASSERT_GE(expected.size(), 4u);
        EXPECT_EQ(linesOf(NetworkInterface::listAll()), expected);
        // Active: the loopback adapter and the one that is up with addresses.
        auto const active = linesOf(NetworkInterface::list());
        EXPECT_THAT(active,
                    ElementsAre(expected.front(), AllOf(HasSubstr(" zfull [Büro 😀 \"uplink\"] up multicast "),
                                                        HasSubstr(" 198.51.100.9/30"))));
        EXPECT_THAT(expected, Contains(active.back()));
    });
}

// More adapters than one answer of the kernel holds, and others that come and go while they are listed.
TEST(Listing, OfManyAdaptersHoldsWhileTheyChange) {
    inOwnNamespace([] {
        ASSERT_EQ(std::system("for i in $(seq 100); do echo link add a$i type veth peer name b$i; done"
                              " | ip -batch -"),
                  0);
        EXPECT_EQ(linesOf(NetworkInterface::listAll()), linesOfIp());
        std::atomic<bool> done{false};
        std::thread changing([&done] { // in the namespace of this thread
            for (int i = 0; i < 40; ++i) {
                EXPECT_EQ(std::system("ip link add c1 type veth peer name c2 &&"
                                      " ip addr add 192.0.2.1/24 dev c1 && ip link del c1"),
                          0);
            }
            done = true;
        });
        while (!done) {
            try {
                std::vector<int> indices;
                for (auto const& adapter : NetworkInterface::listAll()) {
                    indices.push_back(std::stoi(adapter.getIdentifier()));
                }
                EXPECT_TRUE(std::is_sorted(indices.begin(), indices.end(), std::less_equal<>()));
                EXPECT_GE(indices.size(), 201u);
            } catch (std::system_error const& e) {
                EXPECT_EQ(e.code().value(), EAGAIN);
            }
        }
        changing.join();
    });
}

// A system with the adapters that a test wants.
class PlayedSystem : public platform::OperatingSystem {
public:
    PlayedSystem() { replaceOperatingSystem(this); }
    ~PlayedSystem() override { platform::replaceOperatingSystem(nullptr); }

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

template <class Operation>
void failsWith(int error, std::string const& words, Operation operation) {
    try {
        operation();
        ADD_FAILURE();
    } catch (Failure const& e) {
        EXPECT_EQ(e.code(), std::error_code(error, std::system_category()));
        EXPECT_EQ(e.what(), words + std::strerror(error));
    }
}

UnicastAddress ipv4(std::array<unsigned char, 4> bytes, unsigned short prefix) {
    UnicastAddress address{UnicastAddress::Family::Ipv4, {}, prefix};
    std::copy(bytes.begin(), bytes.end(), address.bytes.begin());
    return address;
}

TEST(PlayedListing, KeepsTheSystemsOrderAndTellsEachAdapter) {
    PlayedSystem system;
    std::vector<unsigned char> const infiniband(20, 0xAB);
    auto const tooLong = ipv4({10, 0, 0, 1}, 33);
    using enum UnicastAddress::Family;
    // clang-format off
    system.adapters = {
        {4, 9, L"", L"no name", {0, 1}, false, true, true, {ipv4({10, 1, 2, 3}, 8)}},
        {0, 7, L"v6", L"b\u00FC\U0001F600", infiniband, false, false, false,
         {{Ipv6, {0xfe, 0x80}, 64}, {Other, {1}, 200}}},
        {1, 1, L"lo", L"", {0, 0, 0, 0, 0, 0}, true, true, false, {{Other, {1}, 8}}},
    };
    // clang-format on
    auto const all = linesOf(NetworkInterface::listAll());
    std::string const groups = HardwareAddress(infiniband).toString();
    EXPECT_THAT(all, ElementsAre("4 4 [no name] up multicast 00:01 10.1.2.3/8",
                                 "7 v6 [bü😀] " + groups + " fe80::/64", "1 lo [] up loopback "));
    EXPECT_THAT(linesOf(NetworkInterface::list()), ElementsAre(all[0]));

    system.adapters[0].addresses.push_back(tooLong);
    EXPECT_THROW(NetworkInterface::listAll(), std::out_of_range);
}

TEST(PlayedListing, IsReadAgainSixteenTimes) {
    PlayedSystem system;
    system.adapters = {{3, 3, L"grown", L"", {}, false, true, false, {ipv4({10, 0, 0, 1}, 8)}}};
    system.changes = 16;
    EXPECT_EQ(NetworkInterface::list().size(), 1u);
    for (int const error : {EAGAIN, EACCES, ENOBUFS}) {
        system.changes = 17;
        system.error = error == EAGAIN ? 0 : error;
        failsWith(error, "Call to GetAdaptersAddresses failed.: ", [] { NetworkInterface::list(); });
    }
}

TEST(PlayedHost, FailsWithoutAName) {
    PlayedSystem system;
    system.nameError = EPERM;
    failsWith(EPERM, "Call to GetComputerName failed.: ", [] { InetAddress::getLocalHost(); });
}

TEST(PlayedHost, BehindALoopbackNameHasTheFirstActiveAddress) {
    PlayedSystem system;
    system.computerName = u"LocalHost";
    system.adapters = {
        {1, 1, L"lo", L"", {}, true, true, false, {ipv4({127, 0, 0, 1}, 8)}},
        {2, 2, L"down", L"", {}, false, false, false, {ipv4({10, 0, 0, 2}, 8)}},
        {3, 3, L"bare", L"", {}, false, true, false, {}},
        {4, 4, L"used", L"", {}, false, true, false, {ipv4({10, 0, 0, 4}, 8), ipv4({10, 0, 0, 5}, 8)}},
    };
    auto const host = InetAddress::getLocalHost();
    EXPECT_EQ(host.toString(), "10.0.0.4");
    EXPECT_EQ(host.getHostName(), "localhost"); // the name in its ASCII form
    system.adapters.pop_back();
    EXPECT_TRUE(InetAddress::getLocalHost().isLoopback());
    system.error = EIO; // the adapters aren't asked for before the name is resolved
    EXPECT_THROW(InetAddress::getLocalHost(), std::system_error);
}

} // namespace
