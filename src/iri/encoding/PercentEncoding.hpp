#pragma once

#include <string>
#include <string_view>

/// The steps on characters and bytes that `Conversions.cpp` puts together. Pure functions, linear.
namespace foundation::network::iri::encoding {

/// Whether all of `text` lies between U+0021 and U+007E, so that `toUriForm` leaves it as it is.
[[nodiscard]] bool isUriForm(std::u32string_view text);

/// Writes each byte of the text's UTF-8 form as `%XX` that does not lie between 0x21 and 0x7E. A "%" stays as
/// it is.
///
/// Throws: the internal `std::out_of_range`, "Invalid UTF-32 code point U+...", for a value above U+10FFFF.
[[nodiscard]] std::u32string toUriForm(std::u32string_view text);

/// `toUriForm` in UTF-16 or UTF-8.
template <class String>
[[nodiscard]] String toUriText(std::u32string_view text);

/// Writes each "%" that two hexadecimal digits follow as "%25", so that decoding gives the same text again.
[[nodiscard]] std::u32string protectPercentEscapes(std::u32string text);

/// Writes each private-use character as the `%XX` of its UTF-8 form. (`iprivate` of RFC 3987 may stand in a
/// query only.)
[[nodiscard]] std::u32string escapeIriExcluded(std::u32string text);

/// Whether `escapeIriExcluded` replaces `codePoint`.
[[nodiscard]] bool isIriExcluded(char32_t codePoint);

/// Appends `codePoint`, or the `%XX` of its UTF-8 form if no IRI may hold it: controls, `"<>\^{|}` and the
/// backtick, bidirectional formatting characters (RFC 3987, section 4.1), surrogates, noncharacters and
/// U+FFF0 to U+FFFF.
void escapeIriForbidden(char32_t codePoint, std::u32string& out);

/// Whether `escapeIriForbidden` replaces `codePoint`.
[[nodiscard]] bool isIriForbidden(char32_t codePoint);

/// Bytes of UTF-8, and whether some had to be escaped for that.
struct RepairedUtf8 {
    bool repaired;
    std::string bytes;
};

/// Writes each byte as `%XX` that belongs to no UTF-8 sequence. A sequence is a lead byte and as many
/// continuation bytes as it declares, so `text::toUtf32` may still refuse the result (an overlong form, a
/// surrogate).
[[nodiscard]] RepairedUtf8 repairUtf8(std::string bytes);

/// Makes a strict form: writes a "%" that no two hexadecimal digits follow as "%25" and, with
/// `escapeBrackets`, "[" as "%5B" and "]" as "%5D". Applying it twice changes no more than applying it once.
[[nodiscard]] std::u32string escapeStrayPercent(std::u32string_view text, bool escapeBrackets);

} // namespace foundation::network::iri::encoding
