#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "support/Generator.hpp"
#include "support/Laws.hpp"

#include <gtest/gtest.h>

#include <mutex>
#include <optional>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using foundation::network::IRIArgs;
using foundation::network::IRITextLess;
using support::Encoding;
using support::encodings;
using support::IRI;
using support::thrown;
using Text = std::u16string;
using support::show;

TEST(IriParse, TakesApart) {
    using Part = std::optional<Text>;
    constexpr auto no = std::nullopt;
    struct Row {
        Text text;
        Part scheme, userInfo, host, port;
        Text path;
        Part query, fragment;
    };
    Row const rows[] = {
        {u"", no, no, no, no, u"", no, no},
        {u"//u:p@h:8/p?q#f", no, u"u:p", u"h", u"8", u"/p", u"q", u"f"},
        {u"a:", u"a", no, no, no, u"", no, no},
        {u"a:b:c", u"a", no, no, no, u"b:c", no, no},
        {u"./1a:b", no, no, no, no, u"./1a:b", no, no},
        {u"a:?x?y/z#f?g", u"a", no, no, no, u"", u"x?y/z", u"f?g"},
        {u"a:#", u"a", no, no, no, u"", no, u""},
        {u"a:b?", u"a", no, no, no, u"b", u"", no},
        {u"//a/b@c", no, no, u"a", no, u"/b@c", no, no},
        {u"//", no, no, u"", no, u"", no, no},
        {u"//@", no, u"", u"", no, u"", no, no},
        {u"//:80", no, no, u"", u"80", u"", no, no},
        {u"http://a:0080/", u"http", no, u"a", u"0080", u"/", no, no},
        {u"//[::1]:80/", no, no, u"[::1]", u"80", u"/", no, no},
        {u"//[1:2:3:4:5:6:1.2.3.4]", no, no, u"[1:2:3:4:5:6:1.2.3.4]", no, u"", no, no},
        {u"//[v1.a:b]", no, no, u"[v1.a:b]", no, u"", no, no},
        {u"//1.2.3.4:80", no, no, u"1.2.3.4", u"80", u"", no, no},
        {u"//1.2.3.4.5", no, no, u"1.2.3.4.5", no, u"", no, no},
        {u"//01.2.3.4", no, no, u"01.2.3.4", no, u"", no, no},
        {u"//a%41b/", no, no, u"a%41b", no, u"/", no, no},
        {u"/a%zz", no, no, no, no, u"/a%zz", no, no},
        {u"\u00E91:x", u"\u00E91", no, no, no, u"x", no, no},
        {u"?\uE000\U000E0000", no, no, no, no, u"", u"\uE000\U000E0000", no},
        {u"x:\U000E1000", u"x", no, no, no, u"\U000E1000", no, no},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(show(row.text));
        IRI const iri(row.text);
        auto const part = [&](bool present, Text (IRI::*getter)(Encoding const&) const) {
            return present ? Part((iri.*getter)(Encoding::Iri)) : no;
        };
        EXPECT_EQ(iri.hasScheme() ? Part(iri.getScheme()) : no, row.scheme);
        EXPECT_EQ(part(iri.hasUserInfo(), &IRI::getUserInfo), row.userInfo);
        EXPECT_EQ(part(iri.hasHost(), &IRI::getHost), row.host);
        EXPECT_EQ(iri.hasPort() ? Part(iri.getPort()) : no, row.port);
        EXPECT_EQ(iri.getPath(Encoding::Iri), row.path);
        EXPECT_EQ(part(iri.hasQuery(), &IRI::getQuery), row.query);
        EXPECT_EQ(part(iri.hasFragment(), &IRI::getFragment), row.fragment);
        EXPECT_EQ(iri.toString(false), row.text);
    }
}

TEST(IriParse, RefusesWhatIsNoReference) {
    // clang-format off
    Text const rows[] = {
        u"a b", u"1a:b", u"a:b c", u"//a%4/", u"//%/", u"//u%zz@h", u"//a@b@c", u"//h:8a", u"a:#x#y", u"a:[",
        u"/]", u"?[", u"//h:", u"http://a:65536/", u"http://a:99999999999/", u"//h:\u0661",
        u"//[1:2:3:4:5:6:7]", u"//[1:2:3:4:5:6:7:8:9]", u"//[:::]", u"//[1:::2]", u"//[12345::]",
        u"//[::256.1.1.1]", u"//[]", u"//[v.a]", u"//[v1.]", u"//[V1.a]", u"//[fe80::1%25en0]", u"/\uE000",
        u"#\uE000", u"//\uE000", u"/\uFDD0", u"/\uFFFE", u"/\u0080", u"/\U0001FFFE", u"/\"", u"<", u"/\\",
        u"^", u"`", u"{", u"|", u"\x7F", Text(u"/\0", 2)};
    // clang-format on
    for (auto const& text : rows) {
        EXPECT_EQ(thrown<std::logic_error>([&] { IRI iri(text); }), "IRI parsing failed") << show(text);
    }
}

