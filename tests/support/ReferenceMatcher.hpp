#pragma once

// A slow, plain matcher of IRI references: each rule of the grammar as a function from a place in a text to
// the place behind what it matched, or to `none`, which every rule hands on. No tables, no looks ahead, no
// runs.

#include <boost/spirit/home/support/char_encoding/unicode.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace support {

struct ReferenceParts {
    using Field = std::optional<std::u32string>;
    Field scheme, userInfo, host, port, path, query, fragment;
};

class ReferenceMatcher {
public:
    static std::optional<ReferenceParts> match(std::u32string_view text) {
        ReferenceMatcher matcher(text);
        return matcher.reference() == text.size() ? std::optional(matcher.parts) : std::nullopt;
    }

    static bool alpha(char32_t c) { return c <= 0x10FFFF && Unicode::isalpha(c) != 0; }
    static bool digit(char32_t c) { return c <= 0x10FFFF && Unicode::isdigit(c) != 0; }
    static bool xdigit(char32_t c) {
        return in(c, U'0', U'9') || in(c, U'A', U'F') || in(c, U'a', U'f') || in(c, 0xFF10, 0xFF19) ||
               in(c, 0xFF21, 0xFF26) || in(c, 0xFF41, 0xFF46);
    }
    static bool ucschar(char32_t c) {
        bool found =
            in(c, 0xA0, 0xD7FF) || in(c, 0xF900, 0xFDCF) || in(c, 0xFDF0, 0xFFEF) || in(c, 0xE1000, 0xEFFFD);
        for (char32_t plane = 0x10000; plane <= 0xD0000; plane += 0x10000) {
            found = found || in(c, plane, plane + 0xFFFD);
        }
        return found;
    }
    static bool iprivate(char32_t c) {
        return in(c, 0xE000, 0xF8FF) || in(c, 0xE0000, 0xE0FFF) || in(c, 0xF0000, 0xFFFFD) ||
               in(c, 0x100000, 0x10FFFD);
    }
    static bool iunreserved(char32_t c) { return alpha(c) || digit(c) || oneOf(c, U"-._~") || ucschar(c); }
    static bool subDelims(char32_t c) { return oneOf(c, U"!$&'()*+,;="); }

private:
    using Unicode = boost::spirit::char_encoding::unicode;
    using At = std::size_t;
    static constexpr At none = std::u32string_view::npos;

    explicit ReferenceMatcher(std::u32string_view whole) : text(whole) {}

    static bool in(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }
    static bool oneOf(char32_t c, std::u32string_view set) { return set.find(c) != set.npos; }
    static bool regName(char32_t c) { return iunreserved(c) || subDelims(c); }
    static bool userInfo(char32_t c) { return regName(c) || c == U':'; }
    static bool ipchar(char32_t c) { return regName(c) || oneOf(c, U":@%"); }
    static bool noColon(char32_t c) { return regName(c) || oneOf(c, U"@%"); }
    static bool query(char32_t c) { return ipchar(c) || oneOf(c, U"/?") || iprivate(c); }
    static bool fragment(char32_t c) { return ipchar(c) || oneOf(c, U"/?"); }
    static bool schemeRest(char32_t c) { return alpha(c) || digit(c) || oneOf(c, U"+.-"); }
    static bool hostGoesOn(char32_t c) { return regName(c) || c == U'@'; }

    using Test = bool (*)(char32_t);
    static At either(At first, At second) { return first != none ? first : second; }
    At one(At at, Test test) const { return at < text.size() && test(text[at]) ? at + 1 : none; }
    At lit(At at, std::u32string_view wanted) const {
        return at <= text.size() && text.substr(at, wanted.size()) == wanted ? at + wanted.size() : none;
    }
    At pctEncoded(At at) const { return one(one(lit(at, U"%"), xdigit), xdigit); }
    // *( characters of a test / pct-encoded )
    At many(At at, Test test, bool escapes) const {
        for (At next = at; next != none; next = either(one(at, test), escapes ? pctEncoded(at) : none)) {
            at = next;
        }
        return at;
    }
    At manyAtLeastOne(At at, Test test) const {
        At const end = many(at, test, false);
        return end == at ? none : end;
    }

