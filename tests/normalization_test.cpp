#include "support/Generator.hpp"
#include "support/Normalizations.hpp"

#include <gtest/gtest.h>

namespace {

using namespace support;
using foundation::network::IRIArgs;

using enum Normalization;
constexpr auto Everything = ~Normalization{};

static_assert(Syntax == (Escapes | Case | Segments) && (Syntax & Case) == Case);
static_assert(~Syntax == (AsciiHost | Scheme) && ~Everything == Normalization{});

Text normal(Text const& text, Normalization steps) {
    return normalize(IRI(text), steps).toString(false);
}

TEST(Normalization, KeepsItsLaws) {
    Generator generator(51);
    int changed = 0;
    int same = 0;
    int built = 0;
    for (std::size_t round = 0; round != 6000; ++round) {
        Text text = toUtf16(generator.reference()).value_or(u"");
        // clang-format off
        constexpr char16_t const* starts[] = {
            u"HTTP:", u"wss:", u"ftp://H", u"https://B\u00FCcher.example:0443", u"http://h:080",
            u"x://\u2100.example", u"//%C3%A9", u"x://%48%6A"};
        // clang-format on
        if (generator.chance(30)) {
            text = generator.pick(starts) +
                   toUtf16(generator.path() + U"?" + generator.pieces(4)).value_or(u"/a");
        }
        auto const iri = parsed(text);
        if (!iri) {
            continue;
        }
        IRI const value = inAnotherWay(*iri, round % 3);
        built += round % 3 == 0;
        for (unsigned set = 0; set != ALL_SETS; ++set) {
            bool const thoroughly = round % 20 == 0 && set % 8 == 5;
            (normalizationHolds(value, static_cast<Normalization>(set), thoroughly) ? changed : same) += 1;
        }
    }
    EXPECT_GT(changed, 20000);
    EXPECT_GT(same, 20000);
    EXPECT_GT(built, 1000);
}

// Every short row of what may meet where an escape is decoded.
TEST(Normalization, NeverCompletesAnEscape) {
    // clang-format off
    Text const pieces[] = {u"%", u"4", u"%34", u"%31", u"%25", u"%2e", u"%2F", u"%C3", u"%A9", u"/", u".", u"f",
                           u"%66", u"%EF%BC%94", u"\uFF14"};
    // clang-format on
    constexpr std::size_t count = std::size(pieces);
    int changed = 0;
    for (std::size_t row = 0; row != count * count * count * count; ++row) {
        Text text = row % 2 == 0 ? u"x:/a" : u"a";
        for (std::size_t rest = row; rest != 0; rest /= count) {
            text += pieces[rest % count];
        }
        IRI const iri(text);
        changed += normalizationHolds(iri, Escapes) + normalizationHolds(iri, Syntax);
    }
    EXPECT_GT(changed, 20000);
}

TEST(Normalization, GivesTheExamplesOfTheRfcs) {
    // clang-format off
    struct Row { Text one, other; Normalization steps; };
    Row const rows[] = { // RFC 3986, sections 2.3, 6.2.2 and 6.2.3
        {u"example://a/b/c/%7Bfoo%7D", u"eXAMPLE://a/./b/../b/%63/%7bfoo%7d", Syntax}, {u"%3a", u"%3A", Case},
        {u"HTTP://www.EXAMPLE.com/", u"http://www.example.com/", Case},
        {u"http://example.com/~user/%41%5a%61%7A%30%39%2D%2E%5F", u"http://example.com/%7Euser/AZaz09-._", Escapes},
        {u"http://example.com/a/./b/../c", u"http://example.com/a/c", Segments},
        {u"http://example.com", u"http://example.com/", Scheme},
        {u"http://example.com:80/", u"http://example.com/", Scheme},
        // RFC 3987, section 5.3
        {u"http://example.org/~user", u"http://example.org/%7euser", Syntax},
        {u"http://example.org/%7Euser", u"http://example.org/%7euser", Syntax},
        {u"example://a/b/c/%7Bfoo%7D/ros\u00E9", u"eXAMPLE://a/./b/../b/%63/%7bfoo%7d/ros%C3%A9", Syntax},
        {u"http://r\u00E9sum\u00E9.example.org", u"http://xn--rsum-bpad.example.org", AsciiHost},
        {u"http://r%C3%A9sum%C3%A9.example.org", u"http://xn--rsum-bpad.example.org", AsciiHost | Escapes},
        // And those that take more: another scheme's own rules, NFC, or asking a server.
        {u"mailto:Joe@Example.COM", u"mailto:Joe@example.com", {}},
        {u"http://www.example.org/r\u00E9sum\u00E9.html", u"http://www.example.org/re\u0301sume\u0301.html", {}},
        {u"http://example.com/data", u"http://example.com/data/", {}},
        {u"http://www.example.com/?", u"http://www.example.com/", {}},
    };
    // clang-format on
    for (auto const& [one, other, steps] : rows) {
        bool const none = steps == Normalization{};
        EXPECT_FALSE(IRI(one) == IRI(other)) << show(one);
        EXPECT_EQ(areEquivalent(IRI(one), IRI(other), none ? Everything : steps), !none) << show(one);
    }
    EXPECT_EQ(std::size(rows), 16u);
    // An empty port is no port here (3986, 6.2.3: "http://example.com:/").
    EXPECT_FALSE(parsed(u"http://example.com:/"));
}

TEST(Normalization, GivesWhatIsDocumented) {
    // clang-format off
    struct Row { Text text, normal; Normalization steps; };
    Row const rows[] = {
        {u"HTTP://U@EX%41MPLE.org:080/%7e/./%c3%a9?%e2%82%ac#%5B",
         u"http://U@example.org:080/~/\u00E9?\u20AC#%5B", Syntax},
        {u"HTTP://U@EX%41MPLE.org:080?Q", u"HTTP://U@EX%41MPLE.org/?Q", Scheme},
        {u"http://h:0443", u"http://h:0443/", Scheme}, {u"https://h:0443", u"https://h/", Scheme},
        {u"ws://h:80", u"ws://h/", Scheme}, {u"wss://h:443", u"wss://h/", Scheme},
        {u"FTP://h:21", u"FTP://h/", Scheme}, {u"ftps://h:21", u"ftps://h:21", Scheme},
        {u"http:", u"http:", Scheme}, {u"//h:80", u"//h:80", Scheme},
        {u"http://h:80#f", u"http://h/#f", Everything}, {u"x:%2e%2e/a", u"x:a", Syntax},
        {u"x://h/%2E%2e/%2e/a", u"x://h/a", Syntax}, {u"a/../b", u"a/../b", Syntax},
        {u"/a/../b", u"/a/../b", Syntax}, {u"//h/a/../b", u"//h/b", Syntax}, {u"x:/a/%2E", u"x:/a/.", Escapes},
        {u"//B%C3%BCcher.Example", u"//xn--bcher-kva.example", Escapes | AsciiHost},
        {u"//B%C3%BCcher.Example", u"//B%C3%BCcher.Example", AsciiHost},
        {u"//stra\u00DFe.example", u"//strasse.example", AsciiHost},
        {u"//\u00FC.a_b." + Text(63, u'a'), u"//xn--tda.a_b." + Text(63, u'a'), AsciiHost},
        {u"//b\u00FCcher\u3002example", u"//xn--bcher-kva.example", AsciiHost},
        {u"//\uFF11.2.3.4", u"//1.2.3.4", AsciiHost}, {u"//[2001:DB8::aB]", u"//[2001:db8::ab]", Case},
        {u"//[vF.A:B]", u"//[vf.a:b]", Case}, {u"\u00C9X://\u00C9X", u"\u00C9x://\u00C9x", Case},
        {u"//%aF/%aF?%aF#%aF%a", u"//%AF/%AF?%AF#%AF%a", Case},
        {u"%F0%9F%98%80%F3%A1%80%80", u"\U0001F600\U000E1000", Escapes}, {u"?%41%42%z%41%%41g", u"?AB%zA%Ag", Escapes},
        {u"", u"", Everything}, {u"X:%41", u"X:%41", {}},
        // A path that would be a host, by dots, by decoded dots, from a rootless one.
        {u"x:/a/..//h", u"x:/.//h", Everything}, {u"x:/%2e//h", u"x:/.//h", Everything},
        {u"x:a/..//h", u"x:/.//h", Everything},
    };
    // clang-format on
    for (auto const& [text, expected, steps] : rows) {
        EXPECT_EQ(show(normal(text, steps)), show(expected)) << show(text);
        for (unsigned set = 0; set != ALL_SETS; ++set) {
            normalizationHolds(IRI(text), static_cast<Normalization>(set), true);
        }
    }
    EXPECT_EQ(std::size(rows), 34u);
    EXPECT_EQ(normalize(IRI(), Everything), IRI());
    // What building lets through, and no text can carry.
    auto const mended = [](IRIArgs const& args) {
        return normalize(IRI(args), Normalization{}).toString(false);
    };
    EXPECT_EQ(mended(IRIArgs().setHost(u"h").setUserInfo(u"50%")), u"//50%25@h");
    EXPECT_EQ(mended(IRIArgs().setPath(u"").setQuery(u"[]")), u"?%5B%5D");
    EXPECT_EQ(mended(IRIArgs().setPath(u"").setFragment(u"[#]")), u"#%5B%23%5D");
    EXPECT_EQ(mended(IRIArgs().setScheme(u"x").setPath(u"//h")), u"x:/.//h");
}

TEST(Normalization, LeavesWhatWouldBecomeSomethingElse) {
    // clang-format off
    Text const rows[] = {
        // Reserved: in a path, a query, user information, a host. An escaped escape.
        u"x:/a%2Fb%3Fc%23d%3Be%40", u"?a%26b%3Dc%2Bd", u"//a%3Ab%40@h", u"//a%2Fb%40c%3A80", u"x:/%2541",
        // Excluded; a zero and controls; private use; noncharacters; controls of direction, the younger ones.
        u"/%20%22%3C%5C%7B", u"/%00%0A%7F%C2%85", u"?%EE%80%80%F3%A0%80%80", u"/%EF%BF%BE%EF%B7%90%F0%9F%BF%BE",
        u"/%E2%80%8E%E2%80%8F%E2%80%AA%E2%80%AE", u"/%D8%9C%E2%81%A6%E2%81%A9",
        // An escape completed: by both digits, the first, the second; a reserved one; a full-width digit.
        u"x:/%%34%31", u"x:/%%341", u"x:/%4%31", u"x:/%%32%46", u"x:/%%EF%BC%941",
        // No UTF-8: cut short, overlong, surrogates, too large and stray.
        u"/%C3/%E2%82/%F0%9F%98", u"/%C1%81%E0%81%81", u"/%ED%A0%80%ED%B0%80", u"/%F4%90%80%80%80%FF",
        // A first segment that would be a scheme, a path that would be a host, a relative path that goes up.
        u"a%3Ab", u"x:/.//h", u"../../a",
        // A host split by a slash, user information, a port; that would hold a query, an escape.
        u"//\u2100.example", u"//u\uFF20h", u"//h\uFF1A80", u"//h\uFF1Fq", u"//\uFF0541.example",
        // A host beside an escape; with an empty label, a last dot, a label too long; that ICU refuses; that is no
        // Punycode; a literal.
        u"//\u00FC%2F.example", u"//\u00FC..example", u"//\u00FC.example.",
        u"//\u00FC." + Text(64, u'a'), u"//" + Text(4000, u'\u00FC'), u"//xn--\u00FC.example",
        u"//[\uFF21::1]",
        // Another port, that of another scheme; letters of a path, a query, a fragment.
        u"http://h:0081/", u"https://h:80/", u"x:/A?B#C",
    };
    // clang-format on
    for (auto const& text : rows) {
        EXPECT_EQ(show(normal(text, Everything)), show(text));
        for (unsigned set = 0; set != ALL_SETS; ++set) {
            normalizationHolds(IRI(text), static_cast<Normalization>(set));
        }
    }
    EXPECT_EQ(std::size(rows), 38u);
}

TEST(Normalization, TellsOriginsApart) {
    // clang-format off
    struct Row { Text one, other; bool same; };
    Row const rows[] = {
        {u"http://h/a", u"HTTP://H:080/b?q#f", true}, {u"http://u:p@h", u"http://h", true},
        {u"http://%68%c3%a9", u"http://h\u00E9", true}, {u"wss://h:443", u"WSS://h", true},
        {u"x://h:1", u"x://h:01", true}, {u"x://h", u"x://h/", true}, {u"http://[::A]", u"http://[::a]", true},
        {u"http://h", u"https://h", false}, {u"http://h", u"ws://h", false}, {u"http://h", u"http://h:81", false},
        {u"x://h", u"x://h:80", false}, {u"http://h", u"http://g", false}, {u"http://h", u"http://h.", false},
        {u"http://%FF", u"http://%FE", false},
        {u"http://b\u00FCcher.example", u"http://xn--bcher-kva.example", false}, {u"//h", u"//h", false},
        {u"http:/a", u"http:/a", false}, {u"http:///a", u"http:///a", true}, {u"file:///a", u"file:///b", true},
        {u"mailto:a", u"mailto:a", false}, {u"", u"", false},
    };
    std::pair<Text, int> const ports[] = {
        {u"http:", 80}, {u"HTTPS://h", 443}, {u"ws://h", 80}, {u"wss://h", 443}, {u"ftp://h", 21},
        {u"http://h:0", 0}, {u"x://h:07", 7}, {u"x://h", -1}, {u"//h", -1}, {u"", -1}, {u"httpx://h", -1},
    };
    // clang-format on
    for (auto const& [one, other, same] : rows) {
        EXPECT_EQ(isSameOrigin(IRI(one), IRI(other)), same) << show(one) << ' ' << show(other);
        EXPECT_EQ(isSameOrigin(IRI(other), IRI(one)), same) << show(one) << ' ' << show(other);
    }
    EXPECT_EQ(std::size(rows), 21u);
    EXPECT_TRUE(
        isSameOrigin(IRI(IRIArgs().setScheme(u"HTTP").setHost(u"H\u00E9")), IRI(u"http://h%c3%A9:80")));
    for (auto const& [text, port] : ports) {
        auto const found = getEffectivePort(IRI(text));
        EXPECT_EQ(found ? *found : -1, port) << show(text);
    }
    EXPECT_EQ(std::size(ports), 11u);
}

} // namespace
