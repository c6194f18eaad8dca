// Each allocation of each operation fails once: what it was called on answers as before, and a second try
// succeeds. That nothing leaks is the address sanitizer's to say.

#include <foundation/network/AddressClass.hpp>
#include <foundation/network/FileIri.hpp>
#include <foundation/network/HostAddress.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/Normalization.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/PathSegments.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/With.hpp>

#include "support/Iris.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// The number of the allocation that fails, counted down; none for 0.
thread_local std::size_t countdown = 0;
thread_local bool failed = false;

} // namespace

// Not inlined: GCC would see a mismatch of `new` and `free`.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    failed = failed || countdown == 1;
    return countdown != 0 && --countdown == 0 ? nullptr : std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using namespace foundation::network;
using support::answers;
using support::wide;
using Text = std::u16string;

struct Operands {
    explicit Operands(bool parsed) {
        args.setScheme(u"http").setUserInfo(u"u").setHost(u"h\u00E9").setPort(8).setPath(u"/a b/../\u00E9");
        args.appendQueryKeyValuePair(u"a key of some length", u"\u00E9=", false, false).setFragment(u"f%");
        a = parsed ? IRI(u"http://u%41@h\u00E9:8/a%20b/\u00E9?q%C3%A9=%25#f%") : IRI(args);
        b = IRI(u"http://u%41@h\u00E9:8/a%20b/c/d/././%41/e?q");
    }
    std::string state() const {
        return answers(a) + answers(b) + answers(IRI(args)) + toUtf8(parameters.toQuery()) +
               std::to_string(parameters.size());
    }

    IRI a, b;
    IRIArgs args;
    QueryParameters parameters{u"a-name=some+value&&b;\u00E9=%C3%A9&a-name=another-value"};
};

using Operation = std::function<Text(Operands*)>;

constexpr char16_t longName[] = u"b\u00FCcher.a-name-that-is-too-long-for-a-short-string.example";

// Operations that need no operands: the very first of each makes what the process keeps.
std::vector<Operation> const beginnings = {
    [](auto*) { return IRI(u"http://u@1.2.3.4:8/%41?q#f").getPath(Encoding::Uri); },
    [](auto*) { return IRI(u"http://a b/").getPath(Encoding::Iri); },
    [](auto*) { return IRI(u"/%41%C3%A9%FF%4/a-long-enough-text").getPath(Encoding::Raw); },
    [](auto*) { return IRI(IRIArgs().setScheme(u"x").setPath(u"a:b c%41")).toString(true); },
    [](auto*) { return IRI(u"../c").resolveAgainst(IRI(u"x:/a/./b")).toAsciiString(false); },
    [](auto*) { return wide(idn_to_ascii(longName)) + ascii_to_idn("xn--bcher-kva.example"); },
    [](auto*) { return normalize(IRI(Text(u"//") + longName), ~Normalization{}).toString(false); },
    [](auto*) {
        return wide(InetAddress("fe80::1%1").getHostAddress() +
                    tryParseAddress("::ffff:192.0.2.1")->toString() +
                    InterfaceAddress(InetAddress(std::vector<unsigned char>(16)), 64).toString() +
                    parseHardwareAddress("00-01-02-03-04-05-06").toString());
    },
    [](auto*) { return wide(InetAddress("256.1.1.1").toString()); },
    [](auto*) {
        return wide(InetNetwork("2001:db8:1:2:3:4:5:6/128").toString() +
                    InetNetwork("10.0.0.0/8").getBroadcast()->toString() +
                    unmapped(InetAddress("::ffff:192.0.2.1"))->toString());
    },
    [](auto*) { return wide(InetNetwork("2001:db8:1:2:3:4:5:6/12").toString()); },
    [](auto*) { return wide(InetAddress::getByName("localhost").getHostName()); },
    [](auto*) { return Text(InetAddress::getAllByName("127.0.0.1").size(), u'a'); },
    [](auto*) { return wide(InetAddress("127.0.0.1").getCanonicalHostName()); },
    [](auto*) { return wide(InetAddress::getLocalHost().toString()); },
    [](auto*) {
        Text all;
        for (auto const& adapter : NetworkInterface::listAll()) {
            all += adapter.getFriendlyName() + adapter.getDescription() + wide(adapter.getIdentifier()) +
                   wide(adapter.getHardwareAddress().toString());
            all.append(adapter.getInterfaceAddresses().size() + adapter.getInetAddresses().size(), u'a');
        }
        return all;
    }};

