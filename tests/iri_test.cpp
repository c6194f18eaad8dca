#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "support/Generator.hpp"
#include "support/Laws.hpp"
#include "support/Threads.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <optional>
#include <sstream>
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
    // clang-format off
    struct Row { Text text; Part scheme, userInfo, host, port; Text path; Part query, fragment; };
    Row const rows[] = {
        {u"", no, no, no, no, u"", no, no}, {u"//u:p@h:8/p?q#f", no, u"u:p", u"h", u"8", u"/p", u"q", u"f"},
        {u"a:", u"a", no, no, no, u"", no, no}, {u"a:b:c", u"a", no, no, no, u"b:c", no, no},
        {u"./1a:b", no, no, no, no, u"./1a:b", no, no},
        {u"a:?x?y/z#f?g", u"a", no, no, no, u"", u"x?y/z", u"f?g"},
        {u"a:#", u"a", no, no, no, u"", no, u""}, {u"a:b?", u"a", no, no, no, u"b", u"", no},
        {u"//a/b@c", no, no, u"a", no, u"/b@c", no, no}, {u"//", no, no, u"", no, u"", no, no},
        {u"//@", no, u"", u"", no, u"", no, no}, {u"//:80", no, no, u"", u"80", u"", no, no},
        {u"http://a:0080/", u"http", no, u"a", u"0080", u"/", no, no},
        {u"//[::1]:80/", no, no, u"[::1]", u"80", u"/", no, no},
        {u"//[1:2:3:4:5:6:1.2.3.4]", no, no, u"[1:2:3:4:5:6:1.2.3.4]", no, u"", no, no},
        {u"//[v1.a:b]", no, no, u"[v1.a:b]", no, u"", no, no},
        {u"//1.2.3.4:80", no, no, u"1.2.3.4", u"80", u"", no, no},
        {u"//1.2.3.4.5", no, no, u"1.2.3.4.5", no, u"", no, no},
        {u"//01.2.3.4", no, no, u"01.2.3.4", no, u"", no, no},
        {u"//a%41b/", no, no, u"a%41b", no, u"/", no, no}, {u"/a%zz", no, no, no, no, u"/a%zz", no, no},
        {u"\u00E91:x", u"\u00E91", no, no, no, u"x", no, no},
        {u"?\uE000\U000E0000", no, no, no, no, u"", u"\uE000\U000E0000", no},
        {u"x:\U000E1000", u"x", no, no, no, u"\U000E1000", no, no},
    };
    // clang-format on
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
    // clang-format off
    struct Row { Text text; std::string traits; };
    Row const rows[] = {
        {u"", "e"},           {u"mailto:a@b", "saO"}, {u"file:/a", "sap"}, {u"a:", "saO"},
        {u"b/c", ""},         {u"//h", "Ah"},         {u"//@h", "Ahu"},    {u"a:b?", "saqO"},
        {u"a:#", "safO"},     {u"/a", "p"},           {u"?", "q"},         {u"#", "f"},
        {u"x://h/", "sAahp"}, {u"x://h:1", "sAaoh"},  {u"x:a/b", "saO"},
    };
    // clang-format on
    for (auto const& row : rows) {
        EXPECT_EQ(support::traits(IRI(row.text)), row.traits) << show(row.text);
    }
}

TEST(IriParse, AnAbsentPartIsNamed) {
    IRI const none;
    auto const refusal = [](auto ask) { return thrown<std::runtime_error>(ask); };
    EXPECT_EQ(refusal([&] { none.getScheme(); }), "No scheme");
    EXPECT_EQ(refusal([&] { none.getPort(); }), "No port");
    EXPECT_EQ(refusal([&] { none.getPortNumber(); }), "No port");
    EXPECT_EQ(refusal([&] { none.getPath(Encoding::Iri); }), "Item not set: Path");
    EXPECT_EQ(refusal([&] { none.getAuthority(Encoding::UriStrict); }),
              "Item not set: Host: Host (in getAuthority)");
    EXPECT_EQ(refusal([&] { none.getSchemeSpecificPart(Encoding::Raw); }), "Item not set: Path");
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

// Everything that a value can be asked, comparisons and resolutions with another one among it.
std::vector<std::function<Text(IRI const&)>> allQuestions() {
    static IRI const base(u"http://u%41@h\u00E9:8/./c?q");
    std::vector<std::function<Text(IRI const&)>> all = {
        [](auto& iri) { return iri.toString(false); },
        [](auto& iri) { return iri.toString(true); },
        [](auto& iri) { return iri.toAsciiString(false); },
        [](auto& iri) { return iri.toAsciiString(true); },
        [](auto& iri) { return iri.getScheme() + iri.getPort(); },
        [](auto& iri) { return Text(iri == base || iri != IRI(iri) ? u"same" : u"other"); },
        [](auto& iri) { return Text(iri < base ? u"less" : u"not less"); },
        [](auto& iri) { return Text(IRITextLess()(base, iri) ? u"greater" : u"not greater"); },
        [](auto& iri) { return iri.resolveAgainst(base).toString(true); },
        [](auto& iri) { return base.resolveAgainst(iri).toString(true); },
        [](auto& iri) { return iri.makeRelativeTo(base).toString(true); },
        [](auto& iri) { return IRI(IRIArgs(iri)).getPath(Encoding::Uri); },
        [](auto& iri) {
            std::ostringstream stream;
            stream << iri << iri.hashValue() << iri.getPortNumber() << iri.isOpaque();
            std::string const given = stream.str();
            return Text(given.begin(), given.end());
        }};
    for (Encoding const encoding : encodings) {
        for (auto const getter : {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery,
                                  &IRI::getFragment, &IRI::getAuthority, &IRI::getSchemeSpecificPart}) {
            all.emplace_back([=](auto& iri) { return (iri.*getter)(encoding); });
        }
    }
    return all;
}

TEST(IriThreads, OneValueAnswersManyAsOne) {
    // The first parse of this process is raced as well: ctest runs each test in a process of its own.
    Text const text = u"http://u%41@h\u00E9:8/a%20b/\u00E9?q%C3%A9=%25#f%";
    for (int round = 0; round < 30; ++round) {
        std::optional<IRI> shared;
        std::once_flag made;
        std::vector<std::vector<Text>> given(16, std::vector<Text>(48));
        support::onThreads(given.size(), [&](std::size_t i) {
            IRI const own(text);
            std::call_once(made, [&] { shared.emplace(round % 2 == 0 ? IRI(text) : IRI(IRIArgs(own))); });
            auto const questions = allQuestions();
            support::Generator order(i);
            for (int step = 0; step < 100; ++step) {
                std::size_t const which = order.below(questions.size());
                given[i].at(which) = questions[which](order.chance(30) ? IRI(*shared) : *shared);
            }
        });
        auto const questions = allQuestions();
        ASSERT_EQ(questions.size(), 48u);
        for (std::size_t which = 0; which != questions.size(); ++which) {
            Text const alone = questions[which](round % 2 == 0 ? IRI(text) : IRI(IRIArgs(IRI(text))));
            for (auto const& answer : given) {
                ASSERT_TRUE(answer[which].empty() || answer[which] == alone) << which << show(answer[which]);
            }
        }
    }
}

} // namespace
