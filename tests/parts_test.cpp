#include <foundation/network/iri/detail/StringParts.hpp>

#include "support/Generator.hpp"
#include "support/StoredParts.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using namespace support;
using Text = std::u32string;
constexpr auto Raw = Encoding::Raw, Iri = Encoding::Iri, Uri = Encoding::Uri;

TEST(Conversions, EscapeWhatAPartMayNotHold) {
    // C1 controls, marks of direction, surrogates, what is no character; private ranges of RFC 3987, and a
    // fourth.
    constexpr int forbidden = 32 + 2 + 5 + 2048 + 32 + 16 + 16 * 2;
    constexpr int withPrivate = forbidden + 6400 + 4096 + 2 * 65534;
    // clang-format off
    struct Row { Text ascii; int escapedBeyond; int runs; };
    Row const rows[] = { // user information, host, path, query, fragment, form-encoded query
        {U"%20!%22%23$%&'()*+,-.%2Fa:%3B%3C%3D%3E%3F%40%5B%5C%5D%5E_%60%7B%7C%7D~%7F%1F", withPrivate, 20},
        {U"%20!%22%23$%25&'()*+,-.%2Fa%3A;%3C=%3E%3F%40%5B%5C%5D%5E_%60%7B%7C%7D~%7F%1F", withPrivate, 20},
        {U"%20!%22%23$%&'()*+,-./a:;%3C=%3E%3F@%5B%5C%5D%5E_%60%7B%7C%7D~%7F%1F", withPrivate, 20},
        {U"%20!%22%23$%&'()*+,-./a:;%3C=%3E?@[%5C]%5E_%60%7B%7C%7D~%7F%1F", forbidden, 22},
        {U"%20!%22#$%&'()*+,-./a:;%3C=%3E?@[%5C]%5E_%60%7B%7C%7D~%7F%1F", withPrivate, 20},
        {U"+!%22%23$%&'()*+,-./a:;%3C=%3E?@%5B%5C%5D%5E_%60%7B%7C%7D~%7F%1F", forbidden, 22},
    };
    // clang-format on
    Text const ascii = U" !\"#$%&'()*+,-./a:;<=>?@[\\]^_`{|}~\x7F\x1F";
    for (std::size_t part = userInfo; part <= formEncoded; ++part) {
        auto const escaped = [part](char32_t c) {
            return c >= 0x80 && converted(part, Raw, Iri, Text(1, c)) != Text(1, c);
        };
        EXPECT_EQ(converted(part, Raw, Iri, ascii), rows[part].ascii);
        EXPECT_EQ(countRuns(escaped), std::pair(rows[part].escapedBeyond, rows[part].runs)) << part;
    }
}

TEST(Conversions, GoThereAndBackForEveryCodePoint) {
    for (std::size_t part = userInfo; part <= fragment; ++part) {
        for (char32_t first = 0x80; first < 0x110000; first += 0x80) {
            Text text(0x80, first);
            std::iota(text.begin(), text.end(), first);
            std::erase_if(text, [](char32_t c) { return c >= 0xD800 && c <= 0xDFFF; });
            Text const iri = converted(part, Raw, Iri, text);
            Text const uri = converted(part, Iri, Uri, iri);
            EXPECT_TRUE(std::all_of(uri.begin(), uri.end(), [](char32_t c) { return c > 32 && c < 127; }));
            EXPECT_EQ(converted(part, Raw, Uri, text), uri);
            EXPECT_EQ(converted(part, Iri, Raw, iri), text);
            EXPECT_EQ(converted(part, Uri, Raw, uri), text);
            EXPECT_EQ(converted(part, Uri, Iri, uri), iri);
        }
        for (char32_t c = 0; c < 0x80; ++c) {
            char32_t const escape[] = {U'%', U"01234567"[c / 16], U"0123456789ABCDEF"[c % 16], 0};
            Text const iri = c == U'%' ? U"%25" : converted(part, Raw, Iri, Text(1, c));
            EXPECT_EQ(converted(part, Uri, Iri, escape), iri);
            EXPECT_EQ(converted(part, Iri, Uri, Text(1, c)), c > 32 && c < 127 ? Text(1, c) : escape);
            EXPECT_EQ(converted(part, Iri, Raw, iri), Text(1, c));
        }
        Text const longText(10000, 0xE9);
        EXPECT_EQ(converted(part, Uri, Raw, converted(part, Raw, Uri, longText)), longText);
    }
}

