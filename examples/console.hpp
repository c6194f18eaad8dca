#pragma once

// What the two tools share: text between UTF-8 and UTF-16, columns, colours, JSON, the command line.

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// A text as it may go to a terminal: what could steer it, and what is no UTF-8, becomes U+FFFD.
inline std::string shown(std::string_view utf8) {
    std::u16string text = toUtf16(utf8);
    std::replace_if(
        text.begin(), text.end(), [](char16_t c) { return u_charType(c) == U_CONTROL_CHAR; }, u'\uFFFD');
    return toUtf8(text);
}

/// A text that `shown` gave, with spaces behind it up to a column.
inline std::string padded(std::string_view utf8, std::size_t width) {
    std::string text(utf8);
    std::size_t const taken = columns(utf8);
    return taken < width ? text.append(width - taken, ' ') : text;
}

/// How wide each column of a table is.
using Row = std::vector<std::string>;
inline std::vector<std::size_t> widths(std::vector<Row> const& rows) {
    std::vector<std::size_t> result;
    for (auto const& row : rows) {
        result.resize(std::max(result.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            result[i] = std::max(result[i], columns(row[i]));
        }
    }
    return result;
}

/// An object of JSON on one line, its members in the order in which they are added.
class Json {
public:
    Json& add(std::string_view name, std::string_view value) { return raw(name, quoted(value)); }
    Json& add(std::string_view name, char const* value) { return add(name, std::string_view(value)); }
    Json& add(std::string_view name, bool value) { return raw(name, value ? "true" : "false"); }
    Json& add(std::string_view name, Json const& value) { return raw(name, value.text()); }
    Json& add(std::string_view name, std::vector<std::string> const& values) {
        std::string list;
        for (auto const& value : values) {
            list += (list.empty() ? "" : ",") + quoted(value);
        }
        return raw(name, "[" + list + "]");
    }
    Json& addNull(std::string_view name) { return raw(name, "null"); }
    [[nodiscard]] std::string text() const { return "{" + members + "}"; }

private:
    Json& raw(std::string_view name, std::string const& value) {
        members += (members.empty() ? "" : ",") + quoted(name) + ":" + value;
        return *this;
    }
    // What is no UTF-8 becomes U+FFFD.
    static std::string quoted(std::string_view utf8) {
        std::string text = "\"";
        for (char const c : toUtf8(toUtf16(utf8))) {
            if (c == '"' || c == '\\') {
                text += {'\\', c};
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
    std::string members;
};

/// The words of a command line, one after the other: `--name value` and `--name=value` are the same, and all
/// behind `--` is no option.
class Words {
public:
    Words(int argc, char** argv) : words(argv + 1, argv + argc) {}

    /// The next word; false at the end.
    bool next() {
        attached.reset();
        if (at == words.size()) {
            return false;
        }
        current = words[at++];
        if (!literal && current == "--") {
            literal = true;
            return next();
        }
        if (std::size_t const sign = current.find('='); isOption() && sign != std::string::npos) {
            attached = current.substr(sign + 1);
            current.resize(sign);
        }
        return true;
    }
    [[nodiscard]] bool isOption() const { return !literal && current.size() > 1 && current[0] == '-'; }
    [[nodiscard]] bool is(std::string_view option) const {
        return isOption() && !attached && current == option;
    }
    /// Whether the word is this option, with a value that goes to `value`.
    bool is(std::string_view option, std::string& value) {
        if (!isOption() || current != option || (!attached && at == words.size())) {
            return false;
        }
        value = attached ? *attached : words[at++];
        return true;
    }
    [[nodiscard]] std::string const& word() const { return current; }

private:
    std::vector<std::string> words;
    std::size_t at = 0;
    std::string current;
    std::optional<std::string> attached;
    bool literal = false;
};

/// To be called first: output is quick, and a reader that has seen enough (`| head`) ends the program at once
/// and without a word, also where the parent process had that signal ignored.
inline void start() {
    std::ios::sync_with_stdio(false);
    std::signal(SIGPIPE, SIG_DFL);
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
