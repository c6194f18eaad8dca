#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// `pct-encoded` of RFC 3986, section 2.1: a "%" and two hexadecimal digits.
namespace foundation::network::text {

/// The values of hexadecimal digits, -1 for every other byte.
inline constexpr std::array<signed char, 256> hexValues = [] {
    std::array<signed char, 256> values{};
    values.fill(-1);
    constexpr std::string_view digits = "0123456789abcdef";
    for (std::size_t value = 0; value != digits.size(); ++value) {
        values[static_cast<unsigned char>(digits[value])] = static_cast<signed char>(value);
        if (value > 9) {
            values[static_cast<unsigned char>(digits[value] - 'a' + 'A')] = static_cast<signed char>(value);
        }
    }
    return values;
}();

[[nodiscard]] constexpr int hexValue(char c) noexcept {
    return hexValues[static_cast<unsigned char>(c)];
}

namespace detail {

template <class Char>
[[nodiscard]] constexpr int escapedByte(std::basic_string_view<Char> text, std::size_t at) {
    if (text.size() - at < 3 || text[at] != Char('%')) {
        return -1;
    }
    char32_t const high = text[at + 1];
    char32_t const low = text[at + 2];
    return (high | low) < hexValues.size() ? hexValues[high] * 16 | hexValues[low] : -1;
}

} // namespace detail

/// The byte that the escape at `at` in `text` stands for: of a "%" and two ASCII hexadecimal digits. Negative
/// where there is none. `at` is at most the length of the text.
[[nodiscard]] constexpr int escapedByte(std::u32string_view text, std::size_t at) {
    return detail::escapedByte(text, at);
}
[[nodiscard]] constexpr int escapedByte(std::u16string_view text, std::size_t at) {
    return detail::escapedByte(text, at);
}

/// The upper-case hexadecimal digit of a value below 16.
[[nodiscard]] constexpr char32_t upperHex(unsigned value) {
    return static_cast<unsigned char>("0123456789ABCDEF"[value]);
}

/// Appends "%" and the two upper-case hexadecimal digits of `byte`.
template <class String>
void percentByte(String& out, unsigned char byte) {
    using Char = typename String::value_type;
    out.push_back(Char('%'));
    out.push_back(static_cast<Char>(upperHex(byte >> 4)));
    out.push_back(static_cast<Char>(upperHex(byte & 15)));
}

} // namespace foundation::network::text
