#include <foundation/network/Escapes.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/QueryParameters.hpp>

#include "support/Generator.hpp"
#include "support/Iris.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ranges>
#include <sstream>

namespace {

using namespace foundation::network;
using support::Generator;
using Text = std::u16string;
using Pairs = std::vector<std::pair<Text, Text>>;

constexpr auto both = QuerySeparator::AmpersandOrSemicolon;

// The reference implementation of application/x-www-form-urlencoded: cut, "+" to spaces, escapes to text.
Text plainDecoded(Text text) {
    std::replace(text.begin(), text.end(), u'+', u' ');
    return percentDecode(text);
}

std::vector<Text> piecesOf(Text const& query, bool semicolons) {
    std::vector<Text> pieces(1);
    for (char16_t const unit : query) {
        bool const cuts = unit == u'&' || (semicolons && unit == u';');
        cuts ? (void)pieces.emplace_back() : pieces.back().push_back(unit);
    }
    std::erase(pieces, Text());
    return pieces;
}

Pairs pairsOf(QueryParameters const& parameters) {
    Pairs pairs;
    for (QueryParameter const parameter : parameters) {
        pairs.emplace_back(parameter.getName(), parameter.getValue());
    }
    return pairs;
}

Text anyText(Generator& generator) {
    static constexpr char16_t const* few[] = {u"a", u"b", u"", u"a b", u"\u00E9"};
    return generator.chance(50) ? generator.pick(few)
                                : support::toUtf16(generator.pieces(3)).value_or(u"\U0001F600");
}

TEST(QueryParameters, AreThoseOfAPlainReader) {
    Generator generator(41);
    std::size_t parameters = 0;
    for (int round = 0; round != 20000; ++round) {
        Text query;
        for (std::size_t count = generator.below(6); count != 0; --count) {
            static constexpr char16_t const* delimiters[] = {u"&", u"&", u"=", u";", u"+", u"&&", u"%26"};
            query += support::toUtf16(generator.pieces(2)).value_or(u"") + generator.pick(delimiters);
        }
        bool const semicolons = generator.chance(50);
        QueryParameters const read(query, semicolons ? both : QuerySeparator::Ampersand);
        auto const pieces = piecesOf(query, semicolons);
        ASSERT_EQ(read.size(), pieces.size()) << support::show(query);
        for (std::size_t i = 0; i != pieces.size(); ++i) {
            std::size_t const equals = pieces[i].find(u'=');
            Text const name = plainDecoded(pieces[i].substr(0, equals));
            ASSERT_EQ(read[i].getName(), name) << support::show(query);
            ASSERT_EQ(read[i].hasValue(), equals != Text::npos);
            ASSERT_EQ(read[i].getValue(),
                      equals == Text::npos ? u"" : plainDecoded(pieces[i].substr(equals + 1)));
            ASSERT_TRUE(read.contains(name));
            ++parameters;
        }
        ASSERT_EQ(read.toQuery(), query);
    }
    EXPECT_GT(parameters, 20000u);
}

// A list of pairs beside the parameters: every change leaves the same pairs, the untouched pieces to the
// character, and a query that reads back.
TEST(QueryParameters, ChangeLikeAListAndKeepWhatIsNotTouched) {
    Generator generator(42);
    for (int round = 0; round != 3000; ++round) {
        QueryParameters parameters(round % 2 == 0 ? u"a=%61&&b;c=1&\u00E9+x=%FF" : u"");
        Pairs expected = pairsOf(parameters);
        for (int step = 0; step != 8; ++step) {
            Text const name = anyText(generator), value = anyText(generator);
            auto const isNamed = [&](auto const& pair) { return pair.first == name; };
            auto const first = std::find_if(expected.begin(), expected.end(), isNamed);
            auto const before = piecesOf(parameters.toQuery(), false);
            std::size_t const how = generator.below(3);
            if (how == 0 || (how == 1 && first == expected.end())) {
                expected.emplace_back(name, value);
            } else if (how == 1) {
                first->second = value;
                expected.erase(std::remove_if(first + 1, expected.end(), isNamed), expected.end());
            }
            if (how == 0) {
                parameters.append(name, value);
                ASSERT_TRUE(std::ranges::equal(before, piecesOf(parameters.toQuery(), false) |
                                                           std::views::take(before.size())));
            } else if (how == 1) {
                parameters.set(name, value);
            } else {
                ASSERT_EQ(parameters.remove(name), std::erase_if(expected, isNamed));
            }
            ASSERT_EQ(pairsOf(parameters), expected) << support::show(parameters.toQuery());
            ASSERT_EQ(parameters.getAll(name).size(),
                      static_cast<std::size_t>(std::count_if(expected.begin(), expected.end(), isNamed)));
            ASSERT_EQ(parameters.find(name).has_value(), parameters.contains(name));
            IRI const iri = withQuery(IRI(u"x://[::1]/a%2Fb#f"), parameters);
            ASSERT_EQ(pairsOf(QueryParameters(iri)), expected);
            ASSERT_EQ(iri, IRI(iri.toString(false)));
            ASSERT_EQ(iri.hasQuery(), !expected.empty() || !parameters.toQuery().empty());
        }
    }
}

TEST(QueryParameters, GiveWhatIsDocumented) {
    QueryParameters parameters(IRI(u"http://h/?name=J+%26+J&page=2&flag&e=&&flag"));
    EXPECT_EQ(parameters.find(u"name"), u"J & J");
    EXPECT_EQ(parameters.find("flag"), u"");
    EXPECT_EQ(parameters.find(u"none"), std::nullopt);
    EXPECT_EQ(parameters.getAll(u"flag"), std::vector<Text>(2));
    EXPECT_FALSE(parameters[2].hasValue());
    EXPECT_TRUE(parameters[3].hasValue());
    parameters.set(u"page", u"3");
    parameters.set("flag", "on");
    EXPECT_EQ(parameters.toQuery(), u"name=J+%26+J&page=3&flag=on&e=&");
    EXPECT_EQ(parameters.remove("name"), 1u);
    EXPECT_EQ(parameters.toQuery(), u"page=3&flag=on&e=&");
    parameters.append(u"%&+=;# \u202E\u00E9\uE000[]", Text(u"\0<", 2));
    EXPECT_EQ(parameters.toQuery(),
              u"page=3&flag=on&e=&&%25%26%2B%3D%3B%23+%E2%80%AE\u00E9\uE000%5B%5D=%00%3C");
    EXPECT_EQ(parameters.find(u"%&+=;# \u202E\u00E9\uE000[]"), Text(u"\0<", 2));
    std::ostringstream stream;
    stream << QueryParameters(u"\u00E9=1");
    EXPECT_EQ(stream.str(), "\xC3\xA9=1");
    EXPECT_EQ(QueryParameters(u"a;b", both).size(), 2u);
    EXPECT_NE(QueryParameters(u"a;b", both), QueryParameters(u"a;b"));
    EXPECT_EQ(std::hash<QueryParameters>()(QueryParameters(u"a")),
              std::hash<QueryParameters>()(QueryParameters("a")));
    // Presence is kept, and the last parameter takes the query with it.
    for (Text const text : {u"x:", u"x:?", u"x:?&&", u"x:?a#f"}) {
        EXPECT_EQ(withQuery(IRI(text), QueryParameters(IRI(text))), IRI(text));
    }
    QueryParameters last(u"&a&");
    EXPECT_EQ(last.remove(u"b"), 0u);
    EXPECT_EQ(last.remove(u"a"), 1u);
    EXPECT_EQ(withQuery(IRI(u"x:?q#f"), last), IRI(u"x:#f"));
    EXPECT_EQ(support::thrown<std::logic_error>([] { (void)withQuery(IRI(u"x:"), QueryParameters(u"a=[")); }),
              "IRI parsing failed");
    EXPECT_THROW(last.append(Text(1, 0xD800), u""), std::out_of_range);
    EXPECT_EQ(last.toQuery(), u"");
    // What IRIArgs writes is read back.
    IRIArgs args;
    args.setPath(u"/")
        .appendQueryKeyValuePair(u"a b", u"c&d=e+f", false, false)
        .appendQueryKeyValuePair(u"\u00E9", u"", false, false);
    EXPECT_EQ(pairsOf(QueryParameters(IRI(args))), (Pairs{{u"a b", u"c&d=e+f"}, {u"\u00E9", u""}}));
}

TEST(QueryParameters, AreARandomAccessRange) {
    static_assert(std::ranges::random_access_range<QueryParameters>);
    QueryParameters const parameters(u"b=1&a=2&c=3");
    auto const at = parameters.begin();
    EXPECT_EQ(parameters.end() - at, 3);
    EXPECT_EQ((at + 2)->getName(), u"c");
    EXPECT_EQ((1 + at)[1].getName(), u"c");
    EXPECT_EQ((parameters.end() - 1)->getValue(), u"3");
    EXPECT_TRUE(at < parameters.end() && parameters.end() > at && at <= at && at >= at);
    QueryParameters copy = parameters; // looks at its own text
    copy.remove(u"b");
    EXPECT_EQ(copy.begin()->getName(), u"a");
    EXPECT_EQ(parameters.begin()->getName(), u"b");
}

} // namespace
