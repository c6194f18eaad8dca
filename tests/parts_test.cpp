#include <foundation/network/iri/detail/StringParts.hpp>

#include "support/Generator.hpp"
#include "support/StoredParts.hpp"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using namespace support::plain;
using support::Encoding;

TEST(Conversions, AgreeWithThePlainOnesForEveryCodePoint) {
    // ASCII a character at a time, all else in runs: a conversion looks at one character at a time.
    for (char32_t c = 0; c < 0x100; ++c) {
        agreesEverywhere(Text(1, c));
        agreesEverywhere({U'a', c, U':', U'/', c, U':'});
    }
    int runs = 0;
    for (char32_t first = 0x100; first < 0x110000; first += 0x100, ++runs) {
        Text text(0x100, first);
        std::iota(text.begin(), text.end(), first);
        agreesEverywhere(text);
    }
    EXPECT_EQ(runs, 0x110000 / 0x100 - 1);
    agreesEverywhere({0x110000});
    agreesEverywhere({});
}

TEST(Conversions, AgreeWithThePlainOnesForEscapedBytes) {
    for (unsigned lead = 0; lead < 0x100; ++lead) {
        agreesEverywhere(percent(lead));
        agreesEverywhere(U"x" + percent(lead) + U"%");
        // Sequences that are whole, cut short, too long, and followed by what is none.
        for (Text const tail :
             {U"%80", U"%bF%BF", U"%9f%80%80", U"%8F%BF%BF%BF", U"%80%80%80%80%80", U"%4", U"%25%34%31%FF"}) {
            agreesEverywhere(percent(lead) + tail);
        }
    }
}

TEST(Conversions, AgreeWithThePlainOnesForGeneratedTexts) {
    support::Generator generator(3);
    for (int round = 0; round < 20000; ++round) {
        Text text = generator.pieces(6);
        // The plain ones know the words for one value alone.
        std::erase_if(text, [](char32_t c) { return c > 0x110000; });
        agreesEverywhere(text);
        ASSERT_EQ(converted(path, Encoding::Raw, Encoding::Iri, text, true),
                  expected(path, Encoding::Raw, Encoding::Iri, text, false));
    }
}

TEST(Conversions, GiveWhatIsDocumented) {
    constexpr auto Raw = Encoding::Raw, Iri = Encoding::Iri, Uri = Encoding::Uri;
    Text const noUtf8 = U"! Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";
    // clang-format off
    struct Row { int part; Encoding from, to; Text text; Text result; };
    Row const rows[] = {
        {path, Raw, Iri, U"a b", U"a%20b"}, {path, Uri, Raw, U"%C3%A9", U"\u00E9"},
        {path, Uri, Iri, U"%41%2F%20", U"A/%20"}, {path, Uri, Iri, U"%ff", U"%FF"},
        {path, Iri, Raw, U"%FF", U"\u00FF"}, {path, Raw, Iri, U"%41", U"%2541"},
        {path, Raw, Iri, U"100%", U"100%"}, {path, Raw, Iri, U"a:b/c:d", U"a%3Ab/c:d"},
        {path, Raw, Iri, U"/a:b", U"/a:b"}, {host, Raw, Iri, U"a%41", U"a%252541"},
        {host, Raw, Iri, U"%", U"%25"}, {path, Raw, Iri, U"\uE000", U"%EE%80%80"},
        {query, Raw, Iri, U"\uE000", U"\uE000"}, {fragment, Raw, Iri, U"\u202E", U"%E2%80%AE"},
        {formEncoded, Raw, Iri, U"a b&c=d%20e", U"a+b&c=d%20e"},
        {formEncoded, Iri, Raw, U"a+b%20c", U"a+b%20c"}, {path, Iri, Raw, U"%25%34%31%FF", U"A\u00FF"},
        {path, Iri, Raw, U"%C0%AF", noUtf8},             // overlong
        {path, Iri, Raw, U"%ED%A0%80", noUtf8},          // a surrogate
        {path, Iri, Raw, U"%F4%90%80%80", noUtf8},       // above U+10FFFF
        {path, Iri, Raw, U"%F8%88%80%80%80", noUtf8},    // five bytes
        {path, Iri, Raw, U"%FC%84%80%80%80%80", noUtf8}, // six bytes
        {path, Uri, Iri, U"%C0%AF", noUtf8},
        {path, Iri, Raw, U"%E4%B8", U"\u00E4\u00B8"}, // cut short
    };
    // clang-format on
    for (auto const& row : rows) {
        EXPECT_EQ(converted(row.part, row.from, row.to, row.text), row.result) << support::show(row.text);
    }
}

TEST(Conversions, RawToIriAndBackLosesNothing) {
    support::Generator generator(4);
    for (int round = 0; round < 20000; ++round) {
        Text text = generator.pieces(6);
        std::erase_if(text, [](char32_t c) { return c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF); });
        bool const looksEscaped = decoded(text, U"") != text;
        for (int const part : {userInfo, host, path, query, fragment}) {
            if (part == host && looksEscaped) {
                continue; // a host's "%" is escaped whatever follows it, and one before digits twice
            }
            Text const iri = converted(part, Encoding::Raw, Encoding::Iri, text);
            ASSERT_EQ(converted(part, Encoding::Iri, Encoding::Raw, iri), text) << support::show(text);
        }
    }
}

