#pragma once

// What the example programs share: text between UTF-8 and UTF-16, columns, colours, JSON strings.

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <unistd.h>

namespace console {

inline std::u16string toUtf16(std::string_view utf8) {
    auto const text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<int>(utf8.size())));
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

inline std::string toUtf8(std::u16string_view utf16) {
    std::string text;
    return icu::UnicodeString(utf16.data(), static_cast<int32_t>(utf16.size())).toUTF8String(text);
}

/// How many columns of a terminal a text takes: two for wide characters, none for marks and controls.
inline std::size_t columns(std::string_view utf8) {
    auto const text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<int>(utf8.size())));
    std::size_t width = 0;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        UChar32 const c = text.char32At(i);
        auto const type = u_charType(c);
        if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR ||
            type == U_CONTROL_CHAR) {
            continue;
        }
        int const eastAsian = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
        width += eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH ? 2 : 1;
    }
    return width;
}

inline std::string padded(std::string_view utf8, std::size_t width) {
    std::string text(utf8);
    std::size_t const taken = columns(utf8);
    return taken < width ? text.append(width - taken, ' ') : text;
}

/// A JSON string with its quotes.
inline std::string json(std::string_view utf8) {
    std::string text = "\"";
    for (char const c : utf8) {
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            text += escape;
        } else {
            text += c;
        }
    }
    return text + '"';
}

/// Colours where standard output is a terminal and NO_COLOR (no-color.org) is not set.
class Style {
public:
    Style() {
        char const* const off = std::getenv("NO_COLOR");
        enabled = isatty(STDOUT_FILENO) != 0 && (off == nullptr || *off == '\0');
    }
    [[nodiscard]] std::string label(std::string_view text) const { return in("36", text); }
    [[nodiscard]] std::string title(std::string_view text) const { return in("1", text); }
    [[nodiscard]] std::string faint(std::string_view text) const { return in("2", text); }

private:
    [[nodiscard]] std::string in(char const* code, std::string_view text) const {
        return enabled ? "\x1b[" + std::string(code) + "m" + std::string(text) + "\x1b[0m"
                       : std::string(text);
    }
    bool enabled;
};

} // namespace console
