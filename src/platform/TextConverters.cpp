#include "platform/TextConverters.hpp"

#include "text/CodePoints.hpp"

#include <algorithm>
#include <array>

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
    using namespace foundation::network::text;
    std::u16string units;
    units.reserve(text.size());
    for (wchar_t const wide : text) {
        auto const point = static_cast<char32_t>(wide);
        std::array<char16_t, 2> pair{};
        char16_t* const end = put(isScalar(point) ? point : unicodeReplacement, pair.data());
        units.append(pair.data(), static_cast<std::size_t>(end - pair.data()));
    }
    return units;
}

} // namespace fl::i18n
