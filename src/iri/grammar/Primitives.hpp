#pragma once

// The parsers that the grammars are made of. Spirit's own character sets search ranges and tables for each
// character; these look at one table of masks, which is several times quicker. Spirit takes long to compile,
// so only the sources of grammars include this.
#define BOOST_SPIRIT_UNICODE
#include <boost/spirit/include/qi.hpp>

#include "iri/grammar/CharacterClasses.hpp"
#include "iri/grammar/Runs.hpp"

namespace foundation::network::iri::grammar {

namespace qi = boost::spirit::qi;

using Iterator = char32_t const*;

/// One character of the classes of `mask`.
template <ClassMask mask>
struct ClassParser : qi::char_parser<ClassParser<mask>, char32_t, boost::spirit::unused_type> {
    template <class Context, class It>
    struct attribute {
        using type = boost::spirit::unused_type;
    };
    template <class Char, class Context>
    bool test(Char c, Context&) const {
        return is<mask>(c);
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("class");
    }
};

/// Exactly the code point `wanted`. (Spirit's `lit` narrows to eight bits first.)
template <char32_t wanted>
struct CodePointParser : qi::char_parser<CodePointParser<wanted>, char32_t, boost::spirit::unused_type> {
    template <class Context, class It>
    struct attribute {
        using type = boost::spirit::unused_type;
    };
    template <class Char, class Context>
    bool test(Char c, Context&) const {
        return c == wanted;
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("code-point");
    }
};

/// The longest run of characters of the classes of `mask` and, with `Escapes::percent`, of `pct-encoded`. It
/// must not be empty if `atLeast` is 1.
template <ClassMask mask, Escapes escapes = Escapes::none, int atLeast = 0>
struct RunParser : qi::primitive_parser<RunParser<mask, escapes, atLeast>> {
    template <class Context, class It>
    struct attribute {
        using type = boost::spirit::unused_type;
    };
    template <class It, class Context, class Skipper, class Attribute>
    bool parse(It& first, It const& last, Context&, Skipper const&, Attribute&) const {
        It const end = endOfRun<mask, escapes>(first, last);
        if (atLeast > 0 && end == first) {
            return false;
        }
        first = end;
        return true;
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("run");
    }
};

template <ClassMask mask>
typename boost::proto::terminal<ClassParser<mask>>::type const one{{}};

template <char32_t wanted>
typename boost::proto::terminal<CodePointParser<wanted>>::type const cp{{}};

template <ClassMask mask, Escapes escapes = Escapes::none, int atLeast = 0>
typename boost::proto::terminal<RunParser<mask, escapes, atLeast>>::type const run{{}};

} // namespace foundation::network::iri::grammar
