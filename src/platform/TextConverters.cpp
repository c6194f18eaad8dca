#include "platform/TextConverters.hpp"

#include <algorithm>

namespace fl::i18n {

template <>
std::string converter<char, char16_t>::convert(std::u16string_view text) const {
    std::string narrow(text.size(), asciiSubstitute);
    std::transform(text.begin(), text.end(), narrow.begin(),
                   [](char16_t unit) { return unit < 0x80 ? static_cast<char>(unit) : asciiSubstitute; });
    return narrow;
}

template <>
std::u16string converter<char16_t, char>::convert(std::string_view text) const {
    std::u16string wide(text.size(), unicodeReplacement);
    std::transform(text.begin(), text.end(), wide.begin(), [](char narrow) {
        auto const byte = static_cast<unsigned char>(narrow);
        return byte < 0x80 ? static_cast<char16_t>(byte) : unicodeReplacement;
    });
    return wide;
}

template <>
std::u16string converter<char16_t, wchar_t>::convert(std::wstring_view text) const {
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        return {text.begin(), text.end()};
    }
    std::u16string units;
    units.reserve(text.size());
    for (wchar_t const wide : text) {
        auto const point = static_cast<char32_t>(wide);
        if (point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) {
            units.push_back(unicodeReplacement);
        } else if (point < 0x10000) {
            units.push_back(static_cast<char16_t>(point));
        } else {
            units.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
        }
    }
    return units;
}

} // namespace fl::i18n
