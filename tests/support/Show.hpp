#pragma once

// Texts in messages of failing tests: ASCII as it stands, all else with escapes.

#include <cstdio>
#include <ostream>
#include <string>
#include <string_view>

namespace support {

template <class Char>
std::string show(std::basic_string_view<Char> text) {
    std::string shown;
    for (Char const c : text) {
        auto const value = static_cast<unsigned>(c);
        if (value >= 0x20 && value < 0x7F) {
            shown += static_cast<char>(value);
        } else {
            char escape[16];
            std::snprintf(escape, sizeof escape, "\\u{%X}", value);
            shown += escape;
        }
    }
    return shown;
}
inline std::string show(std::u16string const& text) {
    return show(std::u16string_view(text));
}
inline std::string show(std::u32string const& text) {
    return show(std::u32string_view(text));
}

} // namespace support