TEST(IriParse, RefusesWhatIsNoUtf16) {
    auto const words = [](std::string const& value) {
        return "Misplaced UTF-16 surrogate U+" + value +
               " encountered while trying to encode UTF-32 sequence";
    };
    auto const refusal = [](Text const& text) { return thrown<std::out_of_range>([&] { IRI iri(text); }); };
    EXPECT_EQ(refusal({u'a', char16_t(0xDC00)}), words("0xdc00"));
    EXPECT_EQ(refusal({char16_t(0xD83D), u'a'}), words("0x61"));
    EXPECT_EQ(refusal({char16_t(0xD83D), char16_t(0xD83D)}), words("0xd83d"));
    EXPECT_EQ(refusal({u'a', char16_t(0xD83D)}), words("0"));
    // Behind the stretches that are converted at once, and across their ends.
    for (std::size_t length = 0; length != 600; ++length) {
        EXPECT_EQ(refusal(Text(length, u'a') + Text(1, char16_t(0xDFFF))), words("0xdfff"));
        Text const pair = Text(length, u'a') + u"\U0001F600" + Text(20, u'b');
        EXPECT_EQ(IRI(pair).toString(false), pair);
        EXPECT_EQ(IRI(pair).getPath(Encoding::Raw), pair);
    }
}

TEST(IriParse, KnowsItsShape) {
    struct Row {
        Text text;
        std::string traits; // the letters of the predicates that hold, in the order below
    };
    Row const rows[] = {
        {u"", "e"},           {u"mailto:a@b", "saO"}, {u"file:/a", "sap"}, {u"a:", "saO"},
        {u"b/c", ""},         {u"//h", "Ah"},         {u"//@h", "Ahu"},    {u"a:b?", "saqO"},
        {u"a:#", "safO"},     {u"/a", "p"},           {u"?", "q"},         {u"#", "f"},
        {u"x://h/", "sAahp"}, {u"x://h:1", "sAaoh"},  {u"x:a/b", "saO"},
    };
    for (auto const& row : rows) {
        IRI const iri(row.text);
        std::string traits;
        auto const add = [&](bool holds, char letter) { traits += holds ? std::string(1, letter) : ""; };
        add(iri.isEmpty(), 'e');
        add(iri.hasScheme(), 's');
        add(iri.hasAuthority(), 'A');
        add(iri.isAbsolute(), 'a');
        add(iri.hasPort(), 'o');
        add(iri.hasQuery(), 'q');
        add(iri.hasFragment(), 'f');
        add(iri.hasHost(), 'h');
        add(iri.hasUserInfo(), 'u');
        add(iri.hasAbsolutePath(), 'p');
        add(iri.isOpaque(), 'O');
        EXPECT_EQ(traits, row.traits) << show(row.text);
    }
}

