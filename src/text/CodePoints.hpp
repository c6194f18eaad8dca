#pragma once

#include "text/Scans.hpp"

#include <cstddef>

/// One code point at a time, in each encoding form: the only readers and writers of UTF-8 and of surrogate
/// pairs.
namespace foundation::network::text {

inline constexpr char32_t lastCodePoint = 0x10FFFF;

/// Whether `c` is a Unicode scalar value: a code point that is no surrogate.
[[nodiscard]] constexpr bool isScalar(char32_t c) {
    return c <= lastCodePoint && !isSurrogate(c);
}
[[nodiscard]] constexpr bool isLeadSurrogate(char32_t c) {
    return (c & 0xFFFFFC00) == 0xD800;
}
[[nodiscard]] constexpr bool isTrailSurrogate(char32_t c) {
    return (c & 0xFFFFFC00) == 0xDC00;
}
[[nodiscard]] constexpr char32_t fromSurrogates(char32_t lead, char32_t trail) {
    return 0x10000 + ((lead & 0x3FF) << 10) + (trail & 0x3FF);
}

/// Writes a code point up to U+10FFFF at `out`, and gives the place behind it.
constexpr char32_t* put(char32_t codePoint, char32_t* out) {
    *out = codePoint;
    return out + 1;
}
constexpr char16_t* put(char32_t codePoint, char16_t* out) {
    if (codePoint < 0x10000) {
        *out = static_cast<char16_t>(codePoint);
        return out + 1;
    }
    out[0] = static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
    out[1] = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
    return out + 2;
}

constexpr char* put(char32_t codePoint, char* out);

/// Throws "Invalid UTF-32 code point U+0x110000 encountered while trying to encode UTF-16 sequence".
[[noreturn]] void throwInvalidCodePoint(char32_t codePoint);

/// Gives the bytes of the UTF-8 form of `codePoint` to `sink`, one at a time. A surrogate is written in the
/// three-byte pattern; `throwInvalidCodePoint` is thrown for a value above U+10FFFF, before any byte is
/// given.
template <class Sink>
constexpr void encodeUtf8(char32_t codePoint, Sink sink) {
    auto const continuation = [codePoint](int shift) {
        return static_cast<unsigned char>(0x80 | ((codePoint >> shift) & 0x3F));
    };
    if (codePoint < 0x80) {
        sink(static_cast<unsigned char>(codePoint));
    } else if (codePoint < 0x800) {
        sink(static_cast<unsigned char>(0xC0 | (codePoint >> 6)));
        sink(continuation(0));
    } else if (codePoint < 0x10000) {
        sink(static_cast<unsigned char>(0xE0 | (codePoint >> 12)));
        sink(continuation(6));
        sink(continuation(0));
    } else if (codePoint <= lastCodePoint) {
        sink(static_cast<unsigned char>(0xF0 | (codePoint >> 18)));
        sink(continuation(12));
        sink(continuation(6));
        sink(continuation(0));
    } else {
        throwInvalidCodePoint(codePoint);
    }
}

constexpr char* put(char32_t codePoint, char* out) {
    encodeUtf8(codePoint, [&out](unsigned char byte) { *out++ = static_cast<char>(byte); });
    return out;
}

/// The bytes of UTF-8 that a code point takes.
[[nodiscard]] constexpr std::size_t utf8Length(char32_t codePoint) {
    return 1U + (codePoint > 0x7F ? 1U : 0U) + (codePoint > 0x7FF ? 1U : 0U) + (codePoint > 0xFFFF ? 1U : 0U);
}

/// What stands at one place of a text in UTF-8.
struct Utf8Sequence {
    char32_t codePoint = 0;
    /// How many bytes: of an ill-formed sequence its maximal part (Unicode, section 3.9), at least one.
    unsigned length = 1;
    bool wellFormed = false;
};

/// Reads the sequence whose first byte is `lead`. `byteAt(i)` is the byte `i` places behind it, negative
/// where there is none; it is asked in order, and no further than needed.
template <class ByteAt>
[[nodiscard]] constexpr Utf8Sequence decodeUtf8(unsigned lead, ByteAt byteAt) {
    constexpr auto isContinuation = [](int byte) { return (byte & ~0x3F) == 0x80; };
    constexpr auto bits = [](int byte) { return static_cast<char32_t>(byte) & 0x3F; };
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    if (lead < 0xC2 || lead > 0xF4) { // a continuation byte, an overlong form, or above U+10FFFF
        return {};
    }
    int const second = byteAt(1);
    if (!isContinuation(second)) {
        return {};
    }
    if (lead < 0xE0) {
        return {(lead & 0x1F) << 6 | bits(second), 2, true};
    }
    // The second byte's limits shut out overlong forms, surrogates and values above U+10FFFF (Unicode, table
    // 3-7).
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) {
        return {};
    }
    int const third = byteAt(2);
    if (!isContinuation(third)) {
        return {0, 2, false};
    }
    if (lead < 0xF0) {
        return {(lead & 0x0F) << 12 | bits(second) << 6 | bits(third), 3, true};
    }
    int const fourth = byteAt(3);
    if (!isContinuation(fourth)) {
        return {0, 3, false};
    }
    return {(lead & 0x07) << 18 | bits(second) << 12 | bits(third) << 6 | bits(fourth), 4, true};
}

} // namespace foundation::network::text
