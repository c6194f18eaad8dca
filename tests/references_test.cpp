#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "support/Generator.hpp"
#include "support/References.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace support;
using foundation::network::IRIArgs;

// The text of a reference, or the words of a refusal behind "! ", of an escape that is no UTF-8 behind "!! ".
template <class Operation>
Text said(Operation operation) {
    Text text;
    std::string range;
    auto const make = [&] { text = operation().toString(false); };
    auto const logic = thrown<std::logic_error>([&] { range = thrown<std::out_of_range>(make); });
    return logic != "nothing thrown"   ? u"! " + wide(logic)
           : range != "nothing thrown" ? u"!! " + wide(range)
                                       : text;
}
Text resolved(Text const& reference, Text const& base) {
    return said([&] { return IRI(reference).resolveAgainst(IRI(base)); });
}

TEST(Resolve, GivesTheExamplesOfRfc3986) {
    // clang-format off
    struct Row { Text reference, target; };
    Row const rows[] = { // section 5.4.1
        {u"g:h", u"g:h"}, {u"g", u"http://a/b/c/g"}, {u"./g", u"http://a/b/c/g"}, {u"g/", u"http://a/b/c/g/"},
        {u"/g", u"http://a/g"}, {u"//g", u"http://g"}, {u"?y", u"http://a/b/c/d;p?y"},
        {u"g?y", u"http://a/b/c/g?y"}, {u"#s", u"http://a/b/c/d;p?q#s"}, {u"g#s", u"http://a/b/c/g#s"},
        {u"g?y#s", u"http://a/b/c/g?y#s"}, {u";x", u"http://a/b/c/;x"}, {u"g;x", u"http://a/b/c/g;x"},
        {u"g;x?y#s", u"http://a/b/c/g;x?y#s"}, {u"", u"http://a/b/c/d;p?q"}, {u".", u"http://a/b/c/"},
        {u"./", u"http://a/b/c/"}, {u"..", u"http://a/b/"}, {u"../", u"http://a/b/"}, {u"../g", u"http://a/b/g"},
        {u"../..", u"http://a/"}, {u"../../", u"http://a/"}, {u"../../g", u"http://a/g"},
        // section 5.4.2
        {u"../../../g", u"http://a/g"}, {u"../../../../g", u"http://a/g"}, {u"/./g", u"http://a/g"},
        {u"/../g", u"http://a/g"}, {u"g.", u"http://a/b/c/g."}, {u".g", u"http://a/b/c/.g"},
        {u"g..", u"http://a/b/c/g.."}, {u"..g", u"http://a/b/c/..g"}, {u"./../g", u"http://a/b/g"},
        {u"./g/.", u"http://a/b/c/g/"}, {u"g/./h", u"http://a/b/c/g/h"}, {u"g/../h", u"http://a/b/c/h"},
        {u"g;x=1/./y", u"http://a/b/c/g;x=1/y"}, {u"g;x=1/../y", u"http://a/b/c/y"},
        {u"g?y/./x", u"http://a/b/c/g?y/./x"}, {u"g?y/../x", u"http://a/b/c/g?y/../x"},
        {u"g#s/./x", u"http://a/b/c/g#s/./x"}, {u"g#s/../x", u"http://a/b/c/g#s/../x"}, {u"http:g", u"http:g"},
    };
    // clang-format on
    for (auto const& row : rows) {
        IRI const reference(row.reference), base(u"http://a/b/c/d;p?q");
        EXPECT_EQ(reference.resolveAgainst(base).toString(false), row.target) << show(row.reference);
        EXPECT_EQ(resolveExactly(reference, base).toString(false), row.target) << show(row.reference);
    }
    EXPECT_EQ(std::size(rows), 42u);
}

// References and bases: small alphabets, so that segments meet, and much of what makes trouble.
Text randomReference(Generator& generator) {
    // clang-format off
    static constexpr char16_t const* segments[] = {
        u"a", u"b", u"a", u"b", u"c", u".", u"..", u".", u"..", u"",
        u"...", u"a:b", u"%2F", u"%2e", u"\u00E9", u"%C3%A9", u"%"};
    static constexpr char16_t const* authorities[] = {
        u"//u@g:8", u"//u@g:8", u"//u@g:08", u"//%75@g:8", u"//%67", u"//g", u"//h%41", u"//h%2541", u"//%C0%AF"};
    // clang-format on
    Text text = generator.chance(50) ? generator.chance(70) ? u"x:" : u"y:" : u"";
    text += generator.chance(50) ? generator.chance(70) ? u"//h" : generator.pick(authorities) : u"";
    bool const plain = generator.chance(70);
    for (std::size_t count = generator.below(6), i = 0; i != count; ++i) {
        text += i != 0 || generator.chance(70) ? u"/" : u"";
        text += segments[generator.below(plain ? 10 : std::size(segments))];
    }
    text += generator.chance(30) ? generator.chance(50)   ? u"?q"
                                   : generator.chance(70) ? u"?p"
                                                          : u"?%71"
                                 : u"";
    return text + (generator.chance(20) ? u"#f" : u"");
}