std::vector<Operation> operations() {
    std::vector<Operation> all = beginnings;
    for (auto const& question : support::questions()) {
        all.emplace_back([=](auto* o) { return question(o->a, o->b); });
    }
    for (auto const setter : {&IRIArgs::setScheme, &IRIArgs::setUserInfo, &IRIArgs::setHost,
                              &IRIArgs::setQuery, &IRIArgs::setFragment}) {
        all.emplace_back([=](auto* o) { return (o->args.*setter)(u"long-enough"), Text(); });
    }
    std::vector<Operation> const more = {
        [](auto* o) { return o->b = o->a, Text(); },
        [](auto* o) { return IRI(u"../x/./y").resolveAgainst(o->b).toString(false); },
        [](auto* o) { return o->args.setPath(u"/long-enough"), Text(); },
        [](auto* o) { return o->args.setPort(u"000000000000123"), Text(); },
        [](auto* o) { return o->args.appendQueryKeyValuePair(longName, u"a&b", true, true), Text(); },
        [](auto* o) { return o->args = IRIArgs(o->b), Text(); },
        [](auto* o) { return o->b.toArgs(o->args), Text(); },
        [](auto*) { return iriFromUtf8("http://h\xC3\xA9/a-long-enough-text").toString(false); },
        [](auto*) { return wide(tryParse("http://h\xC3\xA9/a-long-enough text").error().describe()); },
        [](auto* o) { return tryParse(o->a.toString(false)).value_or(IRI()).toString(false); },
        [](auto* o) { return withHost(o->a, "a host of some length%", Encoding::Raw).toString(false); },
        [](auto* o) { return withoutFragment(o->b).toString(false); },
        [](auto* o) { return withPathSegments(o->b, getPathSegments(o->a)).toString(false); },
        [](auto* o) { return normalize(o->a, ~Normalization{}).toString(false); },
        [](auto* o) { return Text(areEquivalent(o->a, o->b), u'a'); },
        [](auto* o) { return Text(isSameOrigin(o->a, o->b), u'a'); },
        [](auto*) { return iriFromFile("/a path of some length/%\xFF/\xC3\xA9").toString(false); },
        [](auto*) { return wide(fileFromIri(IRI(u"file:///a%20path%20of%20some%20length")).string()); },
        [](auto*) { return wide(getHostAddress(IRI(u"//[2001:db8::1.2.3.4]")).value().toString()); },
        [](auto* o) { return o->parameters.append(longName, u"a&b=c d"), Text(); },
        [](auto* o) { return o->parameters.set(u"a-name", longName), Text(); },
        [](auto* o) { return Text(o->parameters.remove(u"a-name"), u'a'); },
        [](auto* o) { return withQuery(o->b, o->parameters).toString(false); }};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// What an operation says when its allocation of a number fails; with 0 none does.
Text said(Operation const& operation, std::size_t number, Operands* operands) {
    failed = false;
    countdown = number;
    try {
        Text text = operation(operands);
        countdown = 0;
        return text;
    } catch (std::exception const& e) {
        countdown = 0;
        return u"! " + wide(e.what());
    }
}

Text const noMemory = u"! std::bad_alloc";

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(AllocationFailure, OnTheVeryFirstUseIsTriedAgain) {
    std::size_t failures = 0;
    auto const descriptors = openDescriptors();
    for (auto const& operation : beginnings) {
        Text first = said(operation, 1, nullptr);
        for (std::size_t number = 2; failed; ++number, ++failures) { // a first use until one came through
            first = said(operation, number, nullptr);
        }
        EXPECT_NE(first, noMemory);
        EXPECT_EQ(said(operation, 0, nullptr), first);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_GT(failures, 100u);
}

TEST(AllocationFailure, LeavesOperandsAsTheyWereAndTheNextTrySucceeds) {
    auto const all = operations();
    std::size_t failures = 0;
    for (std::size_t which = 0; which != 2 * all.size(); ++which) {
        auto const& operation = all[which / 2];
        Operands reference(which % 2 == 0);
        std::string const before = reference.state();
        Text const expected = said(operation, 0, &reference);
        std::string const after = reference.state();
        for (std::size_t number = 1;; ++number, ++failures) {
            SCOPED_TRACE(std::to_string(which / 2) + " fails at allocation " + std::to_string(number));
            Operands operands(which % 2 == 0);
            Text const first = said(operation, number, &operands);
            if (!failed) {
                break;
            }
            if (first == noMemory) {
                EXPECT_EQ(operands.state(), before);
                EXPECT_EQ(said(operation, 0, &operands), expected);
            } else {
                EXPECT_EQ(first, expected); // it went another way
            }
            EXPECT_EQ(operands.state(), after);
        }
    }
    EXPECT_EQ(all.size(), 97u);
    EXPECT_GT(failures, 1000u);
}

// How many allocations an operation makes.
template <class Operation>
std::size_t allocations(Operation operation) {
    constexpr std::size_t many = 1'000'000;
    countdown = many;
    operation();
    return many - std::exchange(countdown, 0);
}

TEST(AllocationFree, AreComparisonsHashesNetworksAndClasses) {
    ASSERT_EQ(allocations([] { InetAddress(std::array<unsigned char, 4>{}); }), 1u); // they are counted
    InetAddress const four("10.1.2.3"), six("fe80::1%7");
    InterfaceAddress const onFour(four, 8), onSix(six, 64);
    HardwareAddress const hardware({0, 1, 2, 3, 4, 5}), other({0, 1, 2, 3, 4, 6});
    int sum = 0;
    auto const compare = [&sum](auto const& a, auto const& b) {
        using Value = std::decay_t<decltype(a)>;
        sum += (a == b) + (a != b) + (a < b) + (b < a) + (a == a);
        sum += std::hash<Value>()(a) != std::hash<Value>()(b);
    };
    std::size_t const made = allocations([&] {
        compare(four, six);
        compare(onFour, onSix);
        compare(hardware, other);
        InetNetwork const ten = InetNetwork::masked(four, 8), link = InetNetwork::masked(six, 10);
        compare(InetNetwork(ten), link);
        sum += ten.contains(four) + link.contains(six) + ten.contains(ten) + link.overlaps(link);
        sum += isPrivate(four) + isLinkLocal(six) + isGlobal(six) + unmapped(six).has_value();
        sum += (classify(four) == AddressClass::PrivateUse) + static_cast<int>(getScopeId(six));
        InetNetwork copy(link);
        copy = ten;
        sum += copy == ten;
    });
    EXPECT_EQ(made, 0u);
    EXPECT_EQ(sum, 4 * 4 + 7 + 7 + 1);
}

} // namespace
