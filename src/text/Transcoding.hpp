#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text between UTF-8, UTF-16 and UTF-32, whole strings at a time.
///
/// Every failure is an `AnonymousInternalException<std::out_of_range>` whose message names the value; no
/// partial result is ever returned. Pure functions, linear; a result takes one allocation.
namespace foundation::network::text {

/// Tells that a text is well-formed.
inline constexpr std::size_t NO_FAULT = static_cast<std::size_t>(-1);

/// Writes `text` in UTF-32 to `out`, which it replaces, and gives `NO_FAULT`; or the place of the first unit
/// of the first sequence that is not well-formed, and leaves `out` with nothing of use.
std::size_t toUtf32(std::u16string_view text, std::u32string& out);
std::size_t toUtf32(std::string_view utf8, std::u32string& out);

/// UTF-16 to UTF-32. Throws `throwNotUtf16`.
std::u32string toUtf32(std::u16string_view text);

/// UTF-8 to UTF-32. Throws `throwNotUtf8`.
std::u32string toUtf32(std::string_view utf8);

/// UTF-32 to UTF-16 and UTF-8. Throws `throwInvalidCodePoint` for a value above U+10FFFF and for a surrogate.
std::u16string toUtf16(std::u32string_view text);
std::string toUtf8(std::u32string_view text);

/// "Misplaced UTF-16 surrogate U+0xdc00 encountered while trying to encode UTF-32 sequence", for the fault
/// that begins at `at` in `text`, with the unit that stands alone, or the one behind a lead surrogate that
/// has no trail (0 where the text ends there).
[[noreturn]] void throwNotUtf16(std::u16string_view text, std::size_t at);

/// "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character".
[[noreturn]] void throwNotUtf8();

} // namespace foundation::network::text
