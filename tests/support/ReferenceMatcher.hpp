#pragma once

// A slow, plain matcher of IRI references: each rule of the grammar as a function that takes a place in a
// text and gives the place behind what it matched, or nothing. No tables, no looks ahead, no runs.

#include <boost/spirit/home/support/char_encoding/unicode.hpp>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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
    using Match = std::optional<At>;
    using Rule = Match (ReferenceMatcher::*)(At) const;

    explicit ReferenceMatcher(std::u32string_view whole) : text(whole) {}

    static bool in(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }
    static bool oneOf(char32_t c, std::u32string_view set) { return set.find(c) != set.npos; }

    template <class Test>
    Match one(At at, Test test) const {
        return at < text.size() && test(text[at]) ? Match(at + 1) : std::nullopt;
    }
    Match literal(At at, std::u32string_view wanted) const {
        return text.substr(at, wanted.size()) == wanted ? Match(at + wanted.size()) : std::nullopt;
    }
    Match pctEncoded(At at) const {
        Match const percent = literal(at, U"%");
        Match const first = percent ? one(*percent, xdigit) : percent;
        return first ? one(*first, xdigit) : first;
    }
    // *( characters of a test / pct-encoded )
    template <class Test>
    At many(At at, Test test, bool escapes) const {
        while (true) {
            Match next = one(at, test);
            next = next || !escapes ? next : pctEncoded(at);
            if (!next) {
                return at;
            }
            at = *next;
        }
    }
    static bool iregNameCharacter(char32_t c) { return iunreserved(c) || subDelims(c); }
    static bool iuserinfoCharacter(char32_t c) { return iregNameCharacter(c) || c == U':'; }
    static bool ipcharCharacter(char32_t c) { return iregNameCharacter(c) || oneOf(c, U":@%"); }
    static bool noColonCharacter(char32_t c) { return iregNameCharacter(c) || oneOf(c, U"@%"); }

    Match decOctet(At at) const {
        if (literal(at, U"0") && one(at + 1, digit)) {
            return std::nullopt;
        }
        unsigned value = 0;
        At end = at;
        for (; end < text.size() && end < at + 3 && in(text[end], U'0', U'9'); ++end) {
            value = value * 10 + (text[end] - U'0');
        }
        return end == at || value > 255 ? std::nullopt : Match(end);
    }
    Match ipv4(At at) const {
        Match place = decOctet(at);
        for (int i = 0; i < 3 && place; ++i) {
            place = literal(*place, U".");
            place = place ? decOctet(*place) : place;
        }
        return place;
    }
    Match h16(At at) const {
        At end = at;
        while (end < at + 4 && one(end, xdigit)) {
            ++end;
        }
        return end == at ? std::nullopt : Match(end);
    }
    Match group(At at) const {
        Match const digits = h16(at);
        return digits ? literal(*digits, U":") : digits;
    }
    Match ls32(At at) const {
        Match place = group(at);
        place = place ? h16(*place) : place;
        return place ? place : ipv4(at);
    }
    At optionalGroup(At at) const {
        Match const place = group(at);
        return place && !literal(*place, U":") ? *place : at;
    }
    // n(P) [ h16 ] "::" m(G) and then a last rule, or nothing
    Match compressed(At at, int before, int after, Rule last) const {
        for (int i = 0; i < before; ++i) {
            at = optionalGroup(at);
        }
        Match place = literal(h16(at).value_or(at), U"::");
        for (int i = 0; i < after && place; ++i) {
            place = group(*place);
        }
        return place && last != nullptr ? (this->*last)(*place) : place;
    }
    Match ipv6(At at) const {
        Match full = at;
        for (int i = 0; i < 6 && full; ++i) {
            full = group(*full);
        }
        full = full ? ls32(*full) : full;
        if (full) {
            return full;
        }
        if (literal(at, U"::")) { // the second alternative has no h16 before its "::"
            Match const second = compressed(at, 0, 5, &ReferenceMatcher::ls32);
            if (second) {
                return second;
            }
        }
        for (int before = 0; before <= 6; ++before) {
            Rule const last = before <= 4   ? &ReferenceMatcher::ls32
                              : before == 5 ? &ReferenceMatcher::h16
                                            : nullptr;
            Match const found = compressed(at, before, before < 4 ? 4 - before : 0, last);
            if (found) {
                return found;
            }
        }
        return std::nullopt;
    }
    Match ipvFuture(At at) const {
        Match const v = literal(at, U"v");
        At const digits = v ? many(*v, xdigit, false) : at;
        Match const dot = v && digits != *v ? literal(digits, U".") : std::nullopt;
        At const end = dot ? many(*dot, iuserinfoCharacter, false) : at;
        return dot && end != *dot ? Match(end) : std::nullopt;
    }
    At ihost(At at) const {
        if (Match const open = literal(at, U"[")) {
            Match const inside = ipv6(*open) ? ipv6(*open) : ipvFuture(*open);
            Match const close = inside ? literal(*inside, U"]") : inside;
            if (close) {
                return *close;
            }
        }
        if (Match const end = ipv4(at)) {
            auto const goesOn = [](char32_t c) { return iregNameCharacter(c) || c == U'@'; };
            if (!one(*end, goesOn) && !pctEncoded(*end)) {
                return *end;
            }
        }
        return many(at, iregNameCharacter, true);
    }
    // *( "/" isegment )
    At segments(At at) const {
        while (Match const slash = literal(at, U"/")) {
            at = many(*slash, ipcharCharacter, true);
        }
        return at;
    }
    std::u32string cut(At from, At to) const { return std::u32string(text.substr(from, to - from)); }

    At hierarchical(At at, bool relative) {
        if (Match const authority = literal(at, U"//")) {
            at = *authority;
            At const user = many(at, iuserinfoCharacter, true);
            if (Match const behind = literal(user, U"@")) {
                parts.userInfo = cut(at, user);
                at = *behind;
            }
            At const host = ihost(at);
            parts.host = cut(at, host);
            at = host;
            if (Match const colon = literal(at, U":")) {
                at = many(*colon, digit, false);
                parts.port = cut(*colon, at);
            }
            At const path = segments(at);
            parts.path = cut(at, path);
            return path;
        }
        At end = at;
        if (Match const slash = literal(at, U"/")) {
            end = many(*slash, ipcharCharacter, true);
            end = end == *slash ? end : segments(end);
        } else {
            end = relative ? many(at, noColonCharacter, true) : many(at, ipcharCharacter, true);
            end = end == at ? end : segments(end);
        }
        parts.path = cut(at, end);
        return end;
    }
    At reference() {
        At at = 0;
        if (Match const first = one(0, alpha)) {
            At const end = many(
                *first, [](char32_t c) { return alpha(c) || digit(c) || oneOf(c, U"+.-"); }, false);
            if (Match const colon = literal(end, U":")) {
                parts.scheme = cut(0, end);
                at = *colon;
            }
        }
        at = hierarchical(at, !parts.scheme);
        if (Match const mark = literal(at, U"?")) {
            at = many(
                *mark, [](char32_t c) { return ipcharCharacter(c) || oneOf(c, U"/?") || iprivate(c); }, true);
            parts.query = cut(*mark, at);
        }
        if (Match const hash = literal(at, U"#")) {
            at = many(
                *hash, [](char32_t c) { return ipcharCharacter(c) || oneOf(c, U"/?"); }, true);
            parts.fragment = cut(*hash, at);
        }
        return at;
    }

    std::u32string_view text;
    ReferenceParts parts;
};

} // namespace support
