// The grammar by which a path is split, a parsing expression grammar:
//
//   plain-run        = 1*( any code point but "/" )
//   slash-run        = "/" plain-run
//   double-slash-run = "/" "/" plain-run
//   final-slash      = "/" and the end of the text
//   start            = ( plain-run / slash-run / final-slash / double-slash-run ) *slash-run [ final-slash ]

#include "iri/grammar/PathSplitter.hpp"

#include "base/NeverDestroyed.hpp"
#include "iri/grammar/Primitives.hpp"

#include <boost/fusion/include/adapt_struct.hpp>

#include <algorithm>
#include <optional>

namespace foundation::network::iri::grammar {

namespace {

using At = char32_t const*;
using Element = boost::iterator_range<At>;

struct PathSegments {
    Element first;
    std::vector<Element> middle;
    boost::optional<Element> last;
};

struct PlainRun : qi::primitive_parser<PlainRun> {
    template <class Context, class It>
    struct attribute {
        using type = boost::spirit::unused_type;
    };
    template <class Context, class Skipper, class Attribute>
    bool parse(At& first, At const& last, Context&, Skipper const&, Attribute&) const {
        At const end = std::find(first, last, U'/');
        bool const found = end != first;
        first = end;
        return found;
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("plain-run");
    }
};

} // namespace

} // namespace foundation::network::iri::grammar

// clang-format off
BOOST_FUSION_ADAPT_STRUCT(foundation::network::iri::grammar::PathSegments,
    (foundation::network::iri::grammar::Element, first)
    (std::vector<foundation::network::iri::grammar::Element>, middle)
    (boost::optional<foundation::network::iri::grammar::Element>, last))
// clang-format on

namespace foundation::network::iri::grammar {

namespace {

struct PathGrammar : qi::grammar<At, PathSegments()> {
    PathGrammar() : PathGrammar::base_type(start) {
        boost::proto::terminal<PlainRun>::type const plain{{}};
        element = qi::raw[plain] | qi::raw[cp<U'/'> >> plain] | qi::raw[cp<U'/'> >> qi::eoi] |
                  qi::raw[cp<U'/'> >> cp<U'/'> >> plain];
        slashRun = qi::raw[cp<U'/'> >> plain];
        finalSlash = qi::raw[cp<U'/'> >> qi::eoi];
        start = element >> *slashRun >> -finalSlash;
    }

private:
    // Ranges, not texts: what a failed alternative has appended to a text would stay there.
    qi::rule<At, Element()> element;
    qi::rule<At, Element()> slashRun;
    qi::rule<At, Element()> finalSlash;
    qi::rule<At, PathSegments()> start;
};

std::u32string_view viewOf(Element const& element) {
    return {element.begin(), element.size()};
}

} // namespace

bool splitPath(std::u32string_view path, std::vector<std::u32string_view>& elements) {
    static base::NeverDestroyed<PathGrammar> const grammar;
    At at = path.data();
    At const end = at + path.size();
    PathSegments segments;
    if (!qi::parse(at, end, *grammar, segments) || at != end) {
        return false;
    }
    std::vector<std::u32string_view> found;
    found.reserve(segments.middle.size() + 2);
    found.push_back(viewOf(segments.first));
    std::transform(segments.middle.begin(), segments.middle.end(), std::back_inserter(found), viewOf);
    if (segments.last) {
        found.push_back(viewOf(*segments.last));
    }
    elements = std::move(found);
    return true;
}

} // namespace foundation::network::iri::grammar
