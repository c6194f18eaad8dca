#include "platform/LinuxSystem.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <deque>
#include <limits>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace {

using namespace foundation::network::platform;
using testing::ElementsAre;

template <class Record>
std::string raw(Record const& record) {
    return {reinterpret_cast<char const*>(&record), sizeof(record)};
}

std::string padded(std::string bytes) {
    return bytes.append((4 - bytes.size() % 4) % 4, '\0');
}

std::string message(unsigned short type, std::string const& payload, unsigned int sequence,
                    unsigned short flags = NLM_F_MULTI) {
    auto const size = static_cast<unsigned int>(sizeof(nlmsghdr) + payload.size());
    return padded(raw(nlmsghdr{size, type, flags, sequence, 0}) + payload);
}

std::string attribute(unsigned short type, std::string const& value) {
    auto const size = static_cast<unsigned short>(sizeof(rtattr) + value.size());
    return padded(raw(rtattr{size, type}) + value);
}

// The first request is for links, the second for addresses; a message carries the number of its request.
std::string link(int index, unsigned int flags, std::string const& attributes) {
    return message(RTM_NEWLINK, raw(ifinfomsg{0, 0, 0, index, flags, 0}) + attributes, 1);
}
std::string address(unsigned char family, unsigned char prefix, unsigned int index,
                    std::string const& attributes) {
    return message(RTM_NEWADDR, raw(ifaddrmsg{family, prefix, 0, 0, index}) + attributes, 2);
}
std::string const linksDone = message(NLMSG_DONE, raw(0), 1);
std::string const addressesDone = message(NLMSG_DONE, raw(0), 2);

// A kernel that answers with the datagrams of a test. One of its calls may fail at the first two times.
class FakeKernel : public LinuxCalls {
public:
    explicit FakeKernel(std::deque<std::string> answers, std::string failingCall = "", int errorNumber = 0)
        : datagrams(std::move(answers)), call(std::move(failingCall)), error(errorNumber) {}
    ~FakeKernel() override { EXPECT_EQ(open, 0); }

    int openRouteSocket() const override { return fails("socket") ? -1 : 76 + ++open; }
    void close(int socket) const override { open -= socket == 77 ? 1 : 0; }
    int hostName(char*, std::size_t) const override { return fails("hostName") ? -1 : 0; } // writes no end
    std::ptrdiff_t send(int, void const*, std::size_t size) const override {
        return fails("send") ? -1 : static_cast<std::ptrdiff_t>(size);
    }
    std::ptrdiff_t nextSize(int) const override {
        return fails("size") ? -1 : std::ssize(datagrams.empty() ? std::string() : datagrams.front());
    }
    std::ptrdiff_t receive(int, void* data, std::size_t size) const override {
        if (datagrams.empty() || fails("receive")) {
            return datagrams.empty() ? 0 : -1;
        }
        std::string const datagram = std::move(datagrams.front());
        datagrams.pop_front();
        EXPECT_LE(datagram.size(), size);
        return static_cast<std::ptrdiff_t>(datagram.copy(static_cast<char*>(data), size));
    }

private:
    bool fails(char const* name) const {
        errno = error;
        return call == name && times-- > 0;
    }
    mutable std::deque<std::string> datagrams;
    mutable int open = 0;
    std::string call;
    int error;
    mutable int times = 2;
};

TEST(LinuxSystem, TellsWhichCallFailed) {
    // clang-format off
    struct Row { std::string call; int error; int expected; };
    Row const rows[] = {
        {"socket", EMFILE, EMFILE}, {"send", EPERM, EPERM}, {"send", EINTR, 0}, {"size", ENOBUFS, ENOBUFS},
        {"size", EINTR, 0}, {"receive", ENOMEM, ENOMEM}, {"receive", EINTR, 0},
    };
    // clang-format on
    for (auto const& [call, error, expected] : rows) {
        FakeKernel const kernel({link(2, 0, "") + linksDone, addressesDone}, call, error);
        auto const reading = LinuxSystem(kernel).readAdapters();
        EXPECT_EQ(std::pair(reading.error, reading.changed), std::pair(expected, false)) << call;
        EXPECT_EQ(reading.adapters.size(), expected == 0 ? 1u : 0u) << call;
    }
    std::u16string name;
    EXPECT_EQ(LinuxSystem(FakeKernel({}, "hostName", EPERM)).readComputerName(32, name), EPERM);
    EXPECT_EQ(LinuxSystem(FakeKernel({})).readComputerName(32, name), ENAMETOOLONG);
}

