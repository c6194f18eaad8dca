#pragma once

#include "text/AsciiRuns.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The character classes of RFC 3986 and RFC 3987 as one table of bits, so that a rule asks for a union of
/// classes with a single look-up.
namespace foundation::network::iri::grammar {

using ClassMask = std::uint16_t;

/// One bit a class; a rule's set is the union of some.
enum CharacterClass : ClassMask {
    ALPHA = 1 << 0,           // Unicode's Alphabetic: letters of a scheme
    DIGIT = 1 << 1,           // Unicode's Nd: digits of a scheme and of a port
    XDIGIT = 1 << 2,          // Unicode's Hex_Digit, with the full-width forms
    UNRESERVED_MARK = 1 << 3, // -._~
    SUB_DELIMS = 1 << 4,      // !$&'()*+,;=
    COLON = 1 << 5,
    AT = 1 << 6,
    SLASH = 1 << 7,
    QUESTION_MARK = 1 << 8,
    PERCENT = 1 << 9,
    SCHEME_MARK = 1 << 10, // +.-
    UCSCHAR = 1 << 11,
    IPRIVATE = 1 << 12,
};

// Unions that carry a name in RFC 3987. `iunreserved` needs no ALPHA and DIGIT beyond ASCII: all of those are
// ucschar (a test holds this).
inline constexpr ClassMask ALNUM = ALPHA | DIGIT;
inline constexpr ClassMask SCHEME = ALNUM | SCHEME_MARK; // behind its first letter
inline constexpr ClassMask IUNRESERVED = ALNUM | UNRESERVED_MARK | UCSCHAR;
inline constexpr ClassMask IREG_NAME = IUNRESERVED | SUB_DELIMS;
inline constexpr ClassMask IREG_NAME_OR_AT = IREG_NAME | AT;
inline constexpr ClassMask IUSERINFO = IREG_NAME | COLON;
inline constexpr ClassMask IPCHAR = IREG_NAME | COLON | AT | PERCENT;
inline constexpr ClassMask ISEGMENT_NZ_NC = IREG_NAME | AT | PERCENT;
inline constexpr ClassMask PATH = IPCHAR | SLASH;
inline constexpr ClassMask IFRAGMENT = IPCHAR | SLASH | QUESTION_MARK;
inline constexpr ClassMask IQUERY = IFRAGMENT | IPRIVATE;

namespace detail {

constexpr std::array<ClassMask, 128> makeAsciiClasses() {
    std::array<ClassMask, 128> classes{};
    auto const add = [&classes](std::string_view characters, CharacterClass bit) {
        for (char const c : characters) {
            auto& mask = classes[static_cast<unsigned char>(c)];
            mask = static_cast<ClassMask>(mask | bit);
        }
    };
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", ALPHA);
    add("0123456789", DIGIT);
    add("0123456789ABCDEFabcdef", XDIGIT);
    add("-._~", UNRESERVED_MARK);
    add("!$&'()*+,;=", SUB_DELIMS);
    add(":", COLON);
    add("@", AT);
    add("/", SLASH);
    add("?", QUESTION_MARK);
    add("%", PERCENT);
    add("+.-", SCHEME_MARK);
    return classes;
}

inline constexpr std::array<ClassMask, 128> asciiClasses = makeAsciiClasses();

/// Whether `c`, which is not ASCII, is in one of the classes of `mask`. False for values above U+10FFFF.
bool isBeyondAscii(char32_t c, ClassMask mask) noexcept;

/// The ASCII characters in the classes of `mask`.
template <ClassMask mask>
inline constexpr text::AsciiTable asciiTable = [] {
    text::AsciiTable table{};
    for (std::size_t c = 0; c != table.size(); ++c) {
        table[c] = (asciiClasses[c] & mask) != 0 ? 1 : 0;
    }
    return table;
}();

} // namespace detail

/// Whether `c` is in one of the classes of `mask`. Any value may be asked for; those above U+10FFFF, the
/// surrogates and the noncharacters are in no class. Constant time for `ucschar` and ASCII.
template <ClassMask mask>
[[nodiscard]] inline bool is(char32_t c) noexcept {
    if (c < 128) {
        return (detail::asciiClasses[c] & mask) != 0;
    }
    if constexpr ((mask & UCSCHAR) != 0) {
        // The largest range of ucschar, in which nearly all text lies.
        if (c >= 0xA0 && c <= 0xD7FF) {
            return true;
        }
    }
    return detail::isBeyondAscii(c, mask);
}

} // namespace foundation::network::iri::grammar