// Parsed, built, or out of a resolution, and can be read again.
struct Operand {
    IRI iri;
    bool isResolved;
};
Operand anyOperand(Generator& generator) {
    for (;;) {
        auto const read = parsed(randomReference(generator));
        std::size_t const how = generator.below(4);
        IRI const iri = read ? inAnotherWay(*read, how) : IRI();
        if (read && canBeReadAgain(iri)) {
            return {iri, how == 1};
        }
    }
}

TEST(References, KeepTheirLaws) {
    Generator generator(21);
    int resolved = 0;
    int relativised = 0;
    for (int round = 0; round < 150000; ++round) {
        auto const [iri, isResolved] = anyOperand(generator);
        auto const [base, baseIsResolved] = anyOperand(generator);
        std::optional<IRI> reference;
        try {
            resolved += resolutionHolds(iri, base, isResolved, baseIsResolved);
            reference = iri.makeRelativeTo(base);
        } catch (std::logic_error const&) {
        }
        // Dots out of a resolution stay in the next one alone.
        bool const dotsStay = (isResolved && hasDots(Components::of(iri).path)) ||
                              (baseIsResolved && hasDots(Components::of(base).path));
        relativised += reference && !dotsStay && relativisationHolds(*reference, iri, base);
    }
    EXPECT_GT(resolved, 75000) << "too few for which the RFC is to be followed";
    EXPECT_GT(relativised, 30000);
    // A "/." in front is a dot segment, and goes with the next resolution.
    IRI const target(u"x://h//b");
    IRI const base(u"x://h/c");
    EXPECT_EQ(target.makeRelativeTo(base).resolveAgainst(base), target);
}

TEST(ExactReferences, KeepTheirLaws) {
    Generator generator(22);
    int relativised = 0;
    for (int round = 0; round != 200000; ++round) {
        IRI const iri = anyOperand(generator).iri, base = anyOperand(generator).iri;
        IRI const target = exactResolutionHolds(iri, base);
        relativised += exactRelativisationHolds(iri, base, round % 40 == 0);
        if (round % 40 == 0) {
            isAsParsed(target, base);
            isAsParsed(makeRelativeExactly(iri, base), target);
        }
    }
    EXPECT_GT(relativised, 40000);
}

