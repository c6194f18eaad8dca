#pragma once

// Texts in messages of failing tests: ASCII as it stands, all else with escapes.

#include <cstdio>
#include <string>

namespace support {

template <class Text>
std::string show(Text const& text) {
    std::string shown;
    for (auto const c : text) {
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

} // namespace support