    At decOctet(At at) const {
        unsigned value = 0;
        At end = at;
        for (; end < text.size() && end < at + 3 && in(text[end], U'0', U'9'); ++end) {
            value = value * 10 + (text[end] - U'0');
        }
        return end == at || value > 255 || one(lit(at, U"0"), digit) != none ? none : end;
    }
    At ipv4(At at) const {
        at = decOctet(at);
        for (int i = 0; i < 3; ++i) {
            at = decOctet(lit(at, U"."));
        }
        return at;
    }
    At h16(At at) const {
        At end = at;
        while (at != none && end < at + 4 && one(end, xdigit) != none) {
            ++end;
        }
        return end == at ? none : end;
    }
    At group(At at) const { return lit(h16(at), U":"); }
    At ls32(At at) const { return either(h16(group(at)), ipv4(at)); }
    At groups(At at, int count) const {
        for (; count > 0; --count) {
            at = group(at);
        }
        return at;
    }
    // before( P ) [ h16 ] "::"
    At compressed(At at, int before) const {
        for (; before > 0; --before) {
            At const next = group(at);
            at = next != none && lit(next, U":") == none ? next : at;
        }
        return lit(either(h16(at), at), U"::");
    }
    At ipv6(At at) const {
        At found = either(ls32(groups(at, 6)), ls32(groups(lit(at, U"::"), 5)));
        for (int before = 0; before <= 4; ++before) {
            found = either(found, ls32(groups(compressed(at, before), 4 - before)));
        }
        return either(either(found, h16(compressed(at, 5))), compressed(at, 6));
    }
    At ipvFuture(At at) const {
        return manyAtLeastOne(lit(manyAtLeastOne(lit(at, U"v"), xdigit), U"."), userInfo);
    }
    At ihost(At at) const {
        At const inside = lit(at, U"[");
        At const literal = lit(either(ipv6(inside), ipvFuture(inside)), U"]");
        At const address = ipv4(at);
        bool const goesOn = one(address, hostGoesOn) != none || pctEncoded(address) != none;
        return either(literal, address != none && !goesOn ? address : many(at, regName, true));
    }
    // *( "/" isegment )
    At segments(At at) const {
        for (At next = at; next != none; next = lit(at, U"/")) {
            at = next == at ? at : many(next, ipchar, true);
        }
        return at;
    }

    At cut(At from, At to, ReferenceParts::Field& field) const {
        field = text.substr(from, to - from);
        return to;
    }
    At authority(At at) {
        At const user = many(at, userInfo, true);
        if (At const behind = lit(user, U"@"); behind != none) {
            cut(at, user, parts.userInfo);
            at = behind;
        }
        at = cut(at, ihost(at), parts.host);
        if (At const colon = lit(at, U":"); colon != none) {
            at = cut(colon, many(colon, digit, false), parts.port);
        }
        return cut(at, segments(at), parts.path);
    }
    At hierarchical(At at, bool relative) {
        if (At const behind = lit(at, U"//"); behind != none) {
            return authority(behind);
        }
        At const slash = lit(at, U"/");
        At const begin = either(slash, at);
        At const first = many(begin, slash == none && relative ? noColon : ipchar, true);
        return cut(at, first == begin ? begin : segments(first), parts.path);
    }
    At reference() {
        At const scheme = one(0, alpha) == none ? none : many(0, schemeRest, false);
        At at = lit(scheme, U":");
        at = at == none ? 0 : (cut(0, scheme, parts.scheme), at);
        at = hierarchical(at, !parts.scheme);
        if (At const mark = lit(at, U"?"); mark != none) {
            at = cut(mark, many(mark, query, true), parts.query);
        }
        if (At const hash = lit(at, U"#"); hash != none) {
            at = cut(hash, many(hash, fragment, true), parts.fragment);
        }
        return at;
    }

    std::u32string_view text;
    ReferenceParts parts;
};

} // namespace support