TEST(ExactReferences, KeepEveryEscape) {
    // clang-format off
    struct Row { Text reference, base, target, back; };
    Row const rows[] = {
        {u"a%2Fb/../c", u"x:/d/e", u"x:/d/c", u"c"}, {u"%C0%80", u"x:/%C0%80/b", u"x:/%C0%80/%C0%80", u"%C0%80"},
        {u"%2e%2e/01_%c9p%40a%2Bb%25c%2541", u"x:/d/", u"x:/d/%2e%2e/01_%c9p%40a%2Bb%25c%2541",
         u"%2e%2e/01_%c9p%40a%2Bb%25c%2541"},
        // The base's own dots, and none of it.
        {u"g", u"http://h/a/b/..", u"http://h/a/b/g", u"g"}, {u"y/../z", u"http://a", u"http://a/z", u"z"},
        {u"", u"http://h/a/../b#f", u"http://h/a/../b", u"b"}, {u"?", u"x:", u"x:?", u"?"},
        // Guards.
        {u"/.//d", u"x:", u"x:/.//d", u".///d"}, {u"./a:b", u"", u"./a:b", u"./a:b"},
        {u"./a:b", u"x:", u"x:a:b", u"./a:b"}, {u"..//d", u"x:/a/b/c", u"x:/a//d", u"..//d"},
        {u".//d", u"http://h/", u"http://h//d", u".//d"}, {u"x:a/../b", u"", u"x:/b", u"x:/b"},
        {u"..", u"x:a/b", u"x:/", u"/"}, {u".", u"x:b?q", u"x:", u"."},
        // The shortest way is not always the nearest one.
        {u"/a", u"http://h/b/c/d", u"http://h/a", u"/a"},
        {u"../../a/b", u"http://h/bb/c/d", u"http://h/a/b", u"/a/b"}, {u"//g/p", u"x://h/p", u"x://g/p", u"//g/p"},
        {u"x:/p", u"x://h/p", u"x:/p", u"x:/p"}, {u"//h", u"x://h/p", u"x://h", u"//h"},
        {u"?q", u"x://h/p?r", u"x://h/p?q", u"?q"}, {u"p", u"x://h/p?r", u"x://h/p", u"p"},
        {u"../", u"x:/a/b/c", u"x:/a/", u".."}, {u"x:b/d", u"x:b//e///c", u"x:b/d", u"x:b/d"},
        {u"/\U0001F600/a", u"x:/\U0001F600/\U0001F600/c", u"x:/\U0001F600/a", u"../a"},
    };
    // clang-format on
    for (auto const& [reference, base, target, back] : rows) {
        IRI const result = exactResolutionHolds(IRI(reference), IRI(base));
        EXPECT_EQ(result.toString(false), target) << show(reference) << " against " << show(base);
        EXPECT_EQ(makeRelativeExactly(result, IRI(base)).toString(false), back) << show(target);
    }
    EXPECT_EQ(std::size(rows), 25u);
    EXPECT_EQ(resolveExactly(IRI(), IRI()), IRI(u""));
    EXPECT_EQ(resolveExactly(IRI(), IRI(u"x:/a?q#f")).toString(false), u"x:/a?q");
    EXPECT_EQ(resolveExactly(IRI(u"a"), IRI()).getPath(Iri), u"a");
    EXPECT_EQ(makeRelativeExactly(IRI(u"/a/../b"), IRI(u"x:/")).toString(false), u"/a/../b");
    // A form-encoded query goes over as it is printed.
    IRI const form(IRIArgs().setPath(u"p").appendQueryKeyValuePair(u"a", u"b c=", false, false));
    EXPECT_EQ(resolveExactly(form, IRI(u"x:/")).getQuery(Encoding::Raw),
              IRI(u"?a=b+c%3D").getQuery(Encoding::Raw));
}

Text const noUtf8 = u"!! Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";

TEST(Resolve, DiffersFromTheRfcAsDocumented) {
    // clang-format off
    struct Row { Text reference, base, target; };
    Row const rows[] = {
        {u"y/../z", u"x://a", u"x://a/y/../z"}, {u"a%2Fb/c", u"x:/d/e", u"x:/d/a/b/c"},
        {u"p:a/./b", u"x:y", u"p:a/b"}, {u"p:a/./b", u"x:/y", u"p:/a/b"}, {u"a", u"mailto:x", u"mailto:a"},
        {u"c/../d", u"http://h/a", u"http://h/d"}, {u"c/..", u"http://h/a", u"http://h/"},
        {u"g", u"http://h/a/b/..", u"http://h/a/g"}, {u"g", u"http://h/./a", u"http://h/g"}, {u"g", u".", u"g"},
        {u"/.//d", u"x:", u"x:/.//d"}, {u"..", u"a/b", u"/"}, {u"a:b", u"", u"a:b"}, {u"./a:b", u"", u"a%3Ab"},
        {u"x:%2Fa", u"", u"x:/a"}, {u"#", u"http://h/a?q#f", u"http://h/a?q#"},
        {u"", u"http://h/b#f", u"http://h/b"}, {u"", u"#f", u""}, {u"a/..//b", u"c", u"/b"},
        {u"%2Fa/./b", u"x:/b/c", u"x:/b/a/b"}, {u"%2Fa/../b", u"x:/b/c", u"x:/b/b"},
        {u"%2Fa/../../../b", u"x:/q/r/s/c", u"x:/q/b"}, {u"x:./", u"/a", u"x:"}, {u"%2F/../b", u"c", u"/b"},
        {u"../c", u"x:%2Fa//b", u"x:/a/c"}, {u"%C0%AF", u"x:", noUtf8},
    };
    // clang-format on
    for (auto const& [reference, base, target] : rows) {
        EXPECT_EQ(resolved(reference, base), target) << show(reference) << " against " << show(base);
    }
    EXPECT_EQ(std::size(rows), 26u);
    EXPECT_TRUE(IRI(u"x:%2Fa").resolveAgainst(IRI()).isOpaque());
    EXPECT_TRUE(IRI(u"").resolveAgainst(IRI(u"#f")).isEmpty());
    EXPECT_EQ(IRI(u"a").resolveAgainst(IRI()).toString(false), u"a");
    EXPECT_EQ(IRI().resolveAgainst(IRI()).getPath(Iri), u"");
    // Parts go over in the form in which they were stored, a form-encoded query with its mark.
    IRI const form(IRIArgs().setPath(u"p").appendQueryKeyValuePair(u"a", u"b c=", false, false));
    EXPECT_EQ(form.resolveAgainst(IRI(u"x://u%41@h%41/")).toString(false), u"x://u%41@h%41/p?a=b+c%3D");
    EXPECT_EQ(form.resolveAgainst(IRI(u"x:")).getQuery(Encoding::Raw), form.getQuery(Encoding::Raw));
}

