#include "iri/encoding/PercentEncoding.hpp"

#include "iri/grammar/CharacterClasses.hpp"
#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace foundation::network::iri::encoding {

using text::escapedByte;
using text::percentByte;
using text::upperHex;

namespace {

constexpr bool within(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

constexpr char32_t firstUriCharacter = 33;
constexpr char32_t lastUriCharacter = 126;

void percentUtf8(std::u32string& out, char32_t codePoint) {
    text::encodeUtf8(codePoint, [&out](unsigned char byte) { percentByte(out, byte); });
}

constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How many leading bits of a byte are 1.
constexpr std::size_t leadingOnes(char byte) {
    std::size_t ones = 0;
    for (unsigned bits = static_cast<unsigned char>(byte); (bits & 0x80) != 0; bits <<= 1) {
        ++ones;
    }
    return ones;
}

// Whether each lead byte is followed by as many continuation bytes as it declares, three at most.
bool isWellFormed(std::string_view bytes) {
    std::size_t continuations = 0;
    for (std::size_t at = bytes.size(); at != 0; --at) {
        if (isContinuation(bytes[at - 1])) {
            ++continuations;
            continue;
        }
        if (std::clamp<std::size_t>(leadingOnes(bytes[at - 1]), 1, 4) != continuations + 1) {
            return false;
        }
        continuations = 0;
    }
    return continuations == 0;
}

} // namespace

bool isUriForm(std::u32string_view text) {
    return text::isAllWithin(text, firstUriCharacter, lastUriCharacter);
}

namespace {

// The length of the Uri form. It is a sum of sign bits, of which the compiler makes vector code (see
// Scans.hpp). In a block the sums cannot overflow 32 bits, the width of a code point, which vector code
// needs.
std::size_t uriLength(std::u32string_view text) {
    constexpr std::size_t block = 4096;
    constexpr auto isAbove = [](char32_t c, char32_t most) { return std::uint32_t{most - c} >> 31; };
    std::size_t length = text.size();
    for (; !text.empty(); text.remove_prefix(std::min(block, text.size()))) {
        std::uint32_t escaped = 0;
        std::uint32_t longer = 0; // bytes of UTF-8 behind the first
        for (char32_t const c : text.substr(0, block)) {
            escaped += ((c - firstUriCharacter) | (lastUriCharacter - c)) >> 31;
            longer += isAbove(c, 0x7F) + isAbove(c, 0x7FF) + isAbove(c, 0xFFFF);
        }
        length += 2 * std::size_t{escaped} + 3 * std::size_t{longer};
    }
    return length;
}

// The `%XX` of each byte. A fourth unit makes its size a power of two, so that it is copied at once.
template <class Char>
constexpr std::array<std::array<Char, 4>, 256> escapes = [] {
    std::array<std::array<Char, 4>, 256> all{};
    for (unsigned byte = 0; byte != all.size(); ++byte) {
        all[byte] = {Char('%'), static_cast<Char>(upperHex(byte >> 4)),
                     static_cast<Char>(upperHex(byte & 15)), Char()};
    }
    return all;
}();

// The length is counted first, since growing the result would take most of the time.
template <class String>
String uriForm(std::u32string_view text) {
    using Char = typename String::value_type;
    String result(uriLength(text) + 1, Char());
    Char* out = result.data();
    for (char32_t const c : text) {
        if (within(c, firstUriCharacter, lastUriCharacter)) {
            *out++ = static_cast<Char>(c);
        } else {
            text::encodeUtf8(c, [&out](unsigned char byte) {
                std::memcpy(out, escapes<Char>[byte].data(), sizeof escapes<Char>[byte]);
                out += 3;
            });
        }
    }
    result.pop_back();
    return result;
}

} // namespace

std::u32string toUriForm(std::u32string_view text) {
    return uriForm<std::u32string>(text);
}

template <class String>
String toUriText(std::u32string_view text) {
    return isUriForm(text) ? String(text.begin(), text.end()) : uriForm<String>(text);
}
template std::u16string toUriText(std::u32string_view text);
template std::string toUriText(std::u32string_view text);

std::u32string protectPercentEscapes(std::u32string text) {
    std::size_t at = text.find(U'%');
    if (at == std::u32string::npos) {
        return text;
    }
    std::u32string result(text, 0, at);
    result.reserve(text.size() + 8);
    for (; at != text.size(); ++at) {
        if (escapedByte(text, at) >= 0) {
            percentByte(result, '%');
        } else {
            result.push_back(text[at]);
        }
    }
    return result;
}

bool isIriExcluded(char32_t codePoint) {
    return grammar::is<grammar::IPRIVATE>(codePoint);
}

std::u32string escapeIriExcluded(std::u32string text) {
    if (std::none_of(text.begin(), text.end(), isIriExcluded)) {
        return text;
    }
    std::u32string result;
    result.reserve(text.size() + 16);
    for (char32_t const c : text) {
        if (isIriExcluded(c)) {
            percentUtf8(result, c);
        } else {
            result.push_back(c);
        }
    }
    return result;
}

bool isIriForbidden(char32_t c) {
    if (c < 0x80) {
        return c < 0x20 || c == 0x7F || c == U'"' || c == U'<' || c == U'>' || c == U'\\' || c == U'^' ||
               c == U'`' || within(c, U'{', U'}');
    }
    if (c < 0x200E) {
        return c < 0xA0;
    }
    return c <= 0x200F || within(c, 0x202A, 0x202E) || within(c, 0xD800, 0xDFFF) ||
           within(c, 0xFDD0, 0xFDEF) || within(c, 0xFFF0, 0xFFFF) || (c > 0x10000 && (c & 0xFFFE) == 0xFFFE);
}

void escapeIriForbidden(char32_t codePoint, std::u32string& out) {
    if (isIriForbidden(codePoint)) {
        percentUtf8(out, codePoint);
    } else {
        out.push_back(codePoint);
    }
}

RepairedUtf8 repairUtf8(std::string bytes) {
    if (isWellFormed(bytes)) {
        return {false, std::move(bytes)};
    }
    RepairedUtf8 result{false, {}};
    result.bytes.reserve(bytes.size() + 16);
    for (std::size_t at = 0; at != bytes.size();) {
        std::size_t const ones = leadingOnes(bytes[at]);
        // By their bits, 0xxxxxxx stands alone, and 10xxxxxx and 1111111x begin no sequence.
        std::size_t const length = ones == 0 ? 1 : ones == 1 || ones > 6 ? 0 : ones;
        bool const whole =
            length != 0 && length <= bytes.size() - at &&
            std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                        bytes.begin() + static_cast<std::ptrdiff_t>(at + length), isContinuation);
        if (whole) {
            result.bytes.append(bytes, at, length);
            at += length;
        } else {
            percentByte(result.bytes, static_cast<unsigned char>(bytes[at++]));
            result.repaired = true;
        }
    }
    return result;
}

std::u32string escapeStrayPercent(std::u32string_view text, bool escapeBrackets) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at != text.size(); ++at) {
        char32_t const c = text[at];
        bool const stray = c == U'%' && escapedByte(text, at) < 0;
        bool const bracket = escapeBrackets && (c == U'[' || c == U']');
        if (stray || bracket) {
            percentByte(result, static_cast<unsigned char>(c));
        } else {
            result.push_back(c);
        }
    }
    return result;
}

} // namespace foundation::network::iri::encoding
