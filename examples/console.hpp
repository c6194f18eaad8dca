#pragma once

// What the two tools share: text as a terminal shows it, columns, colours, JSON, the command line, lines of
// files.

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace console {

/// The character at `at`, which moves behind it; U+FFFD for what is no UTF-8.
inline UChar32 next(std::string_view utf8, std::size_t& at) {
    UChar32 c = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion" // ICU's macro narrows
#pragma GCC diagnostic ignored "-Wsign-conversion"
    U8_NEXT_OR_FFFD(utf8.data(), at, utf8.size(), c);
#pragma GCC diagnostic pop
    return c;
}

/// A text with U+FFFD for the characters that `hidden` picks, and for what is no UTF-8.
template <class Predicate>
std::string without(std::string_view utf8, Predicate hidden) {
    std::string text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        std::size_t const begin = at;
        UChar32 const c = next(utf8, at);
        text += c == 0xFFFD || hidden(c) ? std::string_view("\uFFFD") : utf8.substr(begin, at - begin);
    }
    return text;
}

/// A text as it may go to a terminal, without what could steer it: controls, and those of direction, the ones
/// of RFC 3987, section 4.1, and the newer ones.
inline std::string shown(std::string_view utf8) {
    return without(utf8, [](UChar32 c) {
        return u_charType(c) == U_CONTROL_CHAR || u_hasBinaryProperty(c, UCHAR_BIDI_CONTROL) != 0;
    });
}

/// How many columns of a terminal a character takes: two if it is wide, none if it is a mark or a control.
inline std::size_t columns(UChar32 c) {
    auto const type = u_charType(c);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR ||
        type == U_CONTROL_CHAR) {
        return 0;
    }
    int const eastAsian = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH ? 2 : 1;
}

/// How many columns a text takes.
inline std::size_t columns(std::string_view utf8) {
    std::size_t width = 0;
    for (std::size_t at = 0; at < utf8.size();) {
        width += columns(next(utf8, at));
    }
    return width;
}

/// How many columns of a text a message shows.
constexpr std::size_t columnsShown = 76;

/// What of a text, from `begin`, takes up to so many columns, as it may go to a terminal, with an ellipsis
/// where more follows.
inline std::string abridged(std::string_view utf8, std::size_t begin = 0, std::size_t room = columnsShown) {
    std::size_t end = begin;
    for (std::size_t taken = 0; end < utf8.size() && taken < room;) {
        taken += std::max<std::size_t>(columns(next(utf8, end)), 1); // a heap of marks has an end, too
    }
    return shown(utf8.substr(begin, end - begin)) + (end < utf8.size() ? "\u2026" : "");
}

