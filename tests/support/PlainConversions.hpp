#pragma once

// The conversions between the forms of a part, step by step over whole texts and by tables alone. No test for
// texts that stay as they are, no shared steps between them.

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace support::plain {

using Text = std::u32string;

struct Rules {
    std::u32string_view escaped;
    std::u32string_view kept;
    bool privateUse;
};
// User information, host, path, query, fragment; the last row is a form-encoded query.
inline constexpr std::array<Rules, 6> rules{{{U" \"#/<;=>?@[\\]^`{|}", U" \"#/<;=>?@[\\]^`{|}%", true},
                                             {U" #%/:?@[\\]", U" #%/:?@[\\]", true},
                                             {U" \"#<>?[]`{}", U" \"#%<>?[]`{}", true},
                                             {U" \"#<>`", U" \"#<>`%", false},
                                             {U" \"<>`", U" \"<>`%", true},
                                             {U" #[]", U"", false}}};
inline constexpr int path = 2;
inline constexpr int formEncoded = 5;

inline int hex(char32_t c) {
    auto const at = std::u32string_view(U"0123456789ABCDEFabcdef").find(c);
    return at == std::u32string_view::npos ? -1 : static_cast<int>(at < 16 ? at : at - 6);
}
inline Text percent(unsigned byte) {
    constexpr std::u32string_view digits = U"0123456789ABCDEF";
    return {U'%', digits[byte / 16], digits[byte % 16]};
}
inline std::string utf8(char32_t c) {
    auto const tail = [c](unsigned shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c > 0x10FFFF) {
        throw std::out_of_range(
            "Invalid UTF-32 code point U+0x110000 encountered while trying to encode UTF-16 sequence");
    }
    return c < 0x80      ? std::string{static_cast<char>(c)}
           : c < 0x800   ? std::string{static_cast<char>(0xC0 | (c >> 6)), tail(0)}
           : c < 0x10000 ? std::string{static_cast<char>(0xE0 | (c >> 12)), tail(6), tail(0)}
                         : std::string{static_cast<char>(0xF0 | (c >> 18)), tail(12), tail(6), tail(0)};
}
// The code point at the front of `bytes` and its length. Whatever does not come out the same when written
// again is no UTF-8.
inline std::optional<std::pair<char32_t, std::size_t>> codePoint(std::string_view bytes) {
    auto const lead = static_cast<unsigned char>(bytes.front());
    std::size_t const length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length && i < bytes.size(); ++i) {
        c = c * 64 + (static_cast<unsigned char>(bytes[i]) & 0x3F);
    }
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF) || bytes.substr(0, length) != utf8(c)) {
        return std::nullopt;
    }
    return std::pair(c, length);
}
inline Text fromUtf8(std::string_view bytes) {
    Text text;
    while (!bytes.empty()) {
        auto const next = codePoint(bytes);
        if (!next) {
            throw std::out_of_range(
                "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
        }
        text += next->first;
        bytes.remove_prefix(next->second);
    }
    return text;
}
inline Text percentAll(char32_t c) {
    Text text;
    for (char const byte : utf8(c)) {
        text += percent(static_cast<unsigned char>(byte));
    }
    return text;
}
template <class Replace>
Text mapped(Text const& text, Replace replace) {
    Text result;
    for (char32_t const c : text) {
        result += replace(c);
    }
    return result;
}
template <class Test>
Text escapedWhere(Text const& text, Test test) {
    return mapped(text, [test](char32_t c) { return test(c) ? percentAll(c) : Text(1, c); });
}

inline Text toUriForm(Text const& text) {
    return escapedWhere(text, [](char32_t c) { return c < 33 || c > 126; });
}
// The value of the escape at a place of a text, or -1.
inline int escapeAt(Text const& text, std::size_t i) {
    bool const whole =
        text[i] == U'%' && i + 2 < text.size() && hex(text[i + 1]) >= 0 && hex(text[i + 2]) >= 0;
    return whole ? hex(text[i + 1]) * 16 + hex(text[i + 2]) : -1;
}
inline Text decoded(Text const& text, std::u32string_view kept) {
    Text result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        int const value = escapeAt(text, i);
        bool const decode = value >= 0 && kept.find(static_cast<char32_t>(value)) == kept.npos;
        result += decode ? static_cast<char32_t>(value) : text[i];
        i += decode ? 2 : 0;
    }
    return result;
}
inline std::size_t lengthByLead(unsigned char lead, bool capped) {
    std::size_t ones = 0;
    while (ones < 8 && (lead & (0x80u >> ones)) != 0) {
        ++ones;
    }
    return ones == 0 ? 1 : capped ? (ones > 4 ? 4 : ones) : ones == 1 || ones > 6 ? 0 : ones;
}
inline bool continuation(std::string const& bytes, std::size_t at) {
    return at < bytes.size() && (static_cast<unsigned char>(bytes[at]) & 0xC0) == 0x80;
}
inline std::string lowBytes(Text const& text) {
    std::string bytes;
    for (char32_t const c : text) {
        bytes += static_cast<char>(c & 0xFF);
    }
    return bytes;
}
inline bool repaired(std::string& bytes) {
    bool sound = true;
    for (std::size_t end = bytes.size(); end != 0;) {
        std::size_t lead = end - 1;
        while (lead != 0 && continuation(bytes, lead)) {
            --lead;
        }
        sound = sound && !continuation(bytes, lead) &&
                end - lead == lengthByLead(static_cast<unsigned char>(bytes[lead]), true);
        end = lead;
    }
    if (sound) {
        return false;
    }
    std::string result;
    bool changed = false;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t const length = lengthByLead(static_cast<unsigned char>(bytes[at]), false);
        std::size_t whole = 1;
        while (whole < length && continuation(bytes, at + whole)) {
            ++whole;
        }
        bool const kept = whole == length;
        result += kept ? bytes.substr(at, length) : lowBytes(percent(static_cast<unsigned char>(bytes[at])));
        changed = changed || !kept;
        at += kept ? length : 1;
    }
    bytes = result;
    return changed;
}
inline bool isPrivate(char32_t c) {
    return (c >= 0xE000 && c <= 0xF8FF) || (c >= 0xE0000 && c <= 0xE0FFF) || (c >= 0xF0000 && c <= 0xFFFFD) ||
           (c >= 0x100000 && c <= 0x10FFFD);
}
inline bool isForbidden(char32_t c) {
    return c <= 0x1F || std::u32string_view(U"\"<>\\^`{|}").find(c) != std::u32string_view::npos ||
           (c >= 0x7F && c <= 0x9F) || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0xD800 && c <= 0xDFFF) || (c >= 0xFDD0 && c <= 0xFDEF) || (c >= 0xFFF0 && c <= 0xFFFF) ||
           (c >= 0x10001 && (c % 0x10000 == 0xFFFE || c % 0x10000 == 0xFFFF));
}
// What no part's Iri form may hold, and the colons of a path that could be taken for a scheme's.
inline Text guardedIri(int part, Text text, bool bare) {
    text = rules[static_cast<std::size_t>(part)].privateUse ? escapedWhere(text, isPrivate) : text;
    text = escapedWhere(text, isForbidden);
    std::size_t const end = part == path && bare ? std::min(text.find(U'/'), text.size()) : 0;
    return escapedWhere(text.substr(0, end), [](char32_t c) { return c == U':'; }) + text.substr(end);
}