TEST(IriParse, AnAbsentPartIsNamed) {
    IRI const none;
    EXPECT_EQ(thrown<std::runtime_error>([&] { none.getScheme(); }), "No scheme");
    EXPECT_EQ(thrown<std::runtime_error>([&] { none.getPort(); }), "No port");
    EXPECT_EQ(thrown<std::runtime_error>([&] { none.getPortNumber(); }), "No port");
    EXPECT_EQ(thrown<std::runtime_error>([&] { none.getPath(Encoding::Iri); }), "Item not set: Path");
    EXPECT_EQ(thrown<std::runtime_error>([&] { none.getAuthority(Encoding::UriStrict); }),
              "Item not set: Host: Host (in getAuthority)");
    EXPECT_EQ(thrown<std::runtime_error>([&] { none.getSchemeSpecificPart(Encoding::Raw); }),
              "Item not set: Path");
    EXPECT_EQ(IRI(u"").getPath(Encoding::Iri), u"");
    EXPECT_EQ(thrown<std::out_of_range>([] { IRI(u"/%C0%AF").getPath(Encoding::Raw); }),
              "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
    EXPECT_EQ(IRI(u"//h:00080").getPortNumber(), 80);
    EXPECT_EQ(IRI(u"//h:65535").getPortNumber(), 65535);
}

TEST(IriText, WholeAndAuthorityInEveryForm) {
    IRI const iri(u"http://u%41@h\u00E9:08/a%20%/\u00E9?\uE000%4#%zz");
    Text const expected[] = {
        u"//uA@h\u00E9:08/a %/\u00E9?\uE000%4", u"//u%41@h\u00E9:08/a%20%/\u00E9?\uE000%4",
        u"//u%41@h\u00E9:08/a%20%25/\u00E9?\uE000%254", u"//u%41@h%C3%A9:08/a%20%/%C3%A9?%EE%80%80%4",
        u"//u%41@h%C3%A9:08/a%20%25/%C3%A9?%EE%80%80%254"};
    for (std::size_t i = 0; i != std::size(encodings); ++i) {
        EXPECT_EQ(iri.getSchemeSpecificPart(encodings[i]), expected[i]);
        EXPECT_EQ(iri.getAuthority(encodings[i]), expected[i].substr(2, expected[i].find(u'/', 2) - 2));
    }
    EXPECT_EQ(iri.toString(false), u"http:" + expected[1] + u"#%zz");
    EXPECT_EQ(iri.toString(true), u"http:" + expected[2] + u"#%25zz");
    EXPECT_EQ(iri.toAsciiString(false), u"http:" + expected[3] + u"#%zz");
    EXPECT_EQ(iri.toAsciiString(true), u"http:" + expected[4] + u"#%25zz");
    EXPECT_EQ(iri.getFragment(Encoding::IriStrict), u"%25zz");
    EXPECT_EQ(IRI(u"http://[::1]/%").toString(true), u"http://[::1]/%25");
    EXPECT_EQ(IRI().toAsciiString(true), u"");
    EXPECT_EQ(IRI(u"").toString(true), u"");
}

TEST(IriText, StreamsAsciiAndNothingThatLooksLikeIt) {
    std::ostringstream stream;
    stream << IRI(u"x://h\u00E9/") << '|';
    stream.width(6);
    stream << IRI(u"/%") << '|' << IRI(u"\u0130\U00010400:b");
    EXPECT_EQ(stream.str(), "x://h%C3%A9/|    /%|\x1A\x1A\x1A:b");
}

TEST(IriText, FormsHoldTheirPromises) {
    support::Generator generator(5);
    int seen = 0;
    for (int round = 0; round < 40000; ++round) {
        auto const iri =
            support::parsed(support::toUtf16(round % 2 == 0 ? generator.reference() : generator.mutated()));
        seen += iri && support::formsHold(*iri);
    }
    EXPECT_GT(seen, 10000);
}

// The other questions, those that take another value among them.
Text other(IRI const& iri, std::size_t which) {
    static IRI const base(u"http://u%41@h\u00E9:8/./c?q");
    std::ostringstream stream;
    switch (which) {
    case 0:
        return Text(iri == base || iri != IRI(iri) ? u"same" : u"other");
    case 1:
        return Text(iri < base ? u"less" : u"not less") + (IRITextLess()(base, iri) ? u"less" : u"not less");
    case 2:
        return iri.resolveAgainst(base).toString(true) + base.resolveAgainst(iri).toString(true);
    case 3:
        return iri.makeRelativeTo(base).toString(true);
    case 4:
        return IRI(IRIArgs(iri)).getPath(Encoding::Uri);
    default:
        stream << iri << iri.hashValue() << iri.getPortNumber() << iri.isOpaque();
        std::string const given = stream.str();
        return iri.getScheme() + iri.getPort() + Text(given.begin(), given.end());
    }
}

TEST(IriThreads, OneValueAnswersManyAsOne) {
    // The first parse of this process is raced as well: ctest runs each test in a process of its own.
    Text const text = u"http://u%41@h\u00E9:8/a%20b/\u00E9?q%C3%A9=%25#f%";
    auto const answers = [](IRI const& iri, std::size_t which) {
        Encoding const encoding = encodings[which % 5];
        switch (which / 5) {
        case 0:
            return iri.getUserInfo(encoding);
        case 1:
            return iri.getHost(encoding);
        case 2:
            return iri.getPath(encoding);
        case 3:
            return iri.getQuery(encoding);
        case 4:
            return iri.getFragment(encoding);
        case 5:
            return iri.getAuthority(encoding);
        case 6:
            return iri.getSchemeSpecificPart(encoding);
        case 7:
            return which % 2 == 0 ? iri.toString(which % 5 > 2) : iri.toAsciiString(which % 5 > 2);
        default:
            return other(iri, which - 40);
        }
    };
    constexpr std::size_t questions = 46;
    for (int round = 0; round < 20; ++round) {
        std::optional<IRI> shared;
        std::once_flag made;
        std::vector<std::vector<Text>> given(16, std::vector<Text>(questions));
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i != given.size(); ++i) {
            threads.emplace_back([&, i] {
                IRI const own(text);
                std::call_once(made, [&] { shared.emplace(text); });
                support::Generator order(i);
                for (int step = 0; step < 100; ++step) {
                    std::size_t const which = order.below(questions);
                    given[i][which] = answers(order.chance(10) ? IRI(*shared) : *shared, which);
                }
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
        for (std::size_t which = 0; which != questions; ++which) {
            Text const alone = answers(IRI(text), which);
            for (auto const& answer : given) {
                ASSERT_TRUE(answer[which].empty() || answer[which] == alone) << which << show(answer[which]);
            }
        }
    }
}

} // namespace
