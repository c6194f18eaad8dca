#pragma once

/// Narrowing and widening of text, unit by unit. The locale plays no part.
///
///     fl::i18n::codecvt_ustring_to_ascii const narrow(false);
///     narrow.convert(u"example");   // "example"
///     narrow.convert(u"na\u00EFve");  // "na\x1Ave"
///
/// A unit that the result cannot hold is replaced, never cast: a cast would make another character of it.
/// Converters have no state, so any number of threads may use one at once.

#include <string>
#include <string_view>

namespace fl::i18n {

/// ASCII's substitute character, by which narrowing replaces each unit that is not ASCII.
inline constexpr char asciiSubstitute = '\x1A';

/// Unicode's replacement character, by which widening replaces each value that is no character.
inline constexpr char16_t unicodeReplacement = u'\uFFFD';

/// Converts texts of `From` to texts of `To`, for the three pairs of the classes below.
template <class To, class From>
class converter {
public:
    /// Converts the whole text. Throws nothing but `std::bad_alloc`.
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

/// UTF-16 to ASCII: one `char` a unit, `asciiSubstitute` for each unit above U+007F. The flag changes
/// nothing.
class codecvt_ustring_to_ascii : public converter<char, char16_t> {
public:
    explicit codecvt_ustring_to_ascii(bool) {}
};

/// ASCII to UTF-16: one unit a `char`, `unicodeReplacement` for each byte above 0x7F. The flag changes
/// nothing.
class codecvt_ascii_to_ustring : public converter<char16_t, char> {
public:
    explicit codecvt_ascii_to_ustring(bool) {}
};

/// Wide text to UTF-16. Units of 16 bits stay as they are; code points of 32 bits become one or two units,
/// and surrogates and values above U+10FFFF become `unicodeReplacement`. The flag changes nothing.
class codecvt_wstring_to_ustring : public converter<char16_t, wchar_t> {
public:
    explicit codecvt_wstring_to_ustring(bool) {}
};

} // namespace fl::i18n