/// A text as it may go to a terminal, and on the next line a caret under the character that begins at
/// `place`, up to which the text is UTF-8. Of a text that is too long for a line, what stands about the
/// place.
inline std::string pointedAt(std::string_view utf8, std::size_t place) {
    constexpr std::size_t inFront = 48;
    std::size_t begin = place;
    for (std::size_t taken = 0; begin > 0 && taken < inFront;) {
        do {
            --begin;
        } while (begin > 0 && U8_IS_TRAIL(utf8[begin]));
        std::size_t at = begin;
        taken += std::max<std::size_t>(columns(next(utf8, at)), 1);
    }
    std::string const front = (begin > 0 ? "\u2026" : "") + shown(utf8.substr(begin, place - begin));
    std::string const rest = abridged(utf8, place, columnsShown - columns(front));

    std::size_t column = 0;
    std::size_t last = 0; // where the last character that takes a column begins: marks stand on it
    for (std::size_t at = 0; at < front.size();) {
        if (std::size_t const width = columns(next(front, at)); width > 0) {
            last = column;
            column += width;
        }
    }
    std::size_t first = 0;
    bool const onTheLast = !rest.empty() && columns(next(rest, first)) == 0;
    return "  " + front + rest + "\n  " + std::string(onTheLast ? last : column, ' ') + "^\n";
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
    Json& add(std::string_view name, std::size_t value) { return raw(name, std::to_string(value)); }
    Json& add(std::string_view name, Json const& value) { return raw(name, value.text()); }
    Json& add(std::string_view name, std::vector<std::string> const& values) {
        std::string list;
        for (auto const& value : values) {
            list += (list.empty() ? "" : ",") + quoted(value);
        }
        return raw(name, "[" + list + "]");
    }
    Json& add(std::string_view name, std::vector<Json> const& objects) {
        std::string list;
        for (auto const& object : objects) {
            list += (list.empty() ? "" : ",") + object.text();
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
        for (char const c : without(utf8, [](UChar32) { return false; })) {
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
    /// Whether the word asks for the help or the version, which is printed then.
    [[nodiscard]] bool answered(char const* program, char const* help) const {
        if (is("-h") || is("--help")) {
            std::cout << help;
        } else if (is("--version")) {
            std::cout << program << " (libzvflnetwork) " ZVFLNETWORK_TOOL_VERSION "\n";
        } else {
            return false;
        }
        return true;
    }
    [[nodiscard]] std::string const& word() const { return current; }
    /// Which word of the command line it is, the name of the program not counted.
    [[nodiscard]] std::size_t place() const { return at; }

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

/// To be called last. Gives the exit status: 2, with a message, where standard output could not be written.
inline int finish(char const* program, int status) {
    if (std::cout.flush()) {
        return status;
    }
    std::cerr << program << ": cannot write standard output\n";
    return 2;
}

/// The lines of a file, or of standard input ("-"), without the byte order mark that UTF-8 may begin with.
class Lines {
public:
    explicit Lines(std::string const& name)
        : opened(name != "-"),
          input(opened ? ::open(name.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO),
          error(input < 0 ? errno : 0) {}
    Lines(Lines const&) = delete;
    Lines& operator=(Lines const&) = delete;
    ~Lines() {
        if (opened && input >= 0) {
            ::close(input);
        }
    }

    /// The next line; false at the end, or where reading failed.
    bool next(std::string& line) {
        line.clear();
        bool whole = false;
        while (!whole && (at != end || fill())) {
            char const* const begin = buffer.data() + at;
            void const* const sign = std::memchr(begin, '\n', end - at);
            whole = sign != nullptr;
            std::size_t const length =
                whole ? static_cast<std::size_t>(static_cast<char const*>(sign) - begin) : end - at;
            line.append(begin, length);
            at += length + (whole ? 1 : 0);
        }
        if (first && line.compare(0, 3, "\xEF\xBB\xBF") == 0) {
            line.erase(0, 3);
        }
        first = false;
        return error == 0 && (whole || !line.empty());
    }
    /// Why it could not be read, as `errno` has it; 0 if it could.
    [[nodiscard]] int fault() const { return error; }

private:
    // A reader at a terminal sees what became of the last line before the next one is waited for.
    bool fill() {
        std::cout.flush();
        ssize_t count = 0;
        do {
            count = error == 0 ? ::read(input, buffer.data(), buffer.size()) : 0;
        } while (count < 0 && errno == EINTR);
        error = count < 0 ? errno : error;
        at = 0;
        end = count > 0 ? static_cast<std::size_t>(count) : 0;
        return end != 0;
    }

    bool opened;
    int input;
    int error;
    std::array<char, 65536> buffer{};
    std::size_t at = 0;
    std::size_t end = 0;
    bool first = true;
};

/// Whether this is a terminal that can be steered.
inline bool isTerminal(int descriptor) {
    char const* const kind = std::getenv("TERM");
    return isatty(descriptor) != 0 && kind != nullptr && std::string_view(kind) != "dumb";
}

/// Colours where standard output is such a terminal and NO_COLOR (no-color.org) is not set.
class Style {
public:
    Style() {
        char const* const off = std::getenv("NO_COLOR");
        enabled = isTerminal(STDOUT_FILENO) && (off == nullptr || *off == '\0');
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
