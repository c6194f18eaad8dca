// The grammar of IRI references, in the shape of RFC 3987, section 2.2, with its rule names. It is a parsing
// expression grammar: the first alternative that matches wins, a repetition gives nothing back.
//
//   IRI-reference   = IRI / irelative-ref
//   IRI             = scheme ":" ihier-part [ "?" iquery ] [ "#" ifragment ]
//   irelative-ref   = irelative-part [ "?" iquery ] [ "#" ifragment ]
//   ihier-part      = authority-form / ipath-absolute / ipath-rootless / ipath-empty
//   irelative-part  = authority-form / ipath-absolute / ipath-noscheme / ipath-empty
//   authority-form  = ( "//" iuserinfo "@" / "//" ) ihost [ ":" iport ] ipath-abempty
//   scheme          = alpha *( alnum / "+" / "." / "-" )
//   iuserinfo       = *( iunreserved / pct-encoded / sub-delims / ":" )
//   iport           = *digit
//   ipath-abempty   = *( "/" isegment )
//   ipath-absolute  = "/" [ isegment-nz *( "/" isegment ) ]
//   ipath-rootless  = isegment-nz *( "/" isegment )
//   ipath-noscheme  = isegment-nz-nc *( "/" isegment )
//   isegment        = *ipchar
//   isegment-nz     = 1*ipchar
//   isegment-nz-nc  = 1*( iunreserved / pct-encoded / sub-delims / "@" / "%" )
//   ipchar          = iunreserved / pct-encoded / sub-delims / ":" / "@" / "%"
//   iquery          = *( ipchar / "/" / "?" / iprivate )
//   ifragment       = *( ipchar / "/" / "?" )
//
// What differs from RFC 3987, and why:
//   - A "%" without two hexadecimal digits behind it is taken in paths, queries and fragments, as users type
//     and servers send it; the strict text forms write it as "%25". Hosts and user information refuse it.
//   - scheme takes the Unicode classes Alphabetic and Nd, not ASCII alone.
//   - iport takes digits of any script here; the port reader behind the match narrows that to a 16-bit
//   number.
//   - iprivate has a fourth range, U+E0000 to U+E0FFF.
//   - Choice is ordered: once a scheme and a colon have matched, irelative-ref is not tried any more, and
//     user information counts only if nothing outside its set stands before the "@".
// A bare "%" being a character of its own, pct-encoded needs no look of its own in a path: the ranges are the
// same either way. All runs of segments are one run of ( ipchar / "/" ) for the same reason.

#include "iri/grammar/IriGrammar.hpp"

#include "base/NeverDestroyed.hpp"
#include "iri/grammar/HostGrammar.hpp"
#include "iri/grammar/PortReader.hpp"

#include <algorithm>
#include <iterator>

namespace foundation::network::iri::grammar {

namespace {

using iri::detail::Components;

using Place = std::size_t Components::*;

/// What the places of a match are written to, and where its text begins.
struct Places {
    Components* found = nullptr;
    Iterator begin = nullptr;
};

/// Consumes nothing, and writes the current place, or that of the character before it. No place is ever taken
/// back: where an alternative that has written one fails, the next one writes it again.
template <Place place, std::size_t before = 0>
struct MarkParser : qi::primitive_parser<MarkParser<place, before>> {
    template <class Context, class It>
    struct attribute {
        using type = boost::spirit::unused_type;
    };
    template <class Context, class Skipper, class Attribute>
    bool parse(Iterator const& first, Iterator const&, Context& context, Skipper const&, Attribute&) const {
        Places const& places = boost::fusion::at_c<0>(context.attributes);
        places.found->*place = static_cast<std::size_t>(first - places.begin) - before;
        return true;
    }
    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("mark");
    }
};

template <Place place, std::size_t before = 0>
typename boost::proto::terminal<MarkParser<place, before>>::type const mark{{}};

} // namespace

} // namespace foundation::network::iri::grammar

namespace boost::spirit::traits {

/// So that Qi leaves the places to the marks, and does not fill them by itself.
template <foundation::network::iri::grammar::Place place, std::size_t before>
struct has_semantic_action<foundation::network::iri::grammar::MarkParser<place, before>> : mpl::true_ {};

} // namespace boost::spirit::traits

namespace foundation::network::iri::grammar {

namespace {

auto schemeParser() {
    return qi::copy(one<ALPHA> >> run<SCHEME>);
}

struct IriGrammar : qi::grammar<Iterator, Places()> {
    IriGrammar() : IriGrammar::base_type(iriReference, "IRI Grammar") {
        auto const userInfo = qi::copy(run<IUSERINFO, Escapes::percent> >> cp<U'@'>);
        // Nearly all authorities are a name that ends with them. The longer way would give the same: user
        // information fails there, and the alternatives of a host all end where this run does.
        auto const nameAlone = qi::copy(mark<&Components::hostBegin> >> run<IREG_NAME> >>
                                        mark<&Components::hostEnd> >> (&cp<U'/'> | qi::eoi));
        auto const allParts = qi::copy(-userInfo >> mark<&Components::hostBegin> >> host >>
                                       mark<&Components::hostEnd> >> -(cp<U':'> >> run<DIGIT>));
        auto const authority =
            qi::copy(cp<U'/'> >> cp<U'/'> >> (nameAlone | allParts) >> mark<&Components::pathBegin>);
        auto const noAuthority = qi::copy(mark<&Components::hostBegin> >> mark<&Components::hostEnd> >>
                                          mark<&Components::pathBegin>);

        // Behind the look for "//", a path form is any run of its characters.
        auto const ipathAbempty = qi::copy(-(&cp<U'/'> >> run<PATH>));
        auto const pathForm = qi::copy(run<PATH>);
        auto const relativePathForm = qi::copy(run<ISEGMENT_NZ_NC> >> ipathAbempty);

        iriReference = (schemeParser() >> cp<U':'> >> mark<&Components::schemeEnd, 1> >>
                            (authority >> ipathAbempty | noAuthority >> pathForm)   //
                        | authority >> ipathAbempty                                 //
                        | noAuthority >> relativePathForm)                          //
                       >> mark<&Components::pathEnd>                                //
                       >> -(cp<U'?'> >> run<IQUERY>) >> mark<&Components::queryEnd> //
                       >> -(cp<U'#'> >> run<IFRAGMENT>) >> mark<&Components::end>;
    }

private:
    HostGrammar const host;
    qi::rule<Iterator, Places()> iriReference;
};

} // namespace

bool matchIriReference(std::u32string_view text, Components& found) {
    using iri::detail::Form;
    static base::NeverDestroyed<IriGrammar> const grammar;
    Iterator at = text.data();
    Places places{&found, at};
    if (!qi::parse(at, text.data() + text.size(), *grammar, places) || found.end != text.size()) {
        return false;
    }
    std::fill(std::begin(found.forms), std::end(found.forms), Form::iri);
    found.hasPath = true;
    found.pathIsAbsolute = !found.pathIsEmpty() && text[found.pathBegin] == U'/';
    if (found.hasPort()) {
        auto const slice = found.portSlice();
        auto const number = readPort(text.substr(slice.begin, slice.length));
        found.port = number.value_or(0);
        return number.has_value();
    }
    return true;
}

bool matchScheme(std::u32string_view text) {
    auto const scheme = schemeParser();
    Iterator at = text.data();
    return qi::parse(at, text.data() + text.size(), scheme) && at == text.data() + text.size();
}

} // namespace foundation::network::iri::grammar