TEST(Relativise, GivesWhatIsDocumented) {
    // clang-format off
    struct Row { Text iri, base, reference; };
    Row const rows[] = {
        {u"http://a/b/c", u"http://a/b/c", u""}, {u"http://a/b/c#f", u"http://a/b/c", u"#f"},
        {u"http://a/b/c", u"http://a/b/d", u"c"}, {u"http://a/b/c/d", u"http://a/b/e", u"c/d"},
        {u"http://a/b", u"http://a/c/d", u"../b"}, {u"http://a/x/y", u"http://a/x/p/q", u"../y"},
        {u"http://a/x/y", u"http://a/x/p/q/r", u"../../y"}, {u"http://a/x/y", u"http://a/x/p/", u"../y"},
        {u"http://a/x", u"http://a/", u"x"}, {u"http://a/", u"http://a/x", u"."},
        {u"http://a/b", u"http://a", u"/b"}, {u"http://a/b", u"http://a/b?q", u"./b"},
        {u"http://a/b/", u"http://a/b/?q", u"."}, {u"http://a/c/../b", u"http://a/b?q", u"./b"},
        {u"x:b", u"x:b?q", u"./b"}, {u"http://a/b?q", u"http://a/b?q#f", u""},
        {u"http://a/b?x", u"http://a/b?y", u"?x"}, {u"http://a?q", u"http://a/b", u"//a?q"},
        {u"http://a?q", u"http://a/b?q", u"//a?q"}, {u"x:y", u"http://a", u"x:y"},
        {u"http://h/p", u"http://g/p", u"//h/p"}, {u"http://h:1/p", u"http://h:01/q", u"//h:1/p"},
        {u"x://u%40h/p", u"x://u@h/q", u"//u%40h/p"}, {u"x:/p", u"x://a/p", u"x:/p"},
        {u"http://a//b", u"http://a/c", u"/.//b"}, {u"x:/a", u"x:/a//..", u"/a"},
        {u"x:/b", u"x:/1/2/3/4/5/6/7/8/9/", u"../../../../../../../../../b"},
        {u"http://%C0%AF/b", u"http://a/b", u"//%C0%AF/b"}, {u"x:/%C0%AF", u"x:/%C0%AF#f", u""},
        {u"/a:b", u"/c", u"a%3Ab"}, {u"x:b", u"x:a", u"../b"}, {u"x:/%41/", u"x:/%41/b", u"./"},
        // Paths that differ must be decoded where a relative one is made.
        {u"x:/p", u"x:/%C0%80/b", noUtf8}, {u"x:/%C0%80/a", u"x:/%C0%80/b", noUtf8},
        {u"x:/%C0%AF", u"x:/%C0%80/b", noUtf8},
        // Refusals in their order.
        {u"a/b", u"http://x/y", u"! Cannot make relative to base. Already relative"},
        {u"/a", u"b", u"! Cannot make relative. Base is relative"},
        {u"/a/b", u"http://x/y", u"! Cannot make relative to base as base has scheme but this does not"},
        {u"/x", u"//a", u"! Cannot make relative to base as base has authority but this does not"},
        {u"?q", u"/b", u"! Cannot make relative to base as base has path but this does not"},
        {u"#f", u"?q", u"! Cannot make relative to base as base has query but this does not"},
    };
    // clang-format on
    for (auto const& [iri, base, reference] : rows) {
        for (std::size_t const how : {0u, 2u}) { // built, where that is the same, and parsed
            bool const same =
                inAnotherWay(IRI(iri), how) == IRI(iri) && inAnotherWay(IRI(base), how) == IRI(base);
            IRI const own = inAnotherWay(IRI(iri), same ? how : 2),
                      from = inAnotherWay(IRI(base), same ? how : 2);
            Text const made = said([&] { return own.makeRelativeTo(from); });
            EXPECT_EQ(made, reference) << show(iri) << " from " << show(base);
            if (made[0] != u'!') {
                relativisationHolds(own.makeRelativeTo(from), own, from);
            }
        }
    }
    EXPECT_EQ(std::size(rows), 41u);
}

} // namespace
