#include "iri/grammar/IriGrammar.hpp"

#include "iri/grammar/CharacterClasses.hpp"
#include "support/Generator.hpp"
#include "support/ReferenceMatcher.hpp"
#include "support/Show.hpp"

#include <foundation/network/IRI.hpp>

#include <gtest/gtest.h>

#include <pthread.h>

#include <functional>
#include <optional>

namespace {

namespace grammar = foundation::network::iri::grammar;
using grammar::is;
using Parts = foundation::network::iri::detail::Parts<std::u32string::const_iterator>;
using support::ReferenceMatcher;

// How many code points a test takes, and in how many runs.
template <class Test>
std::pair<int, int> countRuns(Test test) {
    int count = 0;
    int runs = 0;
    bool before = false;
    for (char32_t c = 0; c <= 0x110100; ++c) {
        bool const now = test(c);
        count += now ? 1 : 0;
        runs += now && !before ? 1 : 0;
        before = now;
    }
    return {count, runs};
}

TEST(CharacterClasses, HaveTheMembersOfTheTablesOfUnicode) {
    EXPECT_EQ(countRuns(is<grammar::DIGIT>), std::pair(370, 33));
    EXPECT_EQ(countRuns(is<grammar::XDIGIT>), std::pair(44, 6));
    EXPECT_EQ(countRuns(is<grammar::ALPHA>), std::pair(100520, 474));
    EXPECT_EQ(countRuns(is<grammar::UCSCHAR>), std::pair(970260, 17));
    EXPECT_EQ(countRuns(is<grammar::IPRIVATE>), std::pair(6400 + 4096 + 65534 + 65534, 4));
}

TEST(CharacterClasses, AgreeWithTheRulesForEveryCodePoint) {
    for (char32_t c = 0; c <= 0x110100; ++c) {
        ASSERT_EQ(is<grammar::ALNUM>(c), ReferenceMatcher::alpha(c) || ReferenceMatcher::digit(c))
            << std::hex << unsigned(c);
        ASSERT_EQ(is<grammar::IUNRESERVED>(c), ReferenceMatcher::iunreserved(c)) << std::hex << unsigned(c);
        ASSERT_EQ(is<grammar::XDIGIT>(c), ReferenceMatcher::xdigit(c)) << std::hex << unsigned(c);
        ASSERT_EQ(is<grammar::SUB_DELIMS>(c), ReferenceMatcher::subDelims(c)) << std::hex << unsigned(c);
        ASSERT_EQ(is<grammar::IPRIVATE>(c), ReferenceMatcher::iprivate(c)) << std::hex << unsigned(c);
    }
    EXPECT_FALSE(is<0xFFFF>(0xFFFFFF3A));
}

std::optional<std::u32string> textOf(boost::optional<Parts::Range> const& range) {
    return range ? std::optional(std::u32string(range->begin(), range->end())) : std::nullopt;
}

TEST(IriGrammar, AgreesWithThePlainMatcher) {
    constexpr int rounds = 1000000;
    support::Generator generator(1);
    int accepted = 0;
    for (int round = 0; round < rounds; ++round) {
        std::u32string const text = round % 2 == 0 ? generator.reference() : generator.mutated();
        SCOPED_TRACE(support::show(text));
        auto const expected = ReferenceMatcher::match(text);
        Parts found;
        ASSERT_EQ(grammar::matchIriReference(text, found), expected.has_value());
        if (expected) {
            ++accepted;
            auto const& [scheme, userInfo, host, port, path, query, fragment] = *expected;
            ASSERT_TRUE(textOf(found.scheme) == scheme && textOf(found.userInfo) == userInfo);
            ASSERT_TRUE(textOf(found.host) == host && textOf(found.port) == port);
            ASSERT_TRUE(textOf(found.path) == path && textOf(found.query) == query);
            ASSERT_EQ(textOf(found.fragment), fragment);
        }
    }
    EXPECT_GT(accepted, rounds / 4) << "the generator makes too few valid texts to show anything";
    EXPECT_LT(accepted, rounds * 3 / 4) << "the generator makes too few faults to show anything";
}

TEST(IriGrammar, SchemeAloneIsMatchedWhole) {
    EXPECT_TRUE(grammar::matchScheme(U"a+1.-"));
    EXPECT_TRUE(grammar::matchScheme(U"\u00E9\u0661"));
    for (auto const* const bad : {U"", U"1a", U"a:", U"a b", U"-"}) {
        EXPECT_FALSE(grammar::matchScheme(bad)) << support::show(std::u32string_view(bad));
    }
}

// Runs an operation on a thread with a stack of 512 KiB.
void onSmallStack(std::function<void()> operation) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{512} * 1024), 0);
    pthread_t thread{};
    auto const run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &operation), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(IriGrammar, LongTextsTakeNoStack) {
    onSmallStack([] {
        std::u16string const run(4 << 20, u'a');
        std::u16string segments;
        for (int i = 0; i < 1 << 20; ++i) {
            segments += u"/%41.";
        }
        for (auto const& text : {run, segments, u"//" + run, u"x:" + run, u"?" + run, u"#" + segments}) {
            foundation::network::IRI const iri(text);
            EXPECT_FALSE(iri.isEmpty());
            EXPECT_THROW(foundation::network::IRI(text + u' '), std::logic_error);
        }
    });
}

} // namespace
