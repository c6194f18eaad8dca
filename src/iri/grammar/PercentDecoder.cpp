// The grammar of a text whose escapes are decoded, a parsing expression grammar:
//
//   decoded-escape = "%" hex-pair       ; where the value of hex-pair is not excluded
//   hex-pair       = 2( ASCII hexadecimal digit )
//   start          = 1*( decoded-escape / any code point )
//
// There is one parser for a run of anything but "%", and one for an escape or a "%" alone, so that text is
// appended many code points at a time.

#include "iri/grammar/PercentDecoder.hpp"

#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"

#include <boost/spirit/include/qi.hpp>

#include <algorithm>
#include <bitset>

namespace foundation::network::iri::grammar {

namespace {

namespace qi = boost::spirit::qi;

using At = char32_t const*;
using ByteSet = std::bitset<256>;

void appendRun(std::u32string& out, At first, At end) {
    out.append(first, end);
}
void appendRun(std::string& out, At first, At end) {
    for (; first != end; ++first) {
        text::encodeUtf8(*first, [&out](unsigned char byte) { out.push_back(static_cast<char>(byte)); });
    }
}

struct PlainRun : qi::primitive_parser<PlainRun> {
    template <class Context, class It>
    struct attribute {
        using type = std::u32string;
    };
    template <class Context, class Skipper, class Text>
    bool parse(At& first, At const& last, Context&, Skipper const&, Text& out) const {
        At const end = std::find(first, last, U'%');
        if (end == first) {
            return false;
        }
        appendRun(out, first, end);
        first = end;
        return true;
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("plain-run");
    }
};

struct EscapeOrPercent : qi::primitive_parser<EscapeOrPercent> {
    template <class Context, class It>
    struct attribute {
        using type = std::u32string;
    };
    template <class Context, class Skipper, class Text>
    bool parse(At& first, At const& last, Context&, Skipper const&, Text& out) const {
        using Char = typename Text::value_type;
        if (first == last || *first != U'%') {
            return false;
        }
        int const byte = text::escapedByte({first, static_cast<std::size_t>(last - first)}, 0);
        if (byte >= 0 && !excluded[static_cast<std::size_t>(byte)]) {
            out.push_back(static_cast<Char>(byte));
            first += 3;
            return true;
        }
        out.push_back(Char('%'));
        ++first;
        return true;
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("decoded-escape");
    }

    ByteSet excluded;
};

} // namespace

} // namespace foundation::network::iri::grammar

namespace boost::spirit::traits {

// Tells Qi that both append to the text by themselves, and do not give it one element at a time.
template <class Attribute, class Context, class It>
struct handles_container<foundation::network::iri::grammar::PlainRun, Attribute, Context, It> : mpl::true_ {};
template <class Attribute, class Context, class It>
struct handles_container<foundation::network::iri::grammar::EscapeOrPercent, Attribute, Context, It>
    : mpl::true_ {};

} // namespace boost::spirit::traits

namespace foundation::network::iri::grammar {

namespace {

template <class Text>
struct DecodeGrammar : qi::grammar<At, Text()> {
    explicit DecodeGrammar(ByteSet const& excluded) : DecodeGrammar::base_type(start) {
        typename boost::proto::terminal<PlainRun>::type const plainRun{{}};
        typename boost::proto::terminal<EscapeOrPercent>::type const escapeOrPercent{{{}, excluded}};
        start = +(plainRun | escapeOrPercent);
    }

private:
    qi::rule<At, Text()> start;
};

ByteSet toSet(std::u32string const& characters) {
    ByteSet set;
    for (char32_t const c : characters) {
        if (c < set.size()) {
            set.set(c);
        }
    }
    return set;
}

template <class Text>
bool run(DecodeGrammar<Text> const& grammar, std::u32string_view text, Text& decoded) {
    Text result;
    result.reserve(text.size());
    At at = text.data();
    At const end = at + text.size();
    if (!qi::parse(at, end, grammar, result) || at != end) {
        return false;
    }
    decoded = std::move(result);
    return true;
}

} // namespace

struct percentDecodeGrammar::Grammars {
    explicit Grammars(ByteSet const& excluded) : codePoints(excluded), bytes(excluded) {}
    DecodeGrammar<std::u32string> codePoints;
    DecodeGrammar<std::string> bytes;
};

percentDecodeGrammar::percentDecodeGrammar(std::u32string const& excluded)
    : grammars(std::make_unique<Grammars const>(toSet(excluded))) {}

percentDecodeGrammar::~percentDecodeGrammar() = default;

bool percentDecodeGrammar::decode(std::u32string_view text, std::u32string& decoded) const {
    return run(grammars->codePoints, text, decoded);
}

bool percentDecodeGrammar::decode(std::u32string_view text, std::string& decoded) const {
    return run(grammars->bytes, text, decoded);
}

} // namespace foundation::network::iri::grammar
