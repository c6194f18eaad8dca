#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text between UTF-8, UTF-16 and UTF-32, whole strings at a time, each way straight.
///
/// Every failure is an `AnonymousInternalException<std::out_of_range>` whose message names the value; no
/// partial result is ever returned. Pure functions, linear; a result takes one allocation.
namespace foundation::network::text {

/// Tells that a text is well-formed.
inline constexpr std::size_t noFault = static_cast<std::size_t>(-1);

/// Sets `out` to `text` in UTF-32, and gives `noFault`; or gives the place of the first unit of the first
/// sequence that is not well-formed, and leaves `out` alone.
std::size_t toUtf32(std::u16string_view text, std::u32string& out);
std::size_t toUtf32(std::string_view utf8, std::u32string& out);

/// Each throws, from UTF-16 `throwNotUtf16`, from UTF-8 `throwNotUtf8`, from UTF-32
/// `throwInvalidCodePoint` of CodePoints.hpp, for a value above U+10FFFF and for a surrogate.
std::u32string toUtf32(std::u16string_view text);
std::u32string toUtf32(std::string_view utf8);
std::u16string toUtf16(std::u32string_view text);
std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u32string_view text);
std::string toUtf8(std::u16string_view text);

/// From UTF-32 to the encoding form of a type of string: `std::u16string` or `std::string`.
template <class String>
String to(std::u32string_view text);
template <>
inline std::u16string to(std::u32string_view text) {
    return toUtf16(text);
}
template <>
inline std::string to(std::u32string_view text) {
    return toUtf8(text);
}

/// "Misplaced UTF-16 surrogate U+0xdc00 encountered while trying to encode UTF-32 sequence".
[[noreturn]] void throwNotUtf16(char16_t misplacedUnit);

/// The unit that this message names, of the fault that begins at `at`: the one that stands alone, or the one
/// behind a lead surrogate that has no trail (0 where the text ends there).
char16_t misplacedUnit(std::u16string_view text, std::size_t at);

/// "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character".
[[noreturn]] void throwNotUtf8();

} // namespace foundation::network::text
