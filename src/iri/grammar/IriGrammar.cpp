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

#include "iri/grammar/HostGrammar.hpp"

#include <boost/fusion/include/adapt_struct.hpp>

namespace foundation::network::iri::grammar {

namespace {

using OptionalRange = boost::optional<Range>;
using Parts = iri::detail::Parts<Iterator>;

/// The fields of a `Parts`, nested as the rules are: a rule for the hierarchical part writes straight into
/// the flat record, and nothing is copied back.
struct HierarchicalFields {
    OptionalRange& userInfo;
    OptionalRange& host;
    OptionalRange& port;
    OptionalRange& path;
};
struct ReferenceFields {
    OptionalRange& scheme;
    HierarchicalFields hierarchical;
    OptionalRange& query;
    OptionalRange& fragment;
};

} // namespace

} // namespace foundation::network::iri::grammar

// clang-format off
BOOST_FUSION_ADAPT_STRUCT(foundation::network::iri::grammar::HierarchicalFields,
    (foundation::network::iri::grammar::OptionalRange&, userInfo)
    (foundation::network::iri::grammar::OptionalRange&, host)
    (foundation::network::iri::grammar::OptionalRange&, port)
    (foundation::network::iri::grammar::OptionalRange&, path))
BOOST_FUSION_ADAPT_STRUCT(foundation::network::iri::grammar::ReferenceFields,
    (foundation::network::iri::grammar::OptionalRange&, scheme)
    (foundation::network::iri::grammar::HierarchicalFields, hierarchical)
    (foundation::network::iri::grammar::OptionalRange&, query)
    (foundation::network::iri::grammar::OptionalRange&, fragment))
// clang-format on

namespace boost::spirit::traits {

template <>
struct transform_attribute<foundation::network::iri::grammar::Parts,
                           foundation::network::iri::grammar::ReferenceFields, qi::domain> {
    using type = foundation::network::iri::grammar::ReferenceFields;
    static type pre(foundation::network::iri::grammar::Parts& parts) {
        return {
            parts.scheme, {parts.userInfo, parts.host, parts.port, parts.path}, parts.query, parts.fragment};
    }
    static void post(foundation::network::iri::grammar::Parts&, type const&) {}
    static void fail(foundation::network::iri::grammar::Parts&) {}
};

} // namespace boost::spirit::traits

namespace foundation::network::iri::grammar {

namespace {

auto schemeParser() {
    return qi::copy(qi::raw[one<ALPHA> >> qi::omit[run<ALNUM | SCHEME_MARK>]]);
}

struct IriGrammar : qi::grammar<Iterator, Parts()> {
    IriGrammar() : IriGrammar::base_type(iriReference, "IRI Grammar") {
        auto const absent = qi::attr(OptionalRange());
        auto const scheme = schemeParser();
        auto const iuserinfo = qi::copy(run<IUSERINFO, 0, Escapes::percent>);
        auto const iport = qi::copy(run<DIGIT>);
        auto const iquery = qi::copy(run<IQUERY>);
        auto const ifragment = qi::copy(run<IFRAGMENT>);

        auto const ipathAbempty = qi::copy(qi::raw[&cp<U'/'> >> qi::omit[run<PATH>] | qi::eps]);
        // "//" has been tried before, as the begin of an authority: no need to look behind the "/".
        auto const ipathAbsolute = qi::copy(qi::raw[&cp<U'/'> >> qi::omit[run<PATH>]]);
        auto const ipathRootless = qi::copy(qi::raw[&one<IPCHAR> >> qi::omit[run<PATH>]]);
        auto const ipathNoscheme =
            qi::copy(qi::raw[qi::omit[run<ISEGMENT_NZ_NC, 1>] >> -(&cp<U'/'> >> qi::omit[run<PATH>])]);
        auto const ipathEmpty = qi::copy(qi::raw[qi::eps]);

        // The look ahead keeps the field absent where no "@" follows: Qi writes a range, which it takes for a
        // container, straight into the optional field.
        auto const userInfoAhead = qi::copy(&(qi::omit[iuserinfo] >> cp<U'@'>));
        auto const authorityForm =
            qi::copy(cp<U'/'> >> cp<U'/'> >> -(userInfoAhead >> iuserinfo >> cp<U'@'>) >> host >>
                     -(cp<U':'> >> iport) >> ipathAbempty);
        ihierPart =
            authorityForm | absent >> absent >> absent >> (ipathAbsolute | ipathRootless | ipathEmpty);
        irelativePart =
            authorityForm | absent >> absent >> absent >> (ipathAbsolute | ipathNoscheme | ipathEmpty);

        auto const tail = qi::copy(-(cp<U'?'> >> iquery) >> -(cp<U'#'> >> ifragment));
        reference = scheme >> cp<U':'> >> ihierPart >> tail | absent >> irelativePart >> tail;
        iriReference = reference;
    }

private:
    HostGrammar const host;
    qi::rule<Iterator, Parts()> iriReference;
    qi::rule<Iterator, ReferenceFields()> reference;
    qi::rule<Iterator, HierarchicalFields()> ihierPart;
    qi::rule<Iterator, HierarchicalFields()> irelativePart;
};

} // namespace

bool matchIriReference(std::u32string const& text, Parts& parts) {
    static IriGrammar const grammar;
    Iterator at = text.begin();
    return qi::parse(at, text.end(), grammar, parts) && at == text.end();
}

bool matchScheme(std::u32string const& text) {
    Iterator at = text.begin();
    return qi::parse(at, text.end(), schemeParser()) && at == text.end();
}

} // namespace foundation::network::iri::grammar
