#include "text/Transcoding.hpp"

#include <foundation/core/except/InternalException.hpp>

#include "text/CodePoints.hpp"
#include "text/Scans.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace foundation::network::text {

namespace {

using core::except::detail::makeInternalException;

// "0x" and lower-case digits; zero alone has no prefix.
std::string hexadecimal(char32_t value) {
    std::array<char, 16> digits{};
    auto const length = std::snprintf(digits.data(), digits.size(), "%#x", static_cast<unsigned>(value));
    return {digits.data(), static_cast<std::size_t>(length)};
}

// Reads the code point at `at`, and moves behind it; gives false, and stays, where the sequence is not
// well-formed. Inlined, or else the places would live in memory.
[[gnu::always_inline]] inline bool read(char const*& at, char const* end, char32_t& codePoint) {
    if (static_cast<unsigned char>(*at) < 0x80) {
        codePoint = static_cast<unsigned char>(*at++);
        return true;
    }
    unsigned const lead = static_cast<unsigned char>(*at);
    if (end - at >= 3) { // nearly all: two or three bytes, each test of all of them at once
        unsigned const second = static_cast<unsigned char>(at[1]) ^ 0x80U;
        unsigned const third = static_cast<unsigned char>(at[2]) ^ 0x80U;
        if (lead - 0xC2U < 0xE0U - 0xC2U && second < 0x40) {
            codePoint = (lead & 0x1F) << 6 | second;
            at += 2;
            return true;
        }
        codePoint = (lead & 0x0F) << 12 | second << 6 | third;
        if (lead >> 4U == 0xE && (second | third) < 0x40 && codePoint > 0x7FF && !isSurrogate(codePoint)) {
            at += 3;
            return true;
        }
    }
    Utf8Sequence const sequence = decodeUtf8(lead, [at, end](unsigned i) -> int {
        return static_cast<std::size_t>(end - at) > i ? static_cast<unsigned char>(at[i]) : -1;
    });
    if (sequence.wellFormed) {
        at += sequence.length;
        codePoint = sequence.codePoint;
    }
    return sequence.wellFormed;
}
[[gnu::always_inline]] inline bool read(char16_t const*& at, char16_t const* end, char32_t& codePoint) {
    codePoint = *at;
    if (isSurrogate(codePoint)) {
        if (!isLeadSurrogate(codePoint) || end - at < 2 || !isTrailSurrogate(at[1])) {
            return false;
        }
        codePoint = fromSurrogates(codePoint, *++at);
    }
    ++at;
    return true;
}
[[gnu::always_inline]] inline bool read(char32_t const*& at, char32_t const* /*end*/, char32_t& codePoint) {
    codePoint = *at;
    if (!isScalar(codePoint)) {
        return false;
    }
    ++at;
    return true;
}

// How many units a text takes in another form; of one that is not well-formed, at least those of what stands
// before the fault.
template <class Out>
std::size_t lengthIn(std::string_view utf8) {
    std::size_t length = 0;
    for (char const c : utf8) {
        auto const byte = static_cast<signed char>(c);
        length += byte > -65 ? 1U : 0U; // no continuation byte
        if constexpr (sizeof(Out) == sizeof(char16_t)) {
            length += byte > -17 && byte < 0 ? 1U : 0U; // begins a sequence of four bytes
        }
    }
    return length;
}
template <class Out>
std::size_t lengthIn(std::u16string_view text) {
    std::size_t length = 0;
    for (char16_t const c : text) {
        if constexpr (sizeof(Out) == 1) {
            length += isSurrogate(c) ? 2 : utf8Length(c);
        } else {
            length += isTrailSurrogate(c) ? 0U : 1U;
        }
    }
    return length;
}
template <class Out>
std::size_t lengthIn(std::u32string_view text) {
    std::size_t length = 0;
    for (char32_t const c : text) {
        if constexpr (sizeof(Out) == 1) {
            length += utf8Length(c);
        } else {
            length += c > 0xFFFF ? 2U : 1U;
        }
    }
    return length;
}

// Whether each element has one unit in both forms. The bits of all together nearly always tell.
template <class Out, class In>
bool isOneToOne(std::basic_string_view<In> text) {
    In const bits = bitsOfAll(text);
    if constexpr (sizeof(In) == 1 || sizeof(Out) == 1) {
        return (bits & ~In(0x7F)) == 0;
    } else {
        return bits < 0x8000 || (bits <= 0xFFFF && !hasSurrogate(text));
    }
}

template <class Out, class In>
std::basic_string<Out> copied(std::basic_string_view<In> text) {
    return std::basic_string<Out>(text.begin(),
                                  text.end()); // from a range, it is not filled with zeros first
}

// Copies elements from `at` on that have one unit in both forms, a machine word at a time, and moves behind
// them. Up to a word more than those is written; where less than a word is left, nothing is done.
template <class Out, class In>
void copyPlain(In const*& at, In const* end, Out*& to) {
    constexpr std::size_t perWord = sizeof(std::uint64_t) / sizeof(In);
    // The bits that an element with one unit does not have; some that have are taken for others, and go the
    // longer way.
    constexpr std::uint64_t notPlain =
        sizeof(In) == 1 || sizeof(Out) == 1 ? ~std::uint64_t{0x7F} : ~std::uint64_t{0x7FFF};
    constexpr std::uint64_t ofOne = notPlain & (~std::uint64_t{0} >> (64 - 8 * sizeof(In)));
    constexpr std::uint64_t ones = ~std::uint64_t{0} / (~std::uint64_t{0} >> (64 - 8 * sizeof(In)));
    while (static_cast<std::size_t>(end - at) >= perWord) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        for (std::size_t i = 0; i != perWord; ++i) {
            to[i] = static_cast<Out>(at[i]);
        }
        std::uint64_t const found = word & ones * ofOne;
        if (found != 0) {
            int const zeros = std::endian::native == std::endian::little ? std::countr_zero(found)
                                                                         : std::countl_zero(found);
            auto const plain = static_cast<std::size_t>(zeros) / (8 * sizeof(In));
            at += plain;
            to += plain;
            return;
        }
        at += perWord;
        to += perWord;
    }
}

