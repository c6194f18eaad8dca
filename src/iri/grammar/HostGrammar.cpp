// The grammar of a host. It is a parsing expression grammar: the first alternative that matches wins, and a
// rule that has matched is not tried again for another match.
//
//   ihost        = IP-literal / IPv4address !( iunreserved / pct-encoded / sub-delims / "@" ) / ireg-name
//   IP-literal   = "[" ( IPv6address / IPvFuture ) "]"
//   IPvFuture    = "v" 1*xdigit "." 1*( iunreserved / sub-delims / ":" )
//   IPv6address  = 6( G ) ls32                      ; G = h16 ":"
//                / "::" 5( G ) ls32                 ; P = [ h16 ":" !":" ]
//                / [ h16 ] "::" 4( G ) ls32
//                / P [ h16 ] "::" 3( G ) ls32
//                / 2( P ) [ h16 ] "::" 2( G ) ls32
//                / 3( P ) [ h16 ] "::" h16 ":" ls32
//                / 4( P ) [ h16 ] "::" ls32
//                / 5( P ) [ h16 ] "::" h16
//                / 6( P ) [ h16 ] "::"
//   h16          = 1*4xdigit
//   ls32         = h16 ":" h16 / IPv4address
//   IPv4address  = dec-octet 3( "." dec-octet )
//   dec-octet    = !( "0" digit ) number            ; one to three ASCII digits, at most 255
//   ireg-name    = *( iunreserved / pct-encoded / sub-delims )
//
// What differs from RFC 3986 and RFC 3987, and why:
//   - IPvFuture takes the lower-case "v" only, and iunreserved behind its dot, as a registered name does.
//   - xdigit is Unicode's Hex_Digit, with the full-width forms; digit in dec-octet's guard is Unicode's Nd.
//   - What follows an IPv4address must not go on a registered name. The first alternative would win
//   otherwise,
//     and "1.2.3.4.example" would be refused.
//   - No zone identifiers (RFC 6874).

#include "iri/grammar/HostGrammar.hpp"

namespace foundation::network::iri::grammar {

HostGrammar::HostGrammar() : HostGrammar::base_type(ihost) {
    auto const colons = qi::copy(cp<U':'> >> cp<U':'>);
    auto const octetValue = qi::uint_parser<unsigned char, 10, 1, 3>();
    auto const decOctet = qi::copy(!(cp<U'0'> >> one<DIGIT>) >> qi::omit[octetValue]);
    auto const pctEncoded = qi::copy(cp<U'%'> >> one<XDIGIT> >> one<XDIGIT>);
    auto const ipvFuture =
        qi::copy(cp<U'v'> >> run<XDIGIT, Escapes::none, 1> >> cp<U'.'> >> run<IUSERINFO, Escapes::none, 1>);
    auto const iregName = qi::copy(run<IREG_NAME, Escapes::percent>);

    ipv4Address = decOctet >> qi::repeat(3)[cp<U'.'> >> decOctet];
    h16 = qi::repeat(1, 4)[one<XDIGIT>];
    ls32 = h16 >> cp<U':'> >> h16 | ipv4Address;
    group = h16 >> cp<U':'>;
    optionalGroup = -(h16 >> cp<U':'> >> !cp<U':'>);

    ipv6Address = qi::repeat(6)[group] >> ls32                                                     //
                  | colons >> qi::repeat(5)[group] >> ls32                                         //
                  | -h16 >> colons >> qi::repeat(4)[group] >> ls32                                 //
                  | optionalGroup >> -h16 >> colons >> qi::repeat(3)[group] >> ls32                //
                  | qi::repeat(2)[optionalGroup] >> -h16 >> colons >> qi::repeat(2)[group] >> ls32 //
                  | qi::repeat(3)[optionalGroup] >> -h16 >> colons >> group >> ls32                //
                  | qi::repeat(4)[optionalGroup] >> -h16 >> colons >> ls32                         //
                  | qi::repeat(5)[optionalGroup] >> -h16 >> colons >> h16                          //
                  | qi::repeat(6)[optionalGroup] >> -h16 >> colons;
    ipLiteral = cp<U'['> >> (ipv6Address | ipvFuture) >> cp<U']'>;

    // Looking at the first character first spares nearly all hosts the address rules.
    auto const endOfAddress = qi::copy(!(one<IREG_NAME_OR_AT> | pctEncoded));
    ihost = (&cp<U'['> >> ipLiteral) | (&one<DIGIT> >> ipv4Address >> endOfAddress) | iregName;
}

} // namespace foundation::network::iri::grammar
