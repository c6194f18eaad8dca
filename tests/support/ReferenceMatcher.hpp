#pragma once

// The reference implementation of the grammar: one regular expression over classes of code points.

#include "support/Laws.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <boost/spirit/home/support/char_encoding/unicode.hpp>

#include <optional>
#include <regex>
#include <string>

namespace support {

// A character for the class of a code point: printable ASCII stands for itself, a space for what no rule
// takes.
inline char classOf(char32_t c) {
    using Unicode = boost::spirit::char_encoding::unicode;
    auto const in = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
    if (c < 0x20 || in(0x7F, 0x9F) || c > 0x10FFFF) {
        return ' ';
    }
    bool const plane = in(0x10000, 0xDFFFF) && c % 0x10000 < 0xFFFE;
    return c < 0x80                                         ? static_cast<char>(c)
           : in(0xFF10, 0xFF19)                             ? '\1' // full-width digits
           : in(0xFF21, 0xFF26) || in(0xFF41, 0xFF46)       ? '\2' // full-width hexadecimal letters
           : Unicode::isalpha(c)                            ? '\3'
           : Unicode::isdigit(c)                            ? '\4'
           : in(0xA0, 0xD7FF) || in(0xF900, 0xFDCF)         ? '\5' // ucschar of RFC 3987
           : in(0xFDF0, 0xFFEF) || in(0xE1000, 0xEFFFD)     ? '\5'
           : plane                                          ? '\5'
           : in(0xE000, 0xF8FF) || in(0xE0000, 0xE0FFF)     ? '\6' // iprivate
           : in(0xF0000, 0xFFFFD) || in(0x100000, 0x10FFFD) ? '\6'
                                                            : ' ';
}

struct ReferenceParts {
    using Field = std::optional<std::u32string>;
    Field scheme, userInfo, host, port, path, query, fragment;
};

inline std::regex referenceExpression() {
    std::string const alpha = "a-zA-Z\2\3", digit = "0-9\1\4", hex = "[0-9a-fA-F\1\2]";
    std::string const name = alpha + digit + "\5._~!$&'()*+,;=-", pchar = "%:@" + name;
    std::string const escape = "%" + hex + hex;
    std::string const octet = "(?:25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])";
    std::string const h16 = hex + "{1,4}", group = "(?:" + h16 + ":)";
    std::string const ls32 = "(?:" + h16 + ":" + h16 + "|" + octet + "(?:\\." + octet + "){3})";
    auto const groupsBefore = [&](int most) {
        return "(?:" + group + "{0," + std::to_string(most) + "}" + h16 + ")?::";
    };
    std::string ipv6 = group + "{6}" + ls32 + "|::" + group + "{5}" + ls32;
    for (int before = 0; before <= 4; ++before) {
        ipv6 += "|" + groupsBefore(before) + group + "{" + std::to_string(4 - before) + "}" + ls32;
    }
    ipv6 += "|" + groupsBefore(5) + h16 + "|" + groupsBefore(6);
    std::string const literal = "\\[(?:" + ipv6 + "|v" + hex + "+\\.[:" + name + "]+)\\]";
    std::string const scheme = "([" + alpha + "][" + alpha + digit + "+.-]*)";
    std::string const userInfo = "((?:[:" + name + "]|" + escape + ")*)";
    std::string const host = "(" + literal + "|(?:[" + name + "]|" + escape + ")*)";
    std::string const port = "([" + digit + "]*)", behindHost = "((?:/[/" + pchar + "]*)?)";
    std::string const path = "((?!//)[/" + pchar + "]*)";
    std::string const query = "([/?\6" + pchar + "]*)", fragment = "([/?" + pchar + "]*)";
    std::string const authority = "//(?:" + userInfo + "@)?" + host + "(?::" + port + ")?" + behindHost;
    std::string const begin = "(?:" + scheme + ":|(?![^/?#]*:))"; // or no colon before a slash
    return std::regex(begin + "(?:" + authority + "|" + path + ")(?:\\?" + query + ")?(?:#" + fragment +
                      ")?");
}

inline std::optional<ReferenceParts> matchReference(std::u32string const& text) {
    static std::regex const expression = referenceExpression();
    std::string classes;
    for (char32_t const c : text) {
        classes += classOf(c);
    }
    std::smatch found;
    if (!std::regex_match(classes, found, expression)) {
        return std::nullopt;
    }
    auto const part = [&](std::size_t number) {
        auto const from = static_cast<std::size_t>(found.position(number));
        auto const size = static_cast<std::size_t>(found.length(number));
        return found[number].matched ? ReferenceParts::Field(text.substr(from, size)) : std::nullopt;
    };
    return ReferenceParts{part(1), part(2), part(3), part(4), part(found[5].matched ? 5 : 6),
                          part(7), part(8)};
}

// A text is taken exactly where the matcher takes it and its port is one, and taken apart as the matcher
// does; the whole comes back, in every form. Returns whether it was taken.
inline bool parsingHolds(std::u16string const& text, std::u32string const& native) {
    auto match = matchReference(native);
    unsigned short port = 0;
    if (match && match->port && !foundation::network::iri::detail::portStringToNumeric(*match->port, port)) {
        match.reset();
    }
    auto const iri = parsed(text);
    require(iri.has_value() == match.has_value(), "taken or refused unlike the regular expression", text);
    if (iri) {
        auto const is = [&](ReferenceParts::Field const& expected, bool present, auto getter) {
            require(expected.has_value() == present && (!present || toUtf16(*expected) == getter()), "apart",
                    text);
        };
        is(match->scheme, iri->hasScheme(), [&] { return iri->getScheme(); });
        is(match->userInfo, iri->hasUserInfo(), [&] { return iri->getUserInfo(Encoding::Iri); });
        is(match->host, iri->hasHost(), [&] { return iri->getHost(Encoding::Iri); });
        is(match->port, iri->hasPort(), [&] { return iri->getPort(); });
        is(match->path, true, [&] { return iri->getPath(Encoding::Iri); });
        is(match->query, iri->hasQuery(), [&] { return iri->getQuery(Encoding::Iri); });
        is(match->fragment, iri->hasFragment(), [&] { return iri->getFragment(Encoding::Iri); });
        require(!iri->hasPort() || iri->getPortNumber() == port, "another number of the port", text);
        require(iri->toString(false) == text, "another text", text);
        bool const rooted = match->path->starts_with(U'/');
        require(iri->isEmpty() == text.empty() && iri->isAbsolute() == iri->hasScheme() &&
                    iri->hasAuthority() == iri->hasHost() && iri->hasAbsolutePath() == rooted &&
                    iri->isOpaque() == (iri->hasScheme() && !iri->hasHost() && !rooted),
                "another shape", text);
        formsHold(*iri);
    }
    return iri.has_value();
}

} // namespace support