/// `bare`: a path with neither scheme nor authority before it.
inline Text iriFromRaw(int part, Text text, bool bare) {
    if (part != formEncoded) {
        Text guarded;
        for (std::size_t i = 0; i < text.size(); ++i) {
            guarded += escapeAt(text, i) >= 0 ? Text(U"%25") : Text(1, text[i]);
        }
        text = guarded;
    }
    auto const& row = rules[static_cast<std::size_t>(part)];
    text = mapped(text, [&](char32_t c) {
        return row.escaped.find(c) == row.escaped.npos ? Text(1, c)
               : part == formEncoded && c == U' '      ? Text(U"+")
                                                       : percent(static_cast<unsigned>(c));
    });
    return guardedIri(part, text, bare);
}
inline Text rawFromIri(int part, Text const& text) {
    if (part == formEncoded) {
        return toUriForm(text);
    }
    std::string bytes = lowBytes(decoded(toUriForm(text), U""));
    bool const again = repaired(bytes);
    Text const result = fromUtf8(bytes);
    return again ? decoded(result, U"") : result;
}
inline Text iriFromUri(int part, Text const& text, bool bare) {
    if (part == formEncoded) {
        return text;
    }
    std::string bytes = lowBytes(decoded(text, rules[static_cast<std::size_t>(part)].kept));
    repaired(bytes);
    return guardedIri(part, fromUtf8(bytes), bare);
}

} // namespace support::plain
