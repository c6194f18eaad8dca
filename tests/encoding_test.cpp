#include "iri/encoding/PercentEncoding.hpp"
#include "iri/encoding/Transcoding.hpp"

#include "iri/RelativePath.hpp"
#include "iri/grammar/PercentDecoder.hpp"
#include "support/Generator.hpp"
#include "support/Iris.hpp"
#include "support/PlainConversions.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <gtest/gtest.h>

namespace {

namespace encoding = foundation::network::iri::encoding;
using foundation::network::iri::grammar::percentDecodeGrammar;
using support::show;
using Text = std::u32string;

// The words of a refusal.
std::string words(auto operation) {
    return support::thrown<std::out_of_range>(operation);
}

TEST(Transcoding, EveryCodePointGoesThereAndBack) {
    Text all;
    std::string utf8;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c < 0xD800 || c > 0xDFFF) {
            all += c;
            encoding::encodeUtf8(c, [&](unsigned char byte) { utf8 += static_cast<char>(byte); });
        }
    }
    EXPECT_TRUE(encoding::toUtf32(encoding::toUtf16(all)) == all);
    EXPECT_TRUE(encoding::fromUtf8(utf8) == all);
    EXPECT_EQ(encoding::toUtf16(U"\U0001F600"), u"\xD83D\xDE00");
    EXPECT_EQ(encoding::toUtf16({}), u"");
    EXPECT_EQ(encoding::toUtf32({}), U"");
    EXPECT_EQ(encoding::fromUtf8({}), U"");
}

TEST(Transcoding, NamesTheValueThatItCannotTake) {
    auto const invalid = [](std::string const& value) {
        return "Invalid UTF-32 code point U+" + value + " encountered while trying to encode UTF-16 sequence";
    };
    for (std::size_t length = 0; length != 40; ++length) {
        EXPECT_EQ(words([&] { (void)encoding::toUtf16(Text(length, U'a') + Text(1, 0x110000)); }),
                  invalid("0x110000"));
        EXPECT_EQ(words([&] { (void)encoding::toUtf16(Text(1, 0xD800) + Text(length, U'a')); }),
                  invalid("0xd800"));
    }
    EXPECT_EQ(words([] { (void)encoding::toUtf16(Text(1, 0xDFFF)); }), invalid("0xdfff"));
    EXPECT_EQ(words([] { (void)encoding::toUriForm(Text(1, 0xFFFFFFFF)); }), invalid("0xffffffff"));
}

