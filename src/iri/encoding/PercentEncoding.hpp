#pragma once

#include <string>
#include <string_view>

/// The steps on characters and bytes that the conversions of a part are made of. Pure functions, linear.
namespace foundation::network::iri::encoding {

/// Whether `toUriForm` leaves `text` as it is: all of it from 33 to 126.
[[nodiscard]] bool isUriForm(std::u32string_view text);

/// The text in ASCII: each byte of its UTF-8 form outside 33 to 126 as `%XX`. A "%" stays as it is. Throws
/// "Invalid UTF-32 code point U+..." for a value above U+10FFFF.
[[nodiscard]] std::u32string toUriForm(std::u32string_view text);

/// `toUriForm` in UTF-16 or UTF-8.
template <class String>
[[nodiscard]] String toUriText(std::u32string_view text);

/// Each "%" that two hexadecimal digits follow as "%25", so that a text that only looks like an escape
/// survives the way back.
[[nodiscard]] std::u32string protectPercentEscapes(std::u32string text);

/// Each private-use character as the `%XX` of its UTF-8 form (they are `iprivate`, which a query alone may
/// hold).
[[nodiscard]] std::u32string escapeIriExcluded(std::u32string text);

/// Whether `escapeIriExcluded` replaces `codePoint`.
[[nodiscard]] bool isIriExcluded(char32_t codePoint);

/// Appends `codePoint`, or the `%XX` of its UTF-8 form where no part of an IRI may hold it: controls,
/// `"<>\^{|}` and the backtick, formatting of direction, surrogates, noncharacters and specials.
void escapeIriForbidden(char32_t codePoint, std::u32string& out);

/// Whether `escapeIriForbidden` replaces `codePoint`.
[[nodiscard]] bool isIriForbidden(char32_t codePoint);

/// Bytes that look like UTF-8, and whether some were rewritten to get there.
struct RepairedUtf8 {
    bool repaired;
    std::string bytes;
};

/// Writes each byte that is no part of a sequence of UTF-8, by the count of its continuation bytes alone, as
/// `%XX`. What passes may still be refused by `fromUtf8` (an overlong form, a surrogate).
[[nodiscard]] RepairedUtf8 repairUtf8(std::string bytes);

/// The last step of the strict forms: a "%" that no two hexadecimal digits follow as "%25" and, with
/// `escapeBrackets`, "[" as "%5B" and "]" as "%5D". Applied twice it gives what it gave once.
[[nodiscard]] std::u32string escapeStrayPercent(std::u32string_view text, bool escapeBrackets);

} // namespace foundation::network::iri::encoding
