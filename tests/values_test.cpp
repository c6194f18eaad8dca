#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "support/Generator.hpp"
#include "support/Laws.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <unordered_set>
#include <vector>

namespace {

using namespace foundation::network;
using namespace support;
using Text = std::u16string;

// Arguments of every shape that can be built.
IRIArgs randomArgs(Generator& generator) {
    auto const text = [&](std::size_t limit) { return toUtf16(generator.pieces(limit)).value_or(u"\u00E9"); };
    auto const chance = [&](std::size_t percent) { return generator.chance(percent); };
    auto const maybe = [&](std::size_t percent, auto set) {
        if (chance(percent)) {
            set();
        }
    };
    IRIArgs args;
    maybe(60, [&] { args.setScheme(chance(50) ? u"http" : u"x"); });
    bool const host = chance(50);
    if (host) {
        args.setHost(text(3));
        maybe(30, [&] { args.setUserInfo(text(3)); });
        maybe(30, [&] { args.setPort(static_cast<unsigned short>(generator.below(0x10000))); });
    }
    maybe(80, [&] {
        Text const path = text(4);
        args.setPath(host && !path.empty() ? u"/" + path : path);
    });
    maybe(40, [&] { args.setQuery(text(4)); });
    for (std::size_t pairs = chance(30) ? generator.below(4) : 0; pairs != 0; --pairs) {
        args.appendQueryKeyValuePair(text(2) + u"k", text(3), chance(50), chance(20));
    }
    maybe(30, [&] { args.setFragment(text(3)); });
    return args;
}

struct Member {
    IRI iri;
    bool parsed; // or built: the two kinds that `operator<` tells apart
};

// Values made in every way, equal ones among them.
std::vector<Member> pool(std::size_t size) {
    Generator generator(11);
    // clang-format off
    std::vector<Member> values{
        {IRI(), false}, {IRI(u""), true}, {IRI(IRIArgs()), false}, {IRI(u"http://a/b%20c"), true},
        {IRI(IRIArgs().setPath(u"/b c").setScheme(u"http").setHost(u"a")), false},
        {IRI(IRIArgs().setScheme(u"http").setHost(u"a").setPort(80).setPath(u"/")), false},
        {IRI(u"http://a:080/"), true}, {IRI(u"http://a:80/"), true},
        // The same text, and another mark; the same source, and another form.
        {IRI(IRIArgs().setQuery(u"a=%2B")), false},
        {IRI(IRIArgs().appendQueryKeyValuePair(u"a", u"+", false, false)), false},
        {IRI(IRIArgs().setScheme(u"x").setQuery(u"a%20b")), false},
        {IRI(u"?a%20b").resolveAgainst(IRI(u"x:")), false},
    };
    // clang-format on
    while (values.size() < size) {
        Member const any = generator.pick(values);
        std::size_t const how = generator.below(4);
        if (how < 2) { // what a generated text or another one's text gives
            auto const text = how == 0 ? toUtf16(generator.reference()) : any.iri.toString(false);
            if (auto const iri = parsed(text)) {
                values.push_back({*iri, true});
            }
        } else if (how == 2) {
            values.push_back({IRI(randomArgs(generator)), false});
        } else { // a copy of what has been asked for everything, moved, and what the move left
            (void)answers(any.iri);
            IRI copy(any.iri);
            values.push_back({std::move(copy), any.parsed});
            values.push_back({copy, false}); // NOLINT(bugprone-use-after-move): that is what is held
        }
    }
    return values;
}

TEST(Values, EqualityIsAnEquivalenceThatTheIriTextsDecide) {
    auto const values = pool(160);
    int equal = 0;
    for (auto const& a : values) {
        for (auto const& b : values) {
            equal += equalityHolds(a.iri, b.iri) && &a != &b && !a.iri.isEmpty();
        }
    }
    EXPECT_GT(equal, 100);
}

// Irreflexive, asymmetric, transitive, and so is being equivalent.
template <class Less>
void isStrictWeakOrder(std::vector<IRI> values, Less less) {
    ASSERT_GT(values.size(), 40u);
    std::sort(values.begin(), values.end(), less); // then the order of places must be that of the values
    for (std::size_t i = 0; i != values.size(); ++i) {
        ASSERT_FALSE(less(values[i], values[i]));
        bool above = false;
        for (std::size_t j = i + 1; j != values.size(); ++j) {
            ASSERT_FALSE(less(values[j], values[i]));
            bool const now = less(values[i], values[j]);
            ASSERT_TRUE(now || !above); // once greater, always greater
            above = now;
        }
    }
}

TEST(Values, OrderIsStrictAndWeakWithinAKindAndByTextOverAll) {
    std::vector<IRI> all, kinds[2];
    for (auto const& member : pool(160)) {
        all.push_back(member.iri);
        try {
            (void)(member.iri < IRI()); // the Raw form that the order of built values asks for
            kinds[member.parsed ? 1 : 0].push_back(member.iri);
        } catch (std::out_of_range const&) {
        }
    }
    isStrictWeakOrder(kinds[0], std::less<>());
    isStrictWeakOrder(kinds[1], std::less<>());
    isStrictWeakOrder(all, IRITextLess());
    std::set<IRI, IRITextLess> const ordered(all.begin(), all.end());
    EXPECT_EQ(ordered.size(), std::unordered_set<IRI>(all.begin(), all.end()).size());
    EXPECT_TRUE(IRI() < IRI(u"a"));
    EXPECT_TRUE(IRI(u"/b!") < IRI(IRIArgs().setPath(u"/b c"))) << "of two kinds, by their Iri texts";
    EXPECT_TRUE(IRI(u"\uFFE0") < IRI(u"\U00010000")) << "by code point, not by UTF-16 unit";
}

TEST(Values, HashIsFnv1aOfTheIriText) { // of four bytes a code point, the lowest first
    EXPECT_EQ(IRI(u"a").hashValue(), 0xAC804B820E4FE984);
    EXPECT_EQ(IRI(u"?\u00FF\u0100\uFFEF\U0001F600\U0010FFFD").hashValue(), 0x99783EA4FE0F554F);
    EXPECT_EQ(IRI(IRIArgs().setScheme(u"x").setPath(u"\u00E9 ")).hashValue(), 0x4B338907D5F2C699);
    EXPECT_TRUE(IRI().hashValue() == 0 && IRI(u"").hashValue() == 0);
}

TEST(Values, AssignmentMoveAndSwapCarryEverything) {
    auto values = pool(60);
    for (std::size_t i = 0; i != values.size(); ++i) {
        for (std::size_t const step : {1u, 7u, 23u}) {
            IRI const &one = values[i].iri, &two = values[(i + step) % values.size()].iri;
            auto const less = [](IRI const& a, IRI const& b) { // reads the Raw forms, which no answer does
                try {
                    return a < b ? "<" : "-";
                } catch (std::out_of_range const&) {
                    return "!";
                }
            };
            valuesTravel(one, two, [&, a = one, b = two](IRI const& value) {
                return answers(value) + less(value, a) + less(b, value);
            });
        }
    }
    for (auto& [iri, isParsed] : values) {
        IRI const moved = std::move(iri);
        EXPECT_EQ(answers(iri), answers(IRI())); // NOLINT(bugprone-use-after-move): that is what is asked
    }
}

TEST(IriArgs, BuiltPrintedAndParsedAgainIsTheSame) {
    Generator generator(12);
    int held = 0;
    for (int round = 0; round < 20000; ++round) {
        held += buildHolds(IRI(randomArgs(generator)));
    }
    EXPECT_GT(held, 15000);
}

TEST(IriArgs, RefusalsComeInTheirOrder) {
    auto const refusal = [](IRIArgs const& args) { return thrown<std::logic_error>([&] { IRI iri(args); }); };
    IRIArgs args;
    args.setUserInfo(u"u").setPort(1).setPath(u"a");
    for (Text const scheme : {u"", u"1a", u"a:", u"a b", u"-"}) {
        EXPECT_EQ(refusal(args.setScheme(scheme)), "Malformed scheme");
    }
    EXPECT_EQ(refusal(args.setScheme(u"a1")), "User Info requires a host");
    EXPECT_EQ(refusal(args.clearUserInfo()), "Port requires a host");
    EXPECT_EQ(refusal(args.setHost(u"")), "Path cannot be relative if authority present");
    EXPECT_EQ(IRI(args.setPath(u"")).toString(false), u"a1://:1");
    EXPECT_EQ(thrown<std::logic_error>([&] { args.appendQueryKeyValuePair(u"", u"v", false, false); }),
              "Key must not be empty");
    for (Text const port :
         {u"65536", u"", u"8 0", u"-1", u"+80", u"80x", u"\u0668\u0660", u"99999999999", u"4294967376"}) {
        EXPECT_EQ(thrown<std::logic_error>([&] { args.setPort(port); }), "Port must be numeric");
    }
    Text const bad(1, char16_t(0xD800));
    for (auto const setter : {&IRIArgs::setScheme, &IRIArgs::setUserInfo, &IRIArgs::setHost,
                              &IRIArgs::setPath, &IRIArgs::setQuery, &IRIArgs::setFragment}) {
        EXPECT_THROW((args.*setter)(bad), std::out_of_range);
    }
    EXPECT_THROW(args.setPort(bad), std::out_of_range);
    EXPECT_THROW(args.appendQueryKeyValuePair(u"a&", bad, true, false), std::out_of_range);
    EXPECT_EQ(IRI(args).toString(false), u"a1://:1") << "a refused setting changed something";
}

TEST(IriArgs, BuildsWhatIsDocumented) {
    // clang-format off
    struct Row { IRIArgs args; Text text; std::string traits; };
    Row const rows[] = {
        {IRIArgs(), u"", "e"}, {IRIArgs().setQuery(u""), u"?", "q"}, {IRIArgs().setPath(u"a:b"), u"a%3Ab", ""},
        {IRIArgs().setScheme(u"\u00E9\u0661+.-"), u"\u00E9\u0661+.-:", "saO"},
        {IRIArgs().setScheme(u"s").setHost(u"h"), u"s://h", "sAah"},
        {IRIArgs().setHost(u"h").setPort(0), u"//h:0", "Aoh"},
        {IRIArgs().setScheme(u"s").setPath(u"a:b"), u"s:a:b", "saO"},
        {IRIArgs().setHost(u"h").setPort(u"080").setPath(u"/\u00E9 %41?#"), u"//h:80/\u00E9%20%2541%3F%23", "Aohp"},
        {IRIArgs().setHost(u"h").setUserInfo(u"u").setPort(1).clearHost().clearUserInfo(), u"", "e"},
        {IRIArgs().setScheme(u"s").setPath(u"p").setFragment(u"f").clearScheme().clearPath().clearFragment(),
         u"", "e"},
        {IRIArgs().setHost(u"h").setPort(1).clearPort(), u"//h", "Ah"},
        {IRIArgs().setHost(u"h").setPort(u"0000000000000065535"), u"//h:65535", "Aoh"},
        {IRIArgs().setHost(u"[::1]"), u"//%5B%3A%3A1%5D", "Ah"},
        {IRIArgs(IRI(u"x:/%2Fa")), u"x://a", "sap"}, {IRIArgs(IRI(u"\u00E9:b")), u"\u00E9:b", "saO"},
    };
    // clang-format on
    for (auto const& row : rows) {
        IRI const iri(row.args);
        EXPECT_EQ(iri.toString(false), row.text);
        EXPECT_EQ(traits(iri), row.traits) << show(row.text);
    }
}

TEST(IriArgs, FormEncodedQueriesGrowKeyByKey) {
    // clang-format off
    // The query is that of the IRI, as Iri, after this and all pairs before it.
    struct Pair { Text key, value; bool encode, semicolon; Text query; };
    Pair const rows[] = {
        {u"a b", u"c+d", false, false, u"a+b=c%2Bd"}, {u"x", u"", false, false, u"a+b=c%2Bd&x="},
        {u"a&b", u"c;d=", false, true, u"a+b=c%2Bd&x=;a&b=c%3Bd%3D"},
        {u"a&b", u"c;d\u00E9", false, false, u"a+b=c%2Bd&x=;a&b=c%3Bd%3D&a%26b=c;d\u00E9"},
        {u"%", u"[", true, false, u"a+b=c%2Bd&x=;a&b=c%3Bd%3D&a%26b=c;d%C3%A9&%=%5B"},
    };
    // clang-format on
    IRIArgs args;
    for (auto const& row : rows) {
        args.appendQueryKeyValuePair(row.key, row.value, row.encode, row.semicolon);
        EXPECT_EQ(IRI(args).getQuery(Encoding::Iri), row.query);
    }
    args.setQuery(u"\u00E9 b"); // how it is encoded stays
    EXPECT_EQ(IRI(args).getQuery(Encoding::Iri), u"%C3%A9%20b");
    EXPECT_EQ(IRI(args.clearQuery()).hasQuery(), false);
    // Only spaces: nothing was escaped, and the query is decoded and encoded like any other.
    EXPECT_EQ(IRI(IRIArgs().appendQueryKeyValuePair(u"a", u"b \uE000", false, false)).getQuery(Encoding::Raw),
              u"a=b+\uE000");
    // The Raw form of a form-encoded query set as Raw never depends on other forms.
    IRI const iri(IRIArgs().appendQueryKeyValuePair(u"a", u"\u00E9=", false, false));
    (void)iri.getQuery(Encoding::Uri);
    EXPECT_EQ(iri.getQuery(Encoding::Raw), u"a=\u00E9%3D");
}

TEST(IriArgs, ReceiveThePartsOfAnIri) {
    auto const filled = [] {
        return IRIArgs().setHost(u"h").setPort(8).setUserInfo(u"u").setQuery(u"q").setFragment(u"f");
    };
    IRIArgs args = filled();
    IRI(u"x:/%61").toArgs(args); // the authority stays, the rest goes
    EXPECT_EQ(IRI(args).toString(false), u"x://u@h:8/a");
    IRI(u"//g:08").toArgs(args); // a number
    EXPECT_EQ(IRI(args).toString(false), u"x://u@g:8");
    // NOLINTBEGIN(bugprone-use-after-move, performance-move-const-arg): moving copies
    IRIArgs moved = std::move(args);
    EXPECT_EQ(IRI(args), IRI(moved)) << "moving copies";
    // NOLINTEND(bugprone-use-after-move, performance-move-const-arg)

    args = IRIArgs().appendQueryKeyValuePair(u"a", u"=", false, false);
    IRI(u"?a%20b").toArgs(args); // its query is not form-encoded
    EXPECT_EQ(IRI(args).toString(false), u"?a%20b");

    args = filled();
    EXPECT_THROW(IRI().toArgs(args), std::runtime_error);
    EXPECT_THROW(IRI(u"y://z/%C0%AF?r").toArgs(args), std::out_of_range);
    EXPECT_EQ(IRI(args), IRI(filled())) << "a failure changed something";
}

} // namespace
