#include "text/Transcoding.hpp"

#include <foundation/core/except/InternalException.hpp>

#include "text/CodePoints.hpp"
#include "text/Scans.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

namespace foundation::network::text {

namespace {

using core::except::detail::makeInternalException;

// "0x" and lower-case digits; zero alone has no prefix.
std::string hexadecimal(char32_t value) {
    std::array<char, 16> digits{};
    auto const length = std::snprintf(digits.data(), digits.size(), "%#x", static_cast<unsigned>(value));
    return {digits.data(), static_cast<std::size_t>(length)};
}

// Whether each element has one unit in UTF-16 and in UTF-32. The bits of all together nearly always tell.
template <class Unit>
bool isPlain(std::basic_string_view<Unit> text) {
    Unit const bits = bitsOfAll(text);
    return bits < 0x8000 || (bits <= 0xFFFF && !hasSurrogate(text));
}

// Elements that the converters below do not write one to one.
bool isPlainStride(char const* stride) {
    return isAsciiStride(stride);
}
using text::isPlainStride;

// Goes over a text in strides of one unit an element, and by `one` where they are not; ends early where that
// gives false.
template <class In, class Out, class One>
Out* convert(std::basic_string_view<In> text, Out* out, One one) {
    In const* at = text.data();
    In const* const end = at + text.size();
    while (at != end) {
        auto const left = static_cast<std::size_t>(end - at);
        if (left >= STRIDE && isPlainStride(at)) {
            copyStride(at, out);
            at += STRIDE;
            out += STRIDE;
            continue;
        }
        for (In const* const stop = at + std::min(STRIDE, left); at < stop;) {
            if (!one(at, end, out)) {
                return out;
            }
        }
    }
    return out;
}

} // namespace

std::size_t toUtf32(std::u16string_view text, std::u32string& out) {
    if (isPlain(text)) {
        out =
            std::u32string(text.begin(), text.end()); // made from a range, it is not filled with zeros first
        return NO_FAULT;
    }
    out.resize(text.size());
    std::size_t fault = NO_FAULT;
    auto const one = [&](char16_t const*& at, char16_t const* end, char32_t*& to) {
        char32_t codePoint = *at;
        if (isSurrogate(codePoint)) {
            if (!isLeadSurrogate(codePoint) || end - at < 2 || !isTrailSurrogate(at[1])) {
                fault = static_cast<std::size_t>(at - text.data());
                return false;
            }
            codePoint = fromSurrogates(codePoint, *++at);
        }
        ++at;
        to = put(codePoint, to);
        return true;
    };
    out.resize(static_cast<std::size_t>(convert(text, out.data(), one) - out.data()));
    return fault;
}

std::size_t toUtf32(std::string_view utf8, std::u32string& out) {
    if (static_cast<unsigned char>(bitsOfAll(utf8)) < 0x80) {
        out = std::u32string(utf8.begin(), utf8.end());
        return NO_FAULT;
    }
    out.resize(utf8.size());
    std::size_t fault = NO_FAULT;
    auto const one = [&](char const*& at, char const* end, char32_t*& to) {
        auto const byteAt = [&](unsigned i) {
            return end - at > static_cast<std::ptrdiff_t>(i) ? static_cast<unsigned char>(at[i]) : -1;
        };
        Utf8Sequence const sequence = decodeUtf8(static_cast<unsigned char>(*at), byteAt);
        if (!sequence.wellFormed) {
            fault = static_cast<std::size_t>(at - utf8.data());
            return false;
        }
        at += sequence.length;
        to = put(sequence.codePoint, to);
        return true;
    };
    out.resize(static_cast<std::size_t>(convert(utf8, out.data(), one) - out.data()));
    return fault;
}

std::u32string toUtf32(std::u16string_view text) {
    std::u32string result;
    std::size_t const fault = toUtf32(text, result);
    if (fault != NO_FAULT) {
        throwNotUtf16(text, fault);
    }
    return result;
}

std::u32string toUtf32(std::string_view utf8) {
    std::u32string result;
    if (toUtf32(utf8, result) != NO_FAULT) {
        throwNotUtf8();
    }
    return result;
}

std::u16string toUtf16(std::u32string_view text) {
    if (isPlain(text)) {
        return std::u16string(text.begin(), text.end());
    }
    auto const pairs = std::count_if(text.begin(), text.end(), [](char32_t c) { return c > 0xFFFF; });
    std::u16string result(text.size() + static_cast<std::size_t>(pairs), u'\0');
    convert(text, result.data(), [](char32_t const*& at, char32_t const* /*end*/, char16_t*& to) {
        if (!isScalar(*at)) {
            throwInvalidCodePoint(*at);
        }
        to = put(*at++, to);
        return true;
    });
    return result;
}

std::string toUtf8(std::u32string_view text) {
    if (bitsOfAll(text) < 0x80) {
        return std::string(text.begin(), text.end());
    }
    std::size_t length = 0;
    for (char32_t const c : text) {
        length += utf8Length(c);
    }
    std::string result(length, '\0');
    char* out = result.data();
    for (char32_t const c : text) {
        if (!isScalar(c)) {
            throwInvalidCodePoint(c);
        }
        encodeUtf8(c, [&out](unsigned char byte) { *out++ = static_cast<char>(byte); });
    }
    return result;
}

void throwNotUtf16(std::u16string_view text, std::size_t at) {
    std::size_t const behind = at + 1;
    char16_t const next = behind < text.size() ? text[behind] : char16_t(0);
    char16_t const unit = isLeadSurrogate(text[at]) ? next : text[at];
    throw makeInternalException(std::out_of_range("Misplaced UTF-16 surrogate U+" + hexadecimal(unit) +
                                                  " encountered while trying to encode UTF-32 sequence"));
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
