// Each allocation of each operation fails once: what it was called on answers as before, and a second try
// succeeds. That nothing leaks is the address sanitizer's to say.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include "support/Iris.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <sstream>
#include <vector>

namespace {

// The number of the allocation that fails, counted down; none for 0.
thread_local std::size_t countdown = 0;
thread_local bool failed = false;

} // namespace

// Not inlined: GCC would see a mismatch of `new` and `free`.
[[gnu::noinline]] void* operator new(std::size_t size) {
    failed = failed || countdown == 1;
    if (countdown != 0 && --countdown == 0) {
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
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
using Text = std::u16string;

struct Operands {
    explicit Operands(bool parsed) {
        args.setScheme(u"http").setUserInfo(u"u").setHost(u"h\u00E9").setPort(8).setPath(u"/a b/../\u00E9");
        args.appendQueryKeyValuePair(u"a key of some length", u"\u00E9=", false, false).setFragment(u"f%");
        a = parsed ? IRI(u"http://u%41@h\u00E9:8/a%20b/\u00E9?q%C3%A9=%25#f%") : IRI(args);
        b = IRI(u"http://u%41@h\u00E9:8/a%20b/c/d/././%41/e?q");
    }
    std::string state() const { return answers(a) + answers(b) + answers(IRI(args)); }

    IRI a, b;
    IRIArgs args;
};

template <class... Arguments>
struct Row {
    char const* name;
    std::function<Text(Arguments&...)> run;
};

Text wide(std::string const& text) {
    return {text.begin(), text.end()};
}

constexpr char16_t longName[] = u"b\u00FCcher.a-name-that-is-too-long-for-a-short-string.example";

// Operations that begin with nothing: the very first of each makes what the process keeps.
std::vector<Row<>> const beginnings = {
    {"parse", [] { return IRI(u"http://u@1.2.3.4:8/%41?q#f").getPath(Encoding::Uri); }},
    {"refuse", [] { return IRI(u"http://a b/").getPath(Encoding::Iri); }},
    {"decode", [] { return IRI(u"/%41%C3%A9%FF%4/a-long-enough-text").getPath(Encoding::Raw); }},
    {"build", [] { return IRI(IRIArgs().setScheme(u"x").setPath(u"a:b c%41")).toString(true); }},
    {"resolve", [] { return IRI(u"../c").resolveAgainst(IRI(u"x:/a/./b")).toAsciiString(false); }},
    {"idn", [] { return wide(idn_to_ascii(longName)) + ascii_to_idn("xn--bcher-kva.example"); }},
    {"message",
     [] {
         try {
             return IRI(u"<").getScheme();
         } catch (foundation::core::except::IInternalException const& e) {
             return wide(e.what());
         }
     }},
    {"address", [] { return wide(InetAddress("fe80::1%1").getHostAddress()); }},
    {"no address", [] { return wide(InetAddress("256.1.1.1").toString()); }},
    {"bytes", [] { return wide(InetAddress(std::vector<unsigned char>(16, 7)).toString()); }},
    {"on a link", [] { return wide(InterfaceAddress(InetAddress("::1"), 64).toString()); }},
    {"hardware",
     [] {
         return wide(HardwareAddress({1, 2, 3, 4, 5, 6, 7, 8}).toString());
     }},
    {"lookup", [] { return wide(InetAddress::getByName("localhost").getHostName()); }},
    {"no lookup", [] { return wide(InetAddress::getByName("").toString()); }},
    {"lookup of all", [] { return Text(InetAddress::getAllByName("127.0.0.1").size(), u'a'); }},
    {"lookup back", [] { return wide(InetAddress("127.0.0.1").getCanonicalHostName()); }},
    {"own address", [] { return wide(InetAddress::getLocalHost().toString()); }},
    {"adapters", [] {
         Text all;
         for (auto const& adapter : NetworkInterface::listAll()) {
             all += adapter.getFriendlyName() + adapter.getDescription() + wide(adapter.getIdentifier()) +
                    wide(adapter.getHardwareAddress().toString());
             all.append(adapter.getInterfaceAddresses().size() + adapter.getInetAddresses().size(), u'a');
         }
         return all;
     }}};

Text yes(bool answer) {
    return answer ? u"y" : u"n";
}

std::vector<Row<Operands>> operations() {
    std::vector<Row<Operands>> rows;
    for (auto const& row : beginnings) {
        rows.push_back({row.name, [run = row.run](Operands&) { return run(); }});
    }
    for (Encoding const encoding : support::encodings) {
        for (auto const getter : {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery,
                                  &IRI::getFragment, &IRI::getAuthority, &IRI::getSchemeSpecificPart}) {
            rows.push_back({"getter", [=](Operands& o) { return (o.a.*getter)(encoding); }});
        }
    }
    for (auto const setter : {&IRIArgs::setScheme, &IRIArgs::setUserInfo, &IRIArgs::setHost,
                              &IRIArgs::setQuery, &IRIArgs::setFragment}) {
        rows.push_back({"setter", [=](Operands& o) { return (o.args.*setter)(u"long-enough"), Text(); }});
    }
    std::vector<Row<Operands>> const more = {
        {"text", [](Operands& o) { return o.a.toString(false); }},
        {"strict text", [](Operands& o) { return o.a.toString(true); }},
        {"ASCII", [](Operands& o) { return o.a.toAsciiString(false); }},
        {"strict ASCII", [](Operands& o) { return o.a.toAsciiString(true); }},
        {"stream",
         [](Operands& o) {
             std::ostringstream stream;
             stream.exceptions(std::ios::badbit);
             return wide((stream << o.a, stream.str()));
         }},
        {"absent", [](Operands& o) { return o.b.getFragment(Encoding::Iri); }},
        {"hash", [](Operands& o) { return wide(std::to_string(o.a.hashValue())); }},
        {"equal", [](Operands& o) { return yes(o.a == o.b); }},
        {"equal to a copy", [](Operands& o) { return yes(IRI(o.args) == o.a); }},
        {"less", [](Operands& o) { return yes(o.a < o.b) + yes(IRITextLess()(o.a, o.b)); }},
        {"copy", [](Operands& o) { return IRI(o.a).getPath(Encoding::Raw); }},
        {"assign", [](Operands& o) { return o.b = o.a, Text(); }},
        {"resolve", [](Operands& o) { return o.a.resolveAgainst(o.b).toString(false); }},
        {"resolve with dots",
         [](Operands& o) { return IRI(u"../x/./y").resolveAgainst(o.b).toString(false); }},
        {"relativise", [](Operands& o) { return o.b.makeRelativeTo(o.a).toString(false); }},
        {"path", [](Operands& o) { return o.args.setPath(u"/long-enough"), Text(); }},
        {"port", [](Operands& o) { return o.args.setPort(u"000000000000123"), Text(); }},
        {"pair",
         [](Operands& o) {
             return o.args.appendQueryKeyValuePair(u"another key", u"a&b \u00E9", true, true), Text();
         }},
        {"parts of", [](Operands& o) { return IRI(IRIArgs(o.b)).toString(false); }},
        {"parts into", [](Operands& o) { return o.b.toArgs(o.args), Text(); }},
        {"assign parts", [](Operands& o) { return o.args = IRIArgs(o.b), Text(); }},
        {"exception", [](Operands&) {
             auto const made = foundation::core::except::detail::makeInternalException(
                 std::system_error(std::make_error_code(std::errc::timed_out), "a message of some length"));
             std::unique_ptr<boost::exception_detail::clone_base const> const clone(made.clone());
             return dynamic_cast<decltype(made) const&>(*clone).getMessageText();
         }}};
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

// What an operation says when its allocation of a number fails; with 0 none does.
template <class... Arguments>
Text said(Row<Arguments...> const& row, std::size_t number, Arguments&... operands) {
    failed = false;
    countdown = number;
    try {
        Text text = row.run(operands...);
        countdown = 0;
        return text;
    } catch (std::exception const& e) {
        countdown = 0;
        return u"! " + wide(e.what());
    }
}

Text const noMemory = u"! std::bad_alloc";

TEST(AllocationFailure, OnTheVeryFirstUseIsTriedAgain) {
    std::size_t failures = 0;
    for (auto const& row : beginnings) {
        std::size_t number = 1;
        Text first = said(row, number);
        for (; failed; first = said(row, ++number)) { // a first use as long as none came through
            ++failures;
        }
        EXPECT_NE(first, noMemory) << row.name;
        EXPECT_EQ(said(row, 0), first) << row.name;
    }
    EXPECT_GT(failures, 100u);
}

TEST(AllocationFailure, LeavesOperandsAsTheyWereAndTheNextTrySucceeds) {
    auto const rows = operations();
    std::size_t failures = 0;
    for (bool const parsed : {false, true}) {
        for (auto const& row : rows) {
            Operands reference(parsed);
            std::string const before = reference.state();
            Text const expected = said(row, 0, reference);
            std::string const after = reference.state();
            for (std::size_t number = 1;; ++number) {
                SCOPED_TRACE(row.name + (" fails at allocation " + std::to_string(number)));
                Operands operands(parsed);
                Text const first = said(row, number, operands);
                if (!failed) {
                    break;
                }
                ++failures;
                if (first == noMemory) {
                    EXPECT_EQ(operands.state(), before);
                    EXPECT_EQ(said(row, 0, operands), expected);
                } else {
                    EXPECT_EQ(first, expected); // it went another way
                }
                EXPECT_EQ(operands.state(), after);
            }
        }
    }
    EXPECT_EQ(rows.size(), 80u);
    EXPECT_GT(failures, 1000u);
}

} // namespace
