#pragma once

/// Narrowing and widening of text, unit by unit and without a look at the locale.
///
///     fl::i18n::codecvt_ustring_to_ascii const narrow(false);
///     narrow.convert(u"example");   // "example"
///     narrow.convert(u"na\u00EFve");  // "na\x1Ave"
///
/// A unit that the other side can't hold is replaced and never cast: no character turns into one that looks
/// like another. Converters hold nothing and may be used by any number of threads at once.

#include <string>
#include <string_view>

namespace fl::i18n {

/// The substitute character of ASCII: what narrowing puts in place of each unit that is not ASCII.
inline constexpr char asciiSubstitute = '\x1A';

/// What widening puts in place of each value that is no character.
inline constexpr char16_t unicodeReplacement = u'\uFFFD';

/// Turns texts of `From` into texts of `To`. There are three pairs, each with a class of its own below.
template <class To, class From>
class converter {
public:
    /// The whole text, converted. Never fails but for memory.
    std::basic_string<To> convert(std::basic_string_view<From> text) const;

protected:
    converter() = default;
    ~converter() = default;
    converter(converter const&) = default;
    converter& operator=(converter const&) = default;
};

template <>
std::string converter<char, char16_t>::convert(std::u16string_view text) const;
template <>
std::u16string converter<char16_t, char>::convert(std::string_view text) const;
template <>
std::u16string converter<char16_t, wchar_t>::convert(std::wstring_view text) const;

/// UTF-16 to ASCII: one `char` a unit, `asciiSubstitute` for each unit above U+007F. The flag belongs to the
/// constructor's shape; both values convert alike.
class codecvt_ustring_to_ascii : public converter<char, char16_t> {
public:
    explicit codecvt_ustring_to_ascii(bool) {}
};

/// ASCII to UTF-16: one unit a `char`, `unicodeReplacement` for each byte above 0x7F. The flag as above.
class codecvt_ascii_to_ustring : public converter<char16_t, char> {
public:
    explicit codecvt_ascii_to_ustring(bool) {}
};

/// Wide text to UTF-16. Units of 16 bits stay as they are; code points of 32 bits become one or two units,
/// and `unicodeReplacement` where they are none (surrogates, values above U+10FFFF). The flag as above.
class codecvt_wstring_to_ustring : public converter<char16_t, wchar_t> {
public:
    explicit codecvt_wstring_to_ustring(bool) {}
};

} // namespace fl::i18n
