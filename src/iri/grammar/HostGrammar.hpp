#pragma once

#include "iri/grammar/Primitives.hpp"

namespace foundation::network::iri::grammar {

/// `ihost` of RFC 3987: an IP literal in brackets, an IPv4 address or a registered name. It never fails: a
/// registered name may be empty.
struct HostGrammar : qi::grammar<Iterator> {
    HostGrammar();

private:
    qi::rule<Iterator> ihost;
    qi::rule<Iterator> ipLiteral;
    qi::rule<Iterator> ipv6Address;
    qi::rule<Iterator> ipv4Address;
    qi::rule<Iterator> h16;
    qi::rule<Iterator> ls32;
    qi::rule<Iterator> group;         // G of the ABNF in the source
    qi::rule<Iterator> optionalGroup; // P of the ABNF in the source
};

} // namespace foundation::network::iri::grammar
