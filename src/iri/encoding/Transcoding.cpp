#include "iri/encoding/Transcoding.hpp"

#include <foundation/core/except/InternalException.hpp>

#include "iri/encoding/Strides.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

namespace foundation::network::iri::encoding {

namespace {

using core::except::detail::makeInternalException;

constexpr bool isLead(char16_t c) {
    return (c & 0xFC00) == 0xD800;
}
constexpr bool isTrail(char16_t c) {
    return (c & 0xFC00) == 0xDC00;
}

// "0x" and lower-case digits; zero alone has no prefix.
std::string hexadecimal(char32_t value) {
    std::array<char, 16> digits{};
    auto const length = std::snprintf(digits.data(), digits.size(), "%#x", static_cast<unsigned>(value));
    return {digits.data(), static_cast<std::size_t>(length)};
}

[[noreturn]] void throwMisplacedSurrogate(char16_t unit) {
    throw makeInternalException(std::out_of_range("Misplaced UTF-16 surrogate U+" + hexadecimal(unit) +
                                                  " encountered while trying to encode UTF-32 sequence"));
}

[[noreturn]] void throwInvalidUtf8() {
    throw makeInternalException(
        std::out_of_range("Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"));
}

// The road of one code point that may take two units; returns the end of the output.
char32_t* convertOne(char16_t const*& at, char16_t const* end, char32_t* out) {
    char16_t const unit = *at++;
    char32_t codePoint = unit;
    if (isSurrogate(unit)) {
        if (!isLead(unit)) {
            throwMisplacedSurrogate(unit);
        }
        char16_t const next = at == end ? char16_t(0) : *at;
        if (!isTrail(next)) {
            throwMisplacedSurrogate(next);
        }
        ++at;
        codePoint = 0x10000 + ((codePoint & 0x3FF) << 10) + (next & 0x3FF);
    }
    *out = codePoint;
    return out + 1;
}
char16_t* convertOne(char32_t const*& at, char32_t const* /*end*/, char16_t* out) {
    char32_t const codePoint = *at++;
    if (codePoint > 0x10FFFF || isSurrogate(codePoint)) {
        throwInvalidCodePoint(codePoint);
    }
    if (codePoint < 0x10000) {
        *out = static_cast<char16_t>(codePoint);
        return out + 1;
    }
    out[0] = static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
    out[1] = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
    return out + 2;
}

// The units that a text takes in UTF-16.
std::size_t unitsOf(char32_t const* at, char32_t const* end) {
    return static_cast<std::size_t>(end - at + std::count_if(at, end, [](char32_t c) { return c > 0xFFFF; }));
}
// At most, in UTF-32.
std::size_t unitsOf(char16_t const* at, char16_t const* end) {
    return static_cast<std::size_t>(end - at);
}

// Whether each element has one unit in both encodings. The bits of all together nearly always tell. The loops
// have no way out before their end, so they become vector code.
template <class In>
bool isPlainText(std::basic_string_view<In> text) {
    In const bits = bitsOfAll(text);
    if (bits < 0x8000 || bits > 0xFFFF) {
        return bits < 0x8000;
    }
    std::uint32_t surrogate = 0;
    for (In const c : text) {
        surrogate |= signOfSame(c & 0xF800U, 0xD800);
    }
    return !isSigned(surrogate);
}

template <class Out, class In>
std::basic_string<Out> convert(std::basic_string_view<In> text) {
    auto const* at = text.data();
    auto const* const end = at + text.size();
    if (isPlainText(text)) {
        return std::basic_string<Out>(at, end); // made from a range, it is not filled with zeros first
    }
    std::basic_string<Out> result(unitsOf(at, end), Out());
    Out* out = result.data();
    while (at != end) {
        auto const left = static_cast<std::size_t>(end - at);
        if (left >= STRIDE && isPlain(at)) {
            copyStride(at, out);
            at += STRIDE;
            out += STRIDE;
        } else {
            for (auto const* const stop = at + std::min(STRIDE, left); at < stop;) {
                out = convertOne(at, end, out);
            }
        }
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}

} // namespace

void throwInvalidCodePoint(char32_t codePoint) {
    throw makeInternalException(std::out_of_range("Invalid UTF-32 code point U+" + hexadecimal(codePoint) +
                                                  " encountered while trying to encode UTF-16 sequence"));
}

std::u32string toUtf32(std::u16string_view text) {
    return convert<char32_t>(text);
}

std::u16string toUtf16(std::u32string_view text) {
    return convert<char16_t>(text);
}

std::u32string fromUtf8(std::string_view bytes) {
    std::u32string result;
    result.reserve(bytes.size());
    auto const* at = reinterpret_cast<unsigned char const*>(bytes.data());
    auto const* const end = at + bytes.size();
    while (at != end) {
        char32_t codePoint = *at++;
        if (codePoint >= 0x80) {
            // Lead bytes C2 to F4; the smallest value of each length shuts out overlong forms.
            int const continuations = codePoint < 0xC2   ? -1
                                      : codePoint < 0xE0 ? 1
                                      : codePoint < 0xF0 ? 2
                                      : codePoint < 0xF5 ? 3
                                                         : -1;
            if (continuations < 0 || end - at < continuations) {
                throwInvalidUtf8();
            }
            constexpr std::array<char32_t, 4> smallest{0, 0x80, 0x800, 0x10000};
            codePoint &= 0x3Fu >> continuations;
            for (int i = 0; i != continuations; ++i) {
                if ((*at & 0xC0) != 0x80) {
                    throwInvalidUtf8();
                }
                codePoint = codePoint << 6 | (*at++ & 0x3Fu);
            }
            if (codePoint < smallest[static_cast<std::size_t>(continuations)] || isSurrogate(codePoint) ||
                codePoint > 0x10FFFF) {
                throwInvalidUtf8();
            }
        }
        result.push_back(codePoint);
    }
    return result;
}

} // namespace foundation::network::iri::encoding
