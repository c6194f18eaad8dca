#include <foundation/network/InetAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include "OwnNamespace.hpp"
#include "lookup/ResolverContext.hpp"
#include "support/Iris.hpp"
#include "support/Threads.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace foundation::network;

// What `getaddrinfo` gives for a name, called directly: numeric texts, none where it fails.
std::vector<std::string> direct(char const* name) {
    addrinfo hints{};
    hints.ai_flags = AI_ADDRCONFIG;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_protocol = IPPROTO_TCP;
    addrinfo* list = nullptr;
    std::vector<std::string> texts;
    if (getaddrinfo(name, nullptr, &hints, &list) != 0) {
        return texts;
    }
    for (auto const* entry = list; entry != nullptr; entry = entry->ai_next) {
        std::array<char, NI_MAXHOST> text{};
        getnameinfo(entry->ai_addr, entry->ai_addrlen, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST);
        texts.emplace_back(text.data());
    }
    freeaddrinfo(list);
    return texts;
}

using Failure = foundation::core::except::detail::AnonymousInternalException<std::system_error>;

// The same by the library, which has to say the same for the first address as for all.
std::vector<std::string> ours(std::string const& name) {
    std::vector<std::string> texts;
    try {
        for (auto const& address : InetAddress::getAllByName(name)) {
            EXPECT_EQ(address.getHostName(), name);
            texts.push_back(address.toString());
        }
        auto const first = InetAddress::getByName(name);
        EXPECT_EQ(first.toString() + first.getHostName(), texts.front() + name);
    } catch (Failure const& e) {
        EXPECT_EQ(e.what(), e.code().message());
        EXPECT_THROW(InetAddress::getByName(name), Failure);
    }
    return texts;
}

TEST(Lookup, OfLocalNamesNeedsNoNetwork) {
    for (char const* name : {"localhost", "127.0.0.1", "127.1", "::1", "fe80::1%lo", "192.0.2.1"}) {
        EXPECT_EQ(ours(name), direct(name)) << name;
    }
    EXPECT_EQ(support::thrown<std::system_error>([] { InetAddress::getByName(""); }),
              "Host not found (authoritative)");
    EXPECT_THROW(ResolverContext::usable({}), Failure);
}

// Names of our own, known to this thread alone.
void withHosts(std::function<void()> const& body) {
    std::string const path = testing::TempDir() + "hosts." + std::to_string(getpid());
    std::ofstream(path) << "127.0.0.1 localhost\n"
                           "192.0.2.10 multi.example\n2001:db8::10 multi.example\n192.0.2.11 multi.example\n"
                           "192.0.2.20 canon.example alias.example\n192.0.2.21 alias.example\n"
                           "192.0.2.30 a-name-of-thirty-one-characters\n"
                           "127.0.1.1 loops xn--bcher-kva\n";
    inOwnNamespace([&] {
        ASSERT_EQ(mount(path.c_str(), "/etc/hosts", nullptr, MS_BIND, nullptr), 0);
        body();
    });
    std::remove(path.c_str());
}

TEST(LookupInNamespace, GoesByTheSystemsOrder) {
    withHosts([] {
        ASSERT_EQ(ours("multi.example").size(), 3u);
        for (char const* name : {"multi.example", "canon.example", "no-such-name.invalid", "::1"}) {
            EXPECT_EQ(ours(name), direct(name)) << name;
        }
        EXPECT_EQ(InetAddress("192.0.2.11").getHostName(), "multi.example");
        EXPECT_EQ(InetAddress::getByName("canon.example").getCanonicalHostName(), "canon.example");
        EXPECT_EQ(InetAddress("192.0.2.21").getHostName(), "alias.example");
        EXPECT_EQ(InetAddress("192.0.2.21").getCanonicalHostName(), "canon.example");
    });
}

TEST(LocalHostInNamespace, HasTheMachinesName) {
    withHosts([] {
        auto const setName = [](std::string const& name) {
            ASSERT_EQ(sethostname(name.data(), name.size()), 0);
        };
        setName("a-name-of-thirty-one-characters");
        auto host = InetAddress::getLocalHost();
        EXPECT_EQ(host.toString(), "192.0.2.30");
        EXPECT_EQ(host.getHostName(), "a-name-of-thirty-one-characters");

        for (std::size_t const length : {32u, 63u}) {
            setName(std::string(length, 'n'));
            EXPECT_EQ(support::thrown<std::system_error>([] { InetAddress::getLocalHost(); }),
                      "Call to GetComputerName failed.: File name too long");
        }

        setName("B\303\274cher"); // in its ASCII form among the hosts, as a loopback address
        EXPECT_EQ(InetAddress::getLocalHost().toString(), "127.0.1.1");
    });
}

TEST(Threads, LookUpAndListAtOnce) {
    support::onThreads(16, [](std::size_t i) {
        for (int round = 0; round < 20; ++round) {
            if (i % 2 == 0) {
                EXPECT_TRUE(InetAddress::getByName("127.1").isLoopback());
                EXPECT_FALSE(InetAddress("127.0.0.1").getHostName().empty());
            } else {
                EXPECT_LE(NetworkInterface::list().size(), NetworkInterface::listAll().size());
            }
        }
    });
}

} // namespace