TEST(Conversions, LookAtCharactersAndEscapesAlone) {
    Generator generator(4);
    for (int round = 0; round < 10000; ++round) {
        conversionsHold(generator.pieces(6), generator.below(40));
    }
}

TEST(Conversions, GiveWhatIsDocumented) {
    Text const noUtf8 = refusal("Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
    // clang-format off
    struct Row { StoredPart part; Encoding from, to; Text text; Text result; };
    Row const rows[] = {
        {path, Uri, Iri, U"%41%2F%20", U"A/%20"}, {path, Uri, Iri, U"%ff", U"%FF"},
        {path, Uri, Iri, U"%2f%3f", U"/%3f"}, {path, Uri, Iri, U"%25%3a", U"%25%3A"},
        {path, Uri, Iri, U"a:b", U"a%3Ab"}, {path, Uri, Iri, U"%C0%AF", noUtf8},
        {path, Raw, Iri, U"%41%00", U"%2541%2500"}, {path, Raw, Iri, U"100%", U"100%"}, {host, Raw, Iri, U"%", U"%25"},
        {path, Raw, Iri, U"a:b/c:d", U"a%3Ab/c:d"}, {path, Raw, Iri, U"/a:b", U"/a:b"},
        {host, Raw, Iri, U"a%41", U"a%252541"}, {path, Raw, Iri, Text(1, 0xDFFF), U"%ED%BF%BF"},
        {formEncoded, Raw, Iri, U"a b&c=d%20e", U"a+b&c=d%20e"}, {formEncoded, Iri, Raw, U"a+b%20c", U"a+b%20c"},
        {formEncoded, Uri, Iri, U"%41", U"%41"}, {formEncoded, Iri, Raw, U"\u00E9", U"%C3%A9"},
        {query, Raw, Uri, Text(1, 0x110000),
         refusal("Invalid UTF-32 code point U+0x110000 encountered while trying to encode UTF-16 sequence")},
    };
    std::pair<Text, Text> const decoded[] = { // paths, from Iri to Raw
        {U"%FF", U"\u00FF"}, {U"%25%34%31%FF", U"A\u00FF"}, {U"%25%34%31", U"%41"}, // decoded again
        {U"%4g%G4%4", U"%4g%G4%4"}, {U"%%41", U"%A"}, {U"%\uFF14\uFF11", U"%\uFF14\uFF11"},
        {U"%FE%FF", U"\u00FE\u00FF"}, {U"%E4%B8", U"\u00E4\u00B8"}, {U"%E4%B8%41", U"\u00E4\u00B8A"}, // cut short
        {U"%80", U"\u0080"}, {U"%C3%A9%80", U"\u00E9\u0080"}, {U"%F8%88%80", U"\u00F8\u0088\u0080"}, // too long
        {U"%C0%AF", noUtf8}, {U"%E0%9F%BF", noUtf8}, {U"%F0%8F%BF%BF", noUtf8}, // overlong
        {U"%ED%A0%80", noUtf8}, {U"%F4%90%80%80", noUtf8}, {Text(1, 0xD800), noUtf8}, // surrogates, too large
        {U"%F8%88%80%80%80", noUtf8}, {U"%FC%84%80%80%80%80", noUtf8}, {U"%F8%88%80%80", noUtf8}, // five, six
    };
    // clang-format on
    for (auto const& row : rows) {
        EXPECT_EQ(converted(row.part, row.from, row.to, row.text), row.result) << show(row.text);
    }
    for (auto const& [text, result] : decoded) {
        EXPECT_EQ(converted(path, Iri, Raw, text), result) << show(text);
    }
    EXPECT_EQ(std::size(rows) + std::size(decoded), 39u);
}

TEST(StringParts, EmptyMeansNothingButAnEmptyPath) {
    StringParts parts;
    parts.setPath(U"", Iri);
    EXPECT_TRUE(parts.isEmpty() && parts == StringParts());
    parts.setQuery(U"", Iri, false);
    EXPECT_TRUE(!parts.isEmpty() && parts != StringParts());
    parts.reset();
    EXPECT_TRUE(parts.isEmpty());
    for (auto const stored :
         {&StringParts::storedUserInfo, &StringParts::storedHost, &StringParts::storedPath,
          &StringParts::storedQuery, &StringParts::storedFragment}) {
        EXPECT_EQ(outcome([&] { return (parts.*stored)().first; }), refusal("Item not set"));
    }
    parts.setPath(U"/", Raw);
    EXPECT_FALSE(parts.isEmpty());
}

TEST(StringParts, FormsThatAreAlikeAreOneText) {
    for (Encoding const source : {Raw, Iri, Uri}) {
        StringParts parts;
        parts.setPath(U"/plain", source);
        StringParts const copy(parts);
        for (Encoding const form : encodings) {
            EXPECT_EQ(&parts.getPath(form), &parts.getPath(source));
        }
        EXPECT_EQ(&parts.storedPath().first, &parts.getPath(source));
        EXPECT_EQ(parts.storedPath().second, source);
        parts.reset();
        EXPECT_EQ(copy.getPath(Raw), U"/plain"); // a copy points at nothing of its source's
    }
    StringParts parts;
    parts.setPath(U"/\u00E9", Uri); // the Iri form is another text, which the Raw form shares
    parts.setPath(U"/%C3%A9", Uri);
    EXPECT_EQ(&parts.getPath(Raw), &parts.getPath(Iri));
    EXPECT_NE(&parts.getPath(Uri), &parts.getPath(Iri));
}

TEST(StringParts, AChangedContextFormsTheOtherFormsAnew) {
    StringParts parts;
    parts.setPath(U"a:b c", Raw);
    EXPECT_EQ(parts.getPath(Iri), U"a%3Ab%20c");
    parts.setSchemePresent(true);
    EXPECT_EQ(parts.getPath(Iri), U"a:b%20c");
    StringParts other(parts);
    EXPECT_EQ(other.getPath(Uri), U"a:b%20c");
    other.setPath(U"c:d", Raw); // the new path knows what stands before it, but not the scheme
    EXPECT_EQ(other.getPath(Iri), U"c%3Ad");
    StringParts const moved(std::move(other));
    EXPECT_TRUE(other.isEmpty() && !moved.isEmpty()); // NOLINT(bugprone-use-after-move): what is asked
    parts.setSchemePresent(false);
    EXPECT_EQ(parts.getPath(Uri), U"a%3Ab%20c");
    StringParts behindHost(parts);
    behindHost.setHost(U"h", Raw);
    EXPECT_EQ(behindHost.getPath(Uri), U"a:b%20c");
    parts.setUserInfo(U"u", Raw);
    EXPECT_EQ(parts.getPath(Uri), U"a:b%20c");
}

TEST(StringParts, ComparesInTheLeftOnesForm) {
    StringParts raw, iri, lower, upper;
    raw.setPath(U"/b c", Raw);
    iri.setPath(U"/b%20c", Iri);
    EXPECT_TRUE(raw == iri && iri == raw);
    lower.setPath(U"/%c3%a9", Iri);
    upper.setPath(U"/\u00E9", Raw);
    EXPECT_TRUE(upper == lower); // both read /é
    EXPECT_TRUE(lower != upper); // one is written /%c3%a9, the other /é
    iri.setFragment(U"", Iri);
    EXPECT_TRUE(raw != iri);
}

TEST(StringParts, AFailedFormLeavesTheOthers) {
    StringParts parts;
    parts.setPath(U"/%C0%AF", Iri);
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW((void)parts.getPath(Raw), std::out_of_range);
        EXPECT_EQ(parts.getPath(Uri), U"/%C0%AF");
    }
}

} // namespace
