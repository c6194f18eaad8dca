#include "support/Faults.hpp"
#include "support/Generator.hpp"

#include <gtest/gtest.h>

#include <iomanip>
#include <iterator>
#include <sstream>
#include <unordered_set>

namespace {

using namespace foundation::network;
using support::thrown;
using Text = std::u16string;

TEST(ParseResult, AcceptsWhatTheConstructorAccepts) {
    constexpr int rounds = 60000;
    support::Generator generator(15);
    int accepted = 0;
    for (int round = 0; round != rounds; ++round) {
        std::u32string const text = round % 3 == 0 ? generator.reference() : generator.mutated();
        accepted += support::toUtf16(text) && support::faultHolds(text);
    }
    EXPECT_GT(accepted, rounds / 5);
    EXPECT_LT(accepted, rounds * 4 / 5);
}

TEST(ParseResult, TellsWhereAndWhy) {
    using C = IRIComponent;
    using R = ParseReason;
    // clang-format off
    struct Row { Text text; ParseFault fault; std::string sentence; std::size_t offsetInUtf8; }; // fault: in UTF-16
    Row const rows[] = {
        {u"http://a b/", {8, C::Host, R::NotInHost, U' '}, "U+0020 cannot stand in a host", 8},
        {u":x", {0, C::Scheme, R::EmptyScheme, U':'}, "U+003A stands where a scheme should", 0},
        {u"1http:x", {0, C::Scheme, R::NotInScheme, U'1'}, "U+0031 cannot begin a scheme", 0},
        {u"h~t:x", {1, C::Scheme, R::NotInScheme, U'~'}, "U+007E cannot stand in a scheme", 1},
        {u"//\u00E9[@h", {3, C::UserInfo, R::NotInUserInfo, U'['}, "U+005B cannot stand in user information", 4},
        {u"//\U0001F600%4@h", {4, C::UserInfo, R::EscapeNotWhole, U'%'}, "U+0025 begins no whole escape", 6},
        {u"//h%zz", {3, C::Host, R::EscapeNotWhole, U'%'}, "U+0025 begins no whole escape", 3},
        {u"//[::1", {2, C::Host, R::NotAnAddress, U'['}, "U+005B begins no address in brackets", 2},
        {u"//u@[::g]:1", {4, C::Host, R::NotAnAddress, U'['}, "U+005B begins no address in brackets", 4},
        {u"//[::1]x:1", {7, C::Host, R::NotInHost, U'x'}, "U+0078 cannot stand in a host", 7},
        {u"//a:b:1", {3, C::Host, R::NotInHost, U':'}, "U+003A cannot stand in a host", 3},
        {u"//h:/p", {4, C::Port, R::EmptyPort, U'/'}, "U+002F stands where a port should", 4},
        {u"//h:", {4, C::Port, R::EmptyPort, U'\0'}, "The end stands where a port should", 4},
        {u"//h:8a", {4, C::Port, R::NotInPort, U'8'}, "U+0038 begins a port that is no number", 4},
        {u"//h:065536/ ", {4, C::Port, R::PortTooLarge, U'0'}, "U+0030 begins a port above 65535", 4},
        {u"x:/\u00E9\U0001F600^", {6, C::Path, R::NotInPath, U'^'}, "U+005E cannot stand in a path", 9},
        {u"/?<#>", {2, C::Query, R::NotInQuery, U'<'}, "U+003C cannot stand in a query", 2},
        {u"/?#a#", {4, C::Fragment, R::NotInFragment, U'#'}, "U+0023 cannot stand in a fragment", 4},
        {u"/a\U000FFFFFb", {2, C::Path, R::NotInPath, 0xFFFFF}, "U+FFFFF cannot stand in a path", 2},
    };
    // clang-format on
    std::unordered_set<ParseFault> faults;
    for (auto const& [text, fault, sentence, offsetInUtf8] : rows) {
        ParseResult const result = tryParse(text);
        ASSERT_FALSE(result.has_value()) << support::show(text);
        EXPECT_EQ(result.error(), fault) << result.error();
        EXPECT_EQ(result.error().describe(), sentence + ", at offset " + std::to_string(fault.offset));
        EXPECT_EQ(tryParse(toUtf8(text)).error().offset, offsetInUtf8) << sentence;
        EXPECT_EQ(thrown<std::logic_error>([&] { (void)result.value(); }), "IRI parsing failed");
        faults.insert(fault);
    }
    EXPECT_EQ(faults.size(), std::size(rows));
    std::ostringstream stream;
    stream << std::setw(45) << std::setfill('.') << tryParse(u"//h:").error();
    EXPECT_EQ(stream.str(), "The end stands where a port should, at offset 4");
}

// What is no text is told before all else, at the first unit of the first faulty sequence; the exception is
// that of the constructor.
TEST(ParseResult, RefusesWhatIsNoText) {
    // clang-format off
    struct Row { Text text; std::size_t offset; char32_t unit; std::string named; }; // named: in the exception
    Row const rows[] = {
        {Text{u' ', 0xDC00}, 1, 0xDC00, "0xdc00"}, {Text{u'a', 0xD800, u'b', 0xD800}, 1, 0xD800, "0x62"},
        {Text{u'a', 0xDBFF}, 1, 0xDBFF, "0"}, {Text{0xD83D, 0xD83D}, 0, 0xD83D, "0xd83d"},
        {Text(40, u'a') + Text{0xD83D, 0xDE00, 0xDE00}, 42, 0xDE00, "0xde00"},
    };
    // One row for each way to be ill-formed (Unicode, table 3-7).
    std::string const bytes[] = {
        "\x80", "\xC1\xBF", "\xC3", "\xE0\x9F\x80", "\xE2\x82", "\xED\xA0\x80", "\xF0\x8F\x80\x80",
        "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"};
    // clang-format on
    for (auto const& [text, offset, unit, named] : rows) {
        ParseResult const result = tryParse(text);
        EXPECT_EQ(result.error(), (ParseFault{offset, IRIComponent::Text, ParseReason::NotUtf16, unit}));
        std::string const words =
            "Misplaced UTF-16 surrogate U+" + named + " encountered while trying to encode UTF-32 sequence";
        EXPECT_EQ(thrown<std::out_of_range>([&] { (void)result.value(); }), words);
        EXPECT_EQ(thrown<std::out_of_range>([&] { IRI iri(text); }), words);
        EXPECT_EQ(thrown<std::out_of_range>([&] { (void)toUtf8(text); }), words);
    }
    EXPECT_EQ(tryParse(rows[0].text).error().describe(),
              "U+DC00 is half of a surrogate pair alone, at offset 1");
    std::string const invalid = "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";
    for (std::string const& ill : bytes) {
        for (std::string const& before : {std::string(), std::string("<\xC3\xA9"), std::string(50, 'a')}) {
            for (char const* const after : {"", "a", "\xC3\xA9"}) {
                std::string const text = before + ill + after;
                ParseResult const result = tryParse(text);
                auto const first = static_cast<unsigned char>(ill[0]);
                EXPECT_EQ(result.error(),
                          (ParseFault{before.size(), IRIComponent::Text, ParseReason::NotUtf8, first}));
                EXPECT_EQ(thrown<std::out_of_range>([&] { (void)result.value(); }), invalid);
                EXPECT_EQ(thrown<std::out_of_range>([&] { (void)iriFromUtf8(text); }), invalid);
                EXPECT_EQ(thrown<std::out_of_range>([&] { (void)fromUtf8(text); }), invalid);
            }
        }
    }
    EXPECT_EQ(tryParse("a\xFF").error().describe(),
              "Byte 0xFF begins no well-formed UTF-8 sequence, at offset 1");
}

// All texts of up to five characters, one from each class. A fault lies inside its text or at its end, and
// some character put there moves it on, or mends the text.
TEST(ParseResult, PutsTheFaultWhereAChangeMendsIt) {
    constexpr std::u32string_view alphabet = U"a1:/?#[]@%. \u00E9\uE000";
    std::size_t refused = 0;
    std::size_t const texts = support::eachText(alphabet, 5, [&](std::u32string const& text) {
        if (support::faultHolds(text)) {
            return;
        }
        ++refused;
        std::size_t const at = tryParse(*support::toUtf16(text)).error().offset;
        ASSERT_LE(at, text.size());
        ASSERT_TRUE(std::any_of(alphabet.begin(), alphabet.end(), [&](char32_t c) {
            std::u32string changed = text;
            changed.replace(at, 1, 1, c);
            ParseResult const after = tryParse(*support::toUtf16(changed));
            return after || after.error().offset > at;
        })) << support::show(text);
    });
    EXPECT_EQ(texts, 1u + 14 + 196 + 2744 + 38416 + 537824);
    EXPECT_GT(refused, texts / 2);
}

TEST(ParseResult, IsLikeExpected) {
    ParseResult good = tryParse(u"http://h/a-path-that-has-its-own-memory");
    ParseResult const bad = tryParse("\xFF");
    IRI const iri(u"http://h/a-path-that-has-its-own-memory");
    EXPECT_TRUE(good && good.has_value() && !bad && !bad.has_value());
    EXPECT_EQ(*good, iri);
    EXPECT_EQ(good->getHost(Encoding::Iri), u"h");
    EXPECT_EQ(std::as_const(good).value(), iri);
    EXPECT_EQ(good.value_or(IRI()), iri);
    EXPECT_EQ(bad.value_or(iri), iri);
    EXPECT_TRUE(good == tryParse(u"http://h/a-path-that-has-its-own-memory") && good != bad);
    EXPECT_TRUE(bad == tryParse("\xFF") && bad != tryParse("a\xFF") && bad != tryParse(u"<"));
    ParseResult copy = good;
    EXPECT_EQ(std::move(copy).value(), iri);
    EXPECT_EQ(*std::move(good), iri);
    copy = bad;
    EXPECT_EQ(copy, bad);
    EXPECT_EQ(tryParse(u8"x:\u00E9").value(), IRI(u"x:\u00E9"));
    EXPECT_EQ(ParseResult(bad).error(), std::move(copy).error());
}

// The same questions in UTF-8 have the same answers and refusals.
TEST(Utf8, GettersGiveWhatThoseInUtf16Give) {
    constexpr std::pair<Text (IRI::*)(Encoding const&) const, std::string (Utf8View::*)(Encoding) const>
        getters[] = {{&IRI::getUserInfo, &Utf8View::getUserInfo},
                     {&IRI::getHost, &Utf8View::getHost},
                     {&IRI::getPath, &Utf8View::getPath},
                     {&IRI::getQuery, &Utf8View::getQuery},
                     {&IRI::getFragment, &Utf8View::getFragment},
                     {&IRI::getAuthority, &Utf8View::getAuthority},
                     {&IRI::getSchemeSpecificPart, &Utf8View::getSchemeSpecificPart}};
    constexpr int rounds = 20000;
    support::Generator generator(16);
    int texts = 0;
    for (int round = 0; round != rounds; ++round) {
        auto const parsed = support::parsed(support::toUtf16(generator.reference()));
        if (!parsed) {
            continue;
        }
        IRI iri = *parsed;
        if (round % 3 == 0) { // one whose components are in several forms
            try {
                iri = iri.resolveAgainst(IRI(u"x://\u00FC/\U0001F600%FF/?%FF"));
            } catch (std::out_of_range const&) { // its path does not decode
            }
        }
        Utf8View const view = utf8(iri);
        auto const same = [&](auto inUtf16, auto inUtf8) {
            ASSERT_EQ(support::said([&] { return toUtf8(inUtf16()); }), support::said(inUtf8))
                << support::show(iri.toString(false));
            ++texts;
        };
        for (Encoding const e : support::encodings) {
            for (auto const& [inUtf16, inUtf8] : getters) {
                same([&] { return (iri.*inUtf16)(e); }, [&] { return (view.*inUtf8)(e); });
            }
        }
        same([&] { return iri.getScheme(); }, [&] { return view.getScheme(); });
        same([&] { return iri.getPort(); }, [&] { return view.getPort(); });
        for (bool const strict : {false, true}) {
            same([&] { return iri.toString(strict); }, [&] { return view.toString(strict); });
            same([&] { return iri.toAsciiString(strict); }, [&] { return view.toAsciiString(strict); });
        }
        std::ostringstream stream;
        stream << view;
        ASSERT_EQ(stream.str(), view.toString(false));
    }
    EXPECT_GT(texts, rounds * 41 / 3);
    EXPECT_EQ(fromUtf8("\xC3\xBC\xF0\x9F\x98\x80"), u"\u00FC\U0001F600");
    EXPECT_EQ(fromUtf8(u8"\u00FC"), u"\u00FC");
    EXPECT_EQ(iriFromUtf8(u8"x:\u00FC"), IRI(u"x:\u00FC"));
    EXPECT_EQ(
        toUtf8(std::u16string_view(u"\0\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF", 10)),
        std::string("\0\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", 20));
}

} // namespace