TEST(Transcoding, RefusesWhatIsNoUtf8) {
    for (std::string const bad :
         {"\x80", "\xC3", "\xC3(", "\xE4\xB8", "\xF0\x9F\x98", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF",
          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
          "\xF8\x88\x80\x80\x80", "\xFC\x84\x80\x80\x80\x80", "\xFE", "\xFF"}) {
        for (std::string const before : {"", "a\xC3\xA9"}) {
            EXPECT_EQ(words([&] { (void)encoding::fromUtf8(before + bad); }),
                      "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
        }
    }
}

TEST(PercentSteps, StrayPercentIsEscapedOnce) {
    // clang-format off
    struct Row { Text text; bool brackets; Text escaped; };
    Row const rows[] = {
        {U"", true, U""}, {U"%", true, U"%25"}, {U"a%", true, U"a%25"}, {U"a%2", true, U"a%252"},
        {U"%2f", true, U"%2f"}, {U"%zz", false, U"%25zz"}, {U"%%41", true, U"%25%41"},
        {U"a[b]", true, U"a%5Bb%5D"}, {U"[::1]", false, U"[::1]"}, {U"%2", false, U"%252"},
        {U"%4g%G4", true, U"%254g%25G4"},
    };
    // clang-format on
    for (auto const& row : rows) {
        EXPECT_EQ(encoding::escapeStrayPercent(row.text, row.brackets), row.escaped) << show(row.text);
    }
    support::Generator generator(6);
    for (int round = 0; round < 20000; ++round) {
        Text const once = encoding::escapeStrayPercent(generator.pieces(4), round % 2 == 0);
        ASSERT_EQ(encoding::escapeStrayPercent(once, round % 2 == 0), once);
    }
}

TEST(PercentDecoder, KeepsWhatIsExcludedLetterByLetter) {
    percentDecodeGrammar const some(U"%/");
    percentDecodeGrammar const all(U"");
    // clang-format off
    struct Row { percentDecodeGrammar const& decoder; Text text; Text decoded; };
    Row const rows[] = {
        {some, U"a%2Fb", U"a%2Fb"}, {some, U"a%2fb", U"a%2fb"}, {some, U"a%41b", U"aAb"},
        {some, U"%25", U"%25"}, {some, U"%4", U"%4"}, {some, U"%", U"%"}, {some, U"%zz", U"%zz"},
        {all, U"%C3%A9", U"\u00C3\u00A9"}, {all, U"%\uFF14\uFF11", U"%\uFF14\uFF11"}, {all, U"%%41", U"%A"},
    };
    // clang-format on
    for (auto const& row : rows) {
        Text decoded;
        EXPECT_TRUE(row.decoder.decode(row.text, decoded));
        EXPECT_EQ(decoded, row.decoded) << show(row.text);
    }
    Text untouched = U"as it was";
    EXPECT_FALSE(all.decode(U"", untouched));
    EXPECT_EQ(untouched, U"as it was");
}

TEST(RelativePath, KnowsDotSegments) {
    using foundation::network::iri::hasRelativePathSegments;
    for (Text const path : {U"/a/./b", U"/a/../b", U"../a", U"./a", U"/a/.", U"/a/..", U"/a/./", U".", U"..",
                            U"//.", U"...a/.."}) {
        EXPECT_TRUE(hasRelativePathSegments(path)) << show(path);
    }
    for (Text const path : {U"", U"/", U"/a.b", U"/.a/b", U"/a/.b", U"/a/..b", U"...", U"/a./b..", U".../a",
                            U"a/...", U"/..a"}) {
        EXPECT_FALSE(hasRelativePathSegments(path)) << show(path);
    }
}

TEST(Port, IsReadWhole) {
    using foundation::network::iri::detail::portStringToNumeric;
    // clang-format off
    struct Row { Text text; int number; }; // -1: refused
    Row const rows[] = {
        {U"0", 0}, {U"80", 80}, {U"00080", 80}, {U"65535", 65535}, {U"0000000000000000080", 80},
        {U"65536", -1}, {U"", -1}, {U"-1", -1}, {U"1 ", -1}, {U"+80", -1}, {U"80a", -1},
        {U"\u0668\u0660", -1}, {U"00", 0}, {U"99999999999", -1}, {Text{0xFFFFFF38}, -1},
    };
    // clang-format on
    for (auto const& row : rows) {
        unsigned short value = 7;
        EXPECT_EQ(portStringToNumeric(row.text, value), row.number >= 0) << show(row.text);
        EXPECT_EQ(value, row.number >= 0 ? row.number : 7) << show(row.text);
    }
}

TEST(Parts, AbsentRangesAreClosedWhereTheyWouldStand) {
    Text const text = U"uhpq";
    using Iterator = Text::const_iterator;
    auto const at = [&](int first, int last) {
        return boost::iterator_range<Iterator>(text.begin() + first, text.begin() + last);
    };
    foundation::network::iri::detail::Parts<Iterator> parts;
    parts.host = at(1, 2);
    parts.path = at(2, 3);
    parts.update();
    EXPECT_EQ(parts.userInfo->begin(), text.begin() + 1);
    EXPECT_EQ(parts.port->begin(), text.begin() + 2);
    EXPECT_EQ(parts.query->begin(), text.begin() + 3);
    EXPECT_EQ(parts.fragment->begin(), text.begin() + 3);
    EXPECT_FALSE(parts.scheme);
    foundation::network::iri::detail::HierarchicalPart<Iterator> relative;
    relative.path = at(2, 3);
    relative.update();
    EXPECT_EQ(relative.userInfo->begin(), text.begin() + 2);
    EXPECT_EQ(relative.host->begin(), text.begin() + 2);
    EXPECT_EQ(relative.port->begin(), text.begin() + 2);
}

} // namespace