// The way of a text that has elements with more units than one. It goes through a buffer: short texts then
// need no look at their length first, and nothing is filled with zeros.
template <class Out, class In>
std::size_t transcodeOneByOne(std::basic_string_view<In> text, std::basic_string<Out>& out) {
    constexpr std::size_t piece = 256;
    constexpr std::size_t most = sizeof(Out) == 1 ? 4 : sizeof(Out) == 2 ? 2 : 1; // units of one element
    Out buffer[piece * most + sizeof(std::uint64_t)];
    std::basic_string<Out> result;
    if (text.size() > piece) {
        result.reserve(lengthIn<Out>(text));
    }
    In const* at = text.data();
    In const* const end = at + text.size();
    while (at != end) {
        In const* const stop = at + std::min(piece, static_cast<std::size_t>(end - at));
        Out* to = buffer;
        while (at < stop) {
            copyPlain(at, stop, to);
            char32_t codePoint = 0;
            do { // what is not plain mostly comes in rows
                if (at >= stop) {
                    break;
                }
                if (!read(at, end, codePoint)) {
                    return static_cast<std::size_t>(at - text.data());
                }
                to = put(codePoint, to);
            } while (codePoint > 0x7F || static_cast<std::size_t>(stop - at) < sizeof(std::uint64_t));
        }
        result.append(buffer, static_cast<std::size_t>(to - buffer));
    }
    out = std::move(result);
    return noFault;
}

template <class In>
std::size_t transcode(std::basic_string_view<In> text, std::u32string& out) {
    if (isOneToOne<char32_t>(text)) {
        out = copied<char32_t>(text);
        return noFault;
    }
    return transcodeOneByOne(text, out);
}

[[noreturn]] void refuse(std::u16string_view text, std::size_t at) {
    throwNotUtf16(misplacedUnit(text, at));
}
[[noreturn]] void refuse(std::string_view /*utf8*/, std::size_t /*at*/) {
    throwNotUtf8();
}
[[noreturn]] void refuse(std::u32string_view text, std::size_t at) {
    throwInvalidCodePoint(text[at]);
}

template <class Out, class In>
std::basic_string<Out> transcoded(std::basic_string_view<In> text) {
    if (isOneToOne<Out>(text)) {
        return copied<Out>(text);
    }
    std::basic_string<Out> result;
    std::size_t const fault = transcodeOneByOne(text, result);
    if (fault != noFault) {
        refuse(text, fault);
    }
    return result;
}

} // namespace

std::size_t toUtf32(std::u16string_view text, std::u32string& out) {
    return transcode(text, out);
}
std::size_t toUtf32(std::string_view utf8, std::u32string& out) {
    return transcode(utf8, out);
}

std::u32string toUtf32(std::u16string_view text) {
    return transcoded<char32_t>(text);
}
std::u32string toUtf32(std::string_view utf8) {
    return transcoded<char32_t>(utf8);
}
std::u16string toUtf16(std::u32string_view text) {
    return transcoded<char16_t>(text);
}
std::u16string toUtf16(std::string_view utf8) {
    return transcoded<char16_t>(utf8);
}
std::string toUtf8(std::u32string_view text) {
    return transcoded<char>(text);
}
std::string toUtf8(std::u16string_view text) {
    return transcoded<char>(text);
}

void throwNotUtf16(char16_t misplacedUnit) {
    throw makeInternalException(std::out_of_range("Misplaced UTF-16 surrogate U+" +
                                                  hexadecimal(misplacedUnit) +
                                                  " encountered while trying to encode UTF-32 sequence"));
}

char16_t misplacedUnit(std::u16string_view text, std::size_t at) {
    if (!isLeadSurrogate(text[at])) {
        return text[at];
    }
    return at + 1 < text.size() ? text[at + 1] : char16_t(0);
}

void throwNotUtf8() {
    throw makeInternalException(
        std::out_of_range("Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"));
}

void throwInvalidCodePoint(char32_t codePoint) {
    throw makeInternalException(std::out_of_range("Invalid UTF-32 code point U+" + hexadecimal(codePoint) +
                                                  " encountered while trying to encode UTF-16 sequence"));
}

} // namespace foundation::network::text
