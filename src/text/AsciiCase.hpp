#pragma once

#include <algorithm>
#include <string_view>

/// Letters of ASCII in either case; no other character has one here.
namespace foundation::network::text {

[[nodiscard]] constexpr char32_t lower(char32_t c) {
    return c >= U'A' && c <= U'Z' ? c | 0x20 : c;
}

/// Whether a text is a word in any case. The word is ASCII, in lower case.
[[nodiscard]] constexpr bool isWord(std::u32string_view text, std::u32string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char32_t c, char32_t letter) { return lower(c) == letter; });
}

} // namespace foundation::network::text
