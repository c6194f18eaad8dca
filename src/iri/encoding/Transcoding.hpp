#pragma once

#include <string>
#include <string_view>

/// Text between UTF-8, UTF-16 and UTF-32, whole strings at a time.
///
/// Every failure is an `AnonymousInternalException<std::out_of_range>` whose message names the value; no
/// partial result is ever returned. Pure functions, linear; a result takes one allocation.
namespace foundation::network::iri::encoding {

/// UTF-16 to UTF-32. Throws "Misplaced UTF-16 surrogate U+0xdc00 encountered while trying to encode UTF-32
/// sequence" with the unit that stands alone, or the one behind a lead surrogate that has no trail (0 where
/// the text ends there).
std::u32string toUtf32(std::u16string_view text);

/// UTF-32 to UTF-16. Throws "Invalid UTF-32 code point U+0x110000 encountered while trying to encode UTF-16
/// sequence" for a value above U+10FFFF and for a surrogate.
std::u16string toUtf16(std::u32string_view text);

/// UTF-8 to UTF-32. Throws "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character" for
/// stray and missing continuation bytes, overlong forms, surrogates and values above U+10FFFF.
std::u32string fromUtf8(std::string_view bytes);

/// Throws the failure of `toUtf16` for `codePoint`.
[[noreturn]] void throwInvalidCodePoint(char32_t codePoint);

/// Gives the bytes of the UTF-8 form of `codePoint` to `sink`, one at a time. A surrogate is written in the
/// three-byte pattern; a value above U+10FFFF throws the failure of `toUtf16`, before any byte is given.
template <class Sink>
void encodeUtf8(char32_t codePoint, Sink sink) {
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
    } else if (codePoint <= 0x10FFFF) {
        sink(static_cast<unsigned char>(0xF0 | (codePoint >> 18)));
        sink(continuation(12));
        sink(continuation(6));
        sink(continuation(0));
    } else {
        throwInvalidCodePoint(codePoint);
    }
}

} // namespace foundation::network::iri::encoding
