#include <foundation/network/Escapes.hpp>
#include <foundation/network/PathSegments.hpp>
#include <foundation/network/With.hpp>

#include "support/Generator.hpp"
#include "support/References.hpp"

#include <gtest/gtest.h>

namespace {

using namespace support;
using namespace foundation::network;

struct Named {
    bool (IRI::*has)() const noexcept;
    Text (IRI::*get)(Encoding const&) const;
    IRI (*with)(IRI const&, std::u16string_view, Encoding);
    IRI (*without)(IRI const&);
};
constexpr Named components[] = {
    {&IRI::hasUserInfo, &IRI::getUserInfo, withUserInfo, withoutUserInfo},
    {&IRI::hasHost, &IRI::getHost, withHost, withoutHost},
    {nullptr, &IRI::getPath, withPath, nullptr},
    {&IRI::hasQuery, &IRI::getQuery, withQuery, withoutQuery},
    {&IRI::hasFragment, &IRI::getFragment, withFragment, withoutFragment},
};

// All components of a value in the Iri form, each behind its name.
std::vector<Text> texts(IRI const& iri) {
    std::vector<Text> all{iri.hasScheme() ? u"+" + iri.getScheme() : u"-"};
    for (auto const& each : components) {
        bool const has = each.has == nullptr || (iri.*each.has)();
        all.push_back(has ? u"+" + (iri.*each.get)(Iri) : u"-");
    }
    all.push_back(iri.hasPort() ? u"+" + iri.getPort() : u"-");
    return all;
}
constexpr std::size_t PATH = 3;

// Components that were not named are the same; the result is as its text parsed again.
void othersStay(IRI const& before, IRI const& after, std::vector<std::size_t> const& named) {
    auto const was = texts(before.isEmpty() ? IRI(u"") : before);
    auto is = texts(after);
    for (std::size_t i = 0; i != was.size(); ++i) {
        bool const isNamed = std::find(named.begin(), named.end(), i) != named.end();
        bool const isGuard =
            i == PATH && (is[i] == u"+/." + was[i].substr(1) || is[i] == u"+./" + was[i].substr(1));
        require(isNamed || is[i] == was[i] || isGuard, "another component", before.toString(false),
                after.toString(false), is[i]);
    }
    IRI const again(after.toString(false));
    require(answers(again) == answers(after), "other answers", after.toString(false));
}

TEST(With, ChangesOneComponentAndKeepsTheOthers) {
    Generator generator(31);
    int changed = 0;
    int refused = 0;
    for (std::size_t round = 0; round != 12000; ++round) {
        auto const read = parsed(toUtf16(generator.reference()));
        IRI const iri = read ? inAnotherWay(*read, round % 3) : IRI();
        if (!read || !canBeReadAgain(iri)) {
            continue;
        }
        std::size_t const at = generator.below(std::size(components));
        auto const& named = components[at];
        Encoding const encoding = generator.pick(encodings);
        auto const text = toUtf16(generator.chance(80) ? generator.pieces(3) : generator.path());
        if (!text) {
            continue;
        }
        try {
            IRI const after = named.with(iri, *text, encoding);
            othersStay(iri, after, {at + 1});
            Text const got = (after.*named.get)(encoding == Encoding::Raw ? Encoding::Raw : Iri);
            bool const isGuarded = at + 1 == PATH && (got == u"/." + *text || got == u"./" + *text);
            require(got == *text || isGuarded, "does not read back", iri.toString(false), *text, got);
            ++changed;
        } catch (std::logic_error const& e) {
            std::string const words = e.what();
            require((encoding != Encoding::Raw && words == "IRI parsing failed") ||
                        words == (at == 0 ? "User Info requires a host"
                                          : "Path cannot be relative if authority present"),
                    "another refusal", iri.toString(false), *text, words);
            ++refused;
        }
        if (named.without != nullptr) {
            IRI const without = named.without(iri);
            require(!(without.*named.has)(), "still there", without.toString(false));
            othersStay(iri, without, at == 1 ? std::vector<std::size_t>{1, 2, 6} : std::vector{at + 1});
        }
        // Of the rest one a round: asking two values for everything is what takes long.
        IRI const port = iri.hasHost() ? withPort(iri, 7) : withoutPort(iri);
        std::pair<IRI, std::size_t> const rest[] = {
            {withScheme(iri, u"a+1"), 0}, {withoutScheme(iri), 0}, {withoutPort(iri), 6}, {port, 6}};
        othersStay(iri, rest[round % 4].first, {rest[round % 4].second});
        require(rest[0].first.getScheme() == u"a+1" && !rest[1].first.hasScheme(), "another scheme", *text);
        require(!rest[2].first.hasPort() && (!iri.hasHost() || port.getPortNumber() == 7), "another port");
    }
    EXPECT_GT(changed, 2000);
    EXPECT_GT(refused, 200);
}

TEST(With, GivesWhatIsDocumented) {
    IRI const iri(u"http://jo@[::1]:0080/a%2Fb?x=1%26y#top");
    auto const is = [](IRI const& result, Text const& text) { EXPECT_EQ(result.toString(false), text); };
    is(withoutFragment(iri), u"http://jo@[::1]:0080/a%2Fb?x=1%26y");
    is(withHost(iri, u"[::2]", Iri), u"http://jo@[::2]:0080/a%2Fb?x=1%26y#top");
    is(withHost(iri, u"[::2]", Encoding::Raw), u"http://jo@%5B%3A%3A2%5D:0080/a%2Fb?x=1%26y#top");
    is(withoutHost(iri), u"http:/a%2Fb?x=1%26y#top");
    is(withUserInfo(iri, "a:b\u00E9 50%", Encoding::Raw),
       u"http://a:b\u00E9%2050%25@[::1]:0080/a%2Fb?x=1%26y#top");
    is(withQuery(iri, u"[#]", Encoding::Raw), u"http://jo@[::1]:0080/a%2Fb?%5B%23%5D#top");
    is(withFragment(iri, u"#", Encoding::Raw), u"http://jo@[::1]:0080/a%2Fb?x=1%26y#%23");
    is(withoutScheme(IRI(u"x:a:b")), u"./a:b");
    is(withPath(IRI(u"x"), u"a:b", Encoding::Raw), u"a%3Ab");
    is(withoutHost(IRI(u"x://h//p")), u"x:/.//p");
    is(withQuery(IRI(), u8"\u00E9", Iri), u"?\u00E9");
    auto const refusal = [](auto operation) { return thrown<std::logic_error>(operation); };
    EXPECT_EQ(refusal([&] { (void)withScheme(iri, u"1"); }), "Malformed scheme");
    EXPECT_EQ(refusal([&] { (void)withPort(IRI(u"x:"), 1); }), "Port requires a host");
    EXPECT_EQ(refusal([&] { (void)withHost(iri, u"h:1", Iri); }), "IRI parsing failed");
    EXPECT_EQ(refusal([&] { (void)withHost(iri, u"u@h", Iri); }), "IRI parsing failed");
    EXPECT_EQ(refusal([&] { (void)withPath(iri, u"/a?b", Encoding::Uri); }), "IRI parsing failed");
    EXPECT_THROW((void)withPath(iri, Text(1, 0xDC00), Encoding::Raw), std::out_of_range);
}

TEST(PathSegments, GoThereAndBack) {
    // clang-format off
    struct Row { Text iri; std::vector<Text> segments; };
    Row const rows[] = {
        {u"x:", {}}, {u"/", {u""}}, {u"/a/", {u"a", u""}}, {u"a/b", {u"a", u"b"}}, {u"//h", {}},
        {u"//h//x", {u"", u"x"}}, {u"x:/a%2Fb/%C3%A9%FF", {u"a/b", u"\u00E9\uFFFD"}}, {u"/%2e/%25", {u".", u"%"}},
    };
    // clang-format on
    for (auto const& [iri, segments] : rows) {
        EXPECT_EQ(getPathSegments(IRI(iri)), segments) << show(iri);
    }
    Generator generator(32);
    int changed = 0;
    for (int round = 0; round != 6000; ++round) {
        auto const iri = parsed(toUtf16(generator.reference()));
        std::vector<Text> segments(generator.below(5));
        for (Text& segment : segments) {
            segment = toUtf16(generator.chance(20) ? U"/" + generator.pieces(2) : generator.pieces(3))
                          .value_or(u"\u00E9");
            segment += segment == u"." || segment == u".." ? u"x" : u"";
        }
        if (!iri) {
            continue;
        }
        IRI const after = withPathSegments(*iri, segments);
        othersStay(*iri, after, {PATH});
        bool const rooted = iri->hasAbsolutePath() || iri->hasHost();
        bool const guarded =
            !segments.empty() && segments[0].empty() && !iri->hasHost() && (!rooted || segments.size() > 1);
        auto const again = getPathSegments(after);
        require(guarded ? again.at(0) == u"." : again == segments, "other segments", after.toString(false));
        ++changed;
    }
    EXPECT_GT(changed, 2000);
    EXPECT_EQ(withPathSegments(IRI(u"http://h/a"), {u"50%", u"\u00E9/\u00FC"}),
              IRI(u"http://h/50%/\u00E9%2F\u00FC"));
    EXPECT_EQ(withPathSegments(IRI(u"a"), {u"b:c", u"d:e"}), IRI(u"b%3Ac/d:e"));
    for (Text const dots : {u".", u".."}) {
        auto const put = [&] { (void)withPathSegments(IRI(u"/"), {u"a", dots}); };
        EXPECT_EQ(thrown<std::logic_error>(put), "Path segment must not be a dot segment");
    }
}

// Every code point in every component, and every byte.
TEST(Escapes, GoThereAndBack) {
    using enum IRIComponent;
    constexpr std::pair<IRIComponent, char const*> all[] = {
        {UserInfo, "//@h"}, {Host, "//"}, {Path, "/"}, {Query, "?"}, {Fragment, "#"}};
    for (auto const& [component, around] : all) {
        for (char32_t first = 0; first < 0x110000; first += 0x400) {
            std::u32string block;
            for (char32_t c = first; c != first + 0x400; ++c) {
                block.append(c >= 0xD800 && c <= 0xDFFF ? U"" : std::u32string(1, c) + U"%4");
            }
            auto const text = *toUtf16(block);
            auto const encoded = percentEncode(text, component);
            ASSERT_TRUE(percentDecode(encoded) == text) << around << ' ' << std::hex << unsigned(first);
            auto reference = fromUtf8(around);
            reference.insert(component == UserInfo ? 2 : reference.size(), encoded);
            ASSERT_NO_THROW(IRI iri(reference)) << around << ' ' << std::hex << unsigned(first);
        }
    }
    for (IRIComponent const component : {Scheme, Port, IRIComponent::Text}) {
        EXPECT_EQ(percentEncode(u" %\u00E9", component), u" %\u00E9");
    }
    for (int byte = 0; byte != 256; ++byte) {
        std::string escape = "%00";
        escape[1] = "0123456789abcdef"[byte / 16];
        escape[2] = "0123456789ABCDEF"[byte % 16];
        EXPECT_EQ(percentDecode(wide(escape)),
                  byte < 0x80 ? std::u16string(1, static_cast<char16_t>(byte)) : u"\uFFFD");
    }
    // Each maximal part is one U+FFFD (Unicode, table 3-8 and those around it).
    // clang-format off
    struct Row { char const* text; std::u16string decoded; };
    Row const rows[] = {
        {"%C0%AF", u"\uFFFD\uFFFD"}, {"%E2%82x", u"\uFFFDx"}, {"%F0%9F%98%", u"\uFFFD%"},
        {"%ED%A0%80", u"\uFFFD\uFFFD\uFFFD"}, {"%F0%80%80", u"\uFFFD\uFFFD\uFFFD"},
        {"%F4%91%92%93%FF%41", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"%E1%80%E2%F0%91%92%F1%BF%41", u"\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"%C3%A9+%zz%4", u"\u00E9+%zz%4"}, {"%F0%9F%98%80", u"\U0001F600"},
    };
    // clang-format on
    for (auto const& [text, decoded] : rows) {
        EXPECT_EQ(percentDecode(wide(text)), decoded) << text;
    }
    EXPECT_EQ(percentEncode("\xC3\xA9 ", Path), "\xC3\xA9%20");
    EXPECT_EQ(percentDecode("%C3%A9"), "\xC3\xA9");
}

} // namespace
