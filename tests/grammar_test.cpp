#include "iri/grammar/CharacterClasses.hpp"
#include "support/Generator.hpp"
#include "support/ReferenceMatcher.hpp"

#include <gtest/gtest.h>

namespace {

namespace grammar = foundation::network::iri::grammar;
using grammar::is;
using Parts = foundation::network::iri::detail::Parts<std::u32string::const_iterator>;
using support::IRI;

TEST(CharacterClasses, HaveTheMembersOfTheTablesOfUnicode) {
    // Letters and digits grow from one Boost to the next: they are those of the one that is built with.
    using Unicode = boost::spirit::char_encoding::unicode;
    int letters = 0;
    for (char32_t c = 0x80; c < 0x110000; ++c) {
        ASSERT_EQ(is<grammar::ALPHA>(c), Unicode::isalpha(c) != 0) << std::hex << unsigned(c);
        ASSERT_EQ(is<grammar::DIGIT>(c), Unicode::isdigit(c) != 0) << std::hex << unsigned(c);
        letters += is<grammar::ALPHA>(c);
    }
    EXPECT_GE(letters, 100000);
    EXPECT_EQ(support::countRuns(is<grammar::XDIGIT>), std::pair(44, 6));
    EXPECT_EQ(support::countRuns(is<grammar::UCSCHAR>), std::pair(970260, 17));
    EXPECT_EQ(support::countRuns(is<grammar::IPRIVATE>), std::pair(6400 + 4096 + 65534 + 65534, 4));
    EXPECT_FALSE(is<0xFFFF>(0x110000) || is<0xFFFF>(0xFFFFFF3A));
}

TEST(IriGrammar, AgreesWithThePlainMatcher) {
    auto const holds = [](std::u32string const& text) {
        auto const utf16 = support::toUtf16(text);
        return utf16 && support::parsingHolds(*utf16, text);
    };
    for (char32_t c = 0; c < 0x10000; c += c < 0x800 ? 1 : 0xF3) {
        for (std::u32string const before : {U"", U"x", U"x:", U"//h", U"//%4", U"/", U"?", U"#"}) {
            holds(before + c);
        }
        holds(U"//[v1." + std::u32string(1, c) + U"]");
        holds(U"//u" + std::u32string(1, c) + U"@");
    }
    constexpr int rounds = 200000;
    support::Generator generator(1);
    int accepted = 0;
    for (int round = 0; round < rounds; ++round) {
        accepted += holds(round % 2 == 0 ? generator.reference() : generator.mutated());
    }
    EXPECT_GT(accepted, rounds / 4) << "the generator makes too few valid texts to show anything";
    EXPECT_LT(accepted, rounds * 3 / 4) << "the generator makes too few faults to show anything";
}

TEST(IriGrammar, TakesShortTextsAsThePlainMatcherDoes) {
    int taken = 0;
    auto const texts =
        support::eachText(U"a1:/?#[]@%.\\ \u00E9\uE000", 4, [&taken](std::u32string const& text) {
            taken += support::parsingHolds({text.begin(), text.end()}, text);
        });
    EXPECT_EQ(texts, 1u + 15 + 15 * 15 + 15 * 15 * 15 + 15 * 15 * 15 * 15);
    EXPECT_GT(taken, 9000);
}

TEST(IriGrammar, LongTextsTakeNoStack) { // of which there are eight megabytes, two bytes a character
    std::u16string const run(4 << 20, u'a');
    std::u16string segments;
    for (int i = 0; i < 1 << 20; ++i) {
        segments += u"/%41.";
    }
    for (auto const& text : {run, segments, u"//" + run, u"x:" + run, u"?" + run, u"#" + segments}) {
        EXPECT_FALSE(IRI(text).isEmpty());
        EXPECT_THROW(IRI(text + u' '), std::logic_error);
    }
}

TEST(Parts, AbsentRangesAreClosedWhereTheyWouldStand) {
    std::u32string const text = U"uhpq";
    auto const range = [&](int first, int last) {
        return Parts::Range(text.begin() + first, text.begin() + last);
    };
    Parts parts;
    parts.host = range(1, 2);
    parts.path = range(2, 3);
    parts.update();
    EXPECT_TRUE(parts.userInfo->equal(range(1, 1)) && parts.port->equal(range(2, 2)) && !parts.scheme);
    EXPECT_TRUE(parts.query->equal(range(3, 3)) && parts.fragment->equal(range(3, 3)));
    foundation::network::iri::detail::HierarchicalPart<std::u32string::const_iterator> relative;
    relative.path = range(2, 3);
    relative.update();
    for (auto const& part : {relative.userInfo, relative.host, relative.port}) {
        EXPECT_TRUE(part->equal(range(2, 2)));
    }
}

} // namespace