TEST(StringParts, AnAbsentPartIsNamed) {
    StringParts const none;
    Text const names[] = {U"UserInfo", U"Host", U"Path", U"Query", U"Fragment"};
    for (int part = userInfo; part <= fragment; ++part) {
        EXPECT_EQ(outcome([&] { return get(none, part, Encoding::Iri); }), U"! Item not set: " + names[part]);
    }
    EXPECT_EQ(outcome([&] { return none.getAuthority(Encoding::Raw); }),
              U"! Item not set: Host: Host (in getAuthority)");
    for (auto const stored :
         {&StringParts::storedUserInfo, &StringParts::storedHost, &StringParts::storedPath,
          &StringParts::storedQuery, &StringParts::storedFragment}) {
        EXPECT_EQ(outcome([&] { return (none.*stored)().first; }), U"! Item not set");
    }
    EXPECT_THROW((void)none.storedHost(), std::runtime_error);
}

TEST(StringParts, EmptyMeansNothingButAnEmptyPath) {
    StringParts parts;
    EXPECT_TRUE(parts.isEmpty());
    parts.setPath(U"", Encoding::Iri);
    EXPECT_TRUE(parts.isEmpty());
    EXPECT_TRUE(parts == StringParts());
    parts.setQuery(U"", Encoding::Iri, false);
    EXPECT_FALSE(parts.isEmpty());
    EXPECT_TRUE(parts != StringParts());
    parts.reset();
    EXPECT_TRUE(parts.isEmpty());
    EXPECT_EQ(outcome([&] { return parts.getQuery(Encoding::Iri); }), U"! Item not set: Query");
    parts.setPath(U"/", Encoding::Raw);
    EXPECT_FALSE(parts.isEmpty());
}

TEST(StringParts, FormsThatAreAlikeAreOneText) {
    for (Encoding const source : {Encoding::Raw, Encoding::Iri, Encoding::Uri}) {
        StringParts parts;
        parts.setPath(U"/plain", source);
        auto const* const text = &parts.getPath(source);
        StringParts const copy(parts);
        for (Encoding const form :
             {Encoding::Uri, Encoding::Raw, Encoding::Iri, Encoding::IriStrict, Encoding::UriStrict}) {
            EXPECT_EQ(&parts.getPath(form), text);
        }
        parts.reset();
        EXPECT_EQ(copy.getPath(Encoding::Raw), U"/plain"); // a copy points at nothing of its source's
        EXPECT_EQ(&copy.getPath(Encoding::Raw), &copy.getPath(Encoding::Uri));
    }
    StringParts parts;
    parts.setPath(U"/\u00E9", Encoding::Uri); // the Iri form is another text, which the Raw form shares
    parts.setPath(U"/%C3%A9", Encoding::Uri);
    EXPECT_EQ(&parts.getPath(Encoding::Raw), &parts.getPath(Encoding::Iri));
    EXPECT_NE(&parts.getPath(Encoding::Uri), &parts.getPath(Encoding::Iri));
}

TEST(StringParts, AChangedContextFormsTheOtherFormsAnew) {
    StringParts parts;
    parts.setPath(U"a:b", Encoding::Raw);
    EXPECT_EQ(parts.getPath(Encoding::Iri), U"a%3Ab");
    parts.setSchemePresent(true);
    EXPECT_EQ(parts.getPath(Encoding::Iri), U"a:b");
    parts.setSchemePresent(false);
    EXPECT_EQ(parts.getPath(Encoding::Uri), U"a%3Ab");
    parts.setUserInfo(U"u", Encoding::Raw);
    EXPECT_EQ(parts.getPath(Encoding::Uri), U"a:b");
    parts.setPath(U"c:d", Encoding::Raw); // the new path knows what stands before it, but not the scheme
    EXPECT_EQ(parts.getPath(Encoding::Iri), U"c:d");
}

TEST(StringParts, AStoredTextCarriesItsEncoding) {
    for (Encoding const source : {Encoding::Raw, Encoding::Iri, Encoding::Uri}) {
        StringParts parts;
        parts.setHost(U"a b", source);
        (void)parts.getHost(Encoding::Uri);
        auto const& [text, encoding] = parts.storedHost();
        EXPECT_EQ(&text, &parts.getHost(source));
        EXPECT_EQ(encoding, source);
    }
}

TEST(StringParts, ComparesInTheLeftOnesForm) {
    StringParts raw, iri, lower, upper;
    raw.setPath(U"/b c", Encoding::Raw);
    iri.setPath(U"/b%20c", Encoding::Iri);
    EXPECT_TRUE(raw == iri && iri == raw);
    lower.setPath(U"/%c3%a9", Encoding::Iri);
    upper.setPath(U"/\u00E9", Encoding::Raw);
    EXPECT_TRUE(upper == lower); // both read /é
    EXPECT_TRUE(lower != upper); // one is written /%c3%a9, the other /é
    iri.setFragment(U"", Encoding::Iri);
    EXPECT_TRUE(raw != iri);
}

TEST(StringParts, AFailedFormLeavesTheOthers) {
    StringParts parts;
    parts.setPath(U"/%C0%AF", Encoding::Iri);
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW((void)parts.getPath(Encoding::Raw), std::out_of_range);
        EXPECT_EQ(parts.getPath(Encoding::Uri), U"/%C0%AF");
    }
}

} // namespace