TEST(LinuxSystem, ReadsWhatTheKernelAnswers) {
    using namespace std::string_literals;
    auto const name = [](std::string const& text) { return attribute(IFLA_IFNAME, text + '\0'); };
    FakeKernel const kernel({
        link(9, 0, name("told before")) + link(9, IFF_UP, name("late") + attribute(IFLA_TXQLEN, raw(1000u))) +
            link(2, ~static_cast<unsigned int>(IFF_LOOPBACK | IFF_POINTOPOINT),
                 name("x\xC3\xBC\xFF") + attribute(IFLA_MTU, raw(~0u)) + attribute(IFLA_IFALIAS, "alias\0"s) +
                     attribute(IFLA_ADDRESS, std::string(20, 'A'))),
        // A message of other's, and one longer than any buffer that was made before.
        message(RTM_NEWLINK, "", 4711) +
            link(3, IFF_LOOPBACK | IFF_POINTOPOINT | IFF_RUNNING,
                 attribute(IFLA_MTU, "abc") + attribute(200, std::string(60'000, 0))),
        linksDone,
        address(AF_INET, 24, 2,
                attribute(IFA_ADDRESS, "\x0A\0\0\x02"s) + attribute(IFA_LOCAL, "\x0A\0\0\x01"s) +
                    attribute(IFA_ADDRESS, "\x0A\0\0\x02"s)) +
            address(AF_INET6, 64, 2, attribute(IFA_ADDRESS, "\xFE\x80"s + std::string(14, '\0'))) +
            address(12, 8, 2, attribute(IFA_LOCAL, "\x01")) +
            address(AF_INET, 8, 2, attribute(IFA_LOCAL, "abc")) + address(AF_INET, 8, 2, "\xFF\xFF\x02\0"s),
        addressesDone,
    });
    auto const reading = LinuxSystem(kernel).readAdapters();
    EXPECT_TRUE(reading.error == 0 && !reading.changed);
    ASSERT_EQ(reading.adapters.size(), 3u);
    Adapter const& first = reading.adapters[0];
    EXPECT_EQ(first.index, 2u);
    EXPECT_EQ(first.friendlyName, L"x\u00FC\uFFFD");
    EXPECT_EQ(first.description, L"alias");
    EXPECT_EQ(first.physicalAddress, std::vector<unsigned char>(20, 'A'));
    EXPECT_TRUE(first.up && first.multicast && !first.loopback && !first.pointToPoint);
    EXPECT_EQ(first.mtu, ~0u);
    using enum UnicastAddress::Family;
    auto const is = [](auto family) { return testing::Field(&UnicastAddress::family, family); };
    ASSERT_THAT(first.addresses, ElementsAre(is(Ipv4), is(Ipv6), is(Other), is(Other), is(Other)));
    EXPECT_EQ(first.addresses[0].bytes, (std::array<unsigned char, 16>{10, 0, 0, 1}));
    EXPECT_EQ(first.addresses[0].prefixLength, 24);
    EXPECT_EQ(first.addresses[1].bytes, (std::array<unsigned char, 16>{0xFE, 0x80}));
    Adapter const& second = reading.adapters[1];
    EXPECT_TRUE(!second.up && second.loopback && second.pointToPoint);
    EXPECT_EQ(second.mtu, 0u) << "three bytes are no number";
    EXPECT_EQ(reading.adapters[2].description, L"late");
    EXPECT_TRUE(!reading.adapters[2].up && reading.adapters[2].mtu == 0);
}

TEST(LinuxSystem, NoticesChangesAndBadAnswers) {
    std::string const eth = link(2, IFF_UP, "");
    std::string const cut = eth.substr(0, eth.size() - 4);
    std::string tiny = eth;
    tiny[0] = 8;
    // clang-format off
    struct Row { std::deque<std::string> answers; int error; bool changed; };
    Row const rows[] = {
        {{eth, linksDone, addressesDone}, 0, false}, {{message(RTM_NEWLINK, "", 1, NLM_F_DUMP_INTR)}, 0, true},
        {{eth, message(NLMSG_DONE, "", 1), message(NLMSG_DONE, "", 2)}, 0, false},
        {{eth, message(NLMSG_DONE, raw(0), 1, NLM_F_DUMP_INTR)}, 0, true},
        {{eth, linksDone, address(AF_INET, 8, 3, "") + addressesDone}, 0, true}, // an adapter that came in between
        {{message(NLMSG_ERROR, raw(nlmsgerr{-EOPNOTSUPP, {}}), 1, 0)}, EOPNOTSUPP, false},
        {{eth, message(NLMSG_DONE, raw(-ENODEV), 1)}, ENODEV, false},
        {{eth, linksDone, message(NLMSG_ERROR, raw(nlmsgerr{-EACCES, {}}), 2, 0)}, EACCES, false},
        {{message(RTM_NEWLINK, "short", 1)}, EBADMSG, false}, {{message(NLMSG_ERROR, "", 1, 0)}, EBADMSG, false},
        {{eth, linksDone, message(RTM_NEWADDR, "short", 2)}, EBADMSG, false}, {{cut}, EBADMSG, false},
        {{message(NLMSG_ERROR, raw(1), 1, 0)}, EBADMSG, false}, {{tiny}, EBADMSG, false},
        {{message(NLMSG_ERROR, raw(std::numeric_limits<int>::min()), 1, 0)}, EBADMSG, false},
        {{eth}, ECONNRESET, false},
    };
    // clang-format on
    for (auto const& [answers, error, changed] : rows) {
        auto const reading = LinuxSystem(FakeKernel(answers)).readAdapters();
        EXPECT_EQ(std::pair(reading.error, reading.changed), std::pair(error, changed));
    }
}

} // namespace
