#pragma once

#include <foundation/network/iri/detail/StoredText.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

/// Whether the first segment of a path holds a ":". Without a scheme and a host in front, the text before it
/// would be read as a scheme (RFC 3986, section 4.2).
[[nodiscard]] inline bool hasColonInFirstSegment(std::u32string_view path) {
    for (char32_t const c : path) {
        if (c == U'/' || c == U':') {
            return c == U':';
        }
    }
    return false;
}

/// Refuses components that cannot stand in one IRI.
///
/// Throws: the internal `std::logic_error`, "User Info requires a host", "Port requires a host" or "Path
/// cannot be relative if authority present".
void requireHost(bool hasUserInfo, bool hasHost, bool hasPort, std::u32string_view path);

/// Writes the text and the record of a new value that is not parsed. Components are added as views; `finish`
/// copies them, with their delimiters, into one text, which takes one allocation. The views must stay valid
/// until then.
///
/// `set...` adds a component whose form the caller names; `take...` adds components of another value in the
/// forms that they have there. Call them in the order of an IRI; a path must be set.
class Draft {
public:
    using String = std::u32string;
    using View = std::u32string_view;

    /// What the finished text guarantees.
    ///
    /// - `none`: every component is written as it was set.
    /// - `noFalseHost`: without a host, a path that begins with "//" gets "/." in front, so that it is not
    ///   read as a host.
    /// - `asParsed`: the value is as its text parsed, if each component is one by the grammar. Besides
    ///   `noFalseHost`, without scheme and host a path with a ":" in its first segment gets "./" in front, so
    ///   that no scheme is read. All components must be set in the Iri form.
    enum class Guarantee : unsigned char { none, noFalseHost, asParsed };

    /// Writes into `target`, which must be new.
    Draft(StoredText& target, Guarantee wanted)
        : result(target), components(target.components), guarantee(wanted) {}
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    ~Draft() = default;

    void setScheme(View text) {
        append(text);
        components.schemeEnd = length;
        append(U":");
    }
    void setUserInfo(View userInfo, Form form) {
        append(U"//");
        components.setForm(Part::userInfo, form);
        append(userInfo);
        append(U"@");
        components.hostBegin = length;
    }
    void setHost(View host, Form form) {
        if (components.hostBegin == 0) { // no user information
            append(U"//");
            components.hostBegin = length;
        }
        components.setForm(Part::host, form);
        append(host);
        components.hostEnd = length;
    }
    void setPort(unsigned short number) {
        std::array<char, 5> digits{};
        char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        std::copy(digits.data(), end, ownPort.data());
        setPort({ownPort.data(), static_cast<std::size_t>(end - digits.data())}, number);
    }
    void setPort(View digits, unsigned short number) {
        components.port = number;
        append(U":");
        append(digits);
    }

    /// Sets a path for which the caller says whether it counts as absolute.
    void setPath(View path, Form form, bool absolute) { appendPath(View(), path, form, absolute); }
    /// Sets a path that is absolute exactly when it begins with "/". It may come in two pieces.
    void setPath(View path, Form form) { setPath(View(), path, form); }
    void setPath(String&& path, Form form) {
        ownPath = std::move(path);
        setPath(View(ownPath), form);
    }
    void setPath(View front, View rest, Form form) {
        View const first = front.empty() ? rest : front;
        appendPath(front, rest, form, !first.empty() && first.front() == U'/');
    }
    /// Lets the next resolution leave the path's dot segments in place.
    void keepDotSegments() { components.dotSegmentsStay = true; }
    void setQuery(View query, Form form, bool formEncoded) {
        components.queryIsFormEncoded = formEncoded;
        components.setForm(Part::query, form);
        append(U"?");
        append(query);
        components.queryEnd = length;
    }
    void setFragment(View fragment, Form form) {
        components.setForm(Part::fragment, form);
        append(U"#");
        append(fragment);
    }

    void takeScheme(StoredText const& from) {
        components.schemeEnd = from.components.schemeEnd;
        append(from.stretch(0, from.components.authorityBegin()));
    }
    /// Takes user information, host and port.
    void takeAuthority(StoredText const& from) {
        Components const& other = from.components;
        if (other.hasHost()) {
            std::size_t const begin = other.authorityBegin();
            components.hostBegin = other.hostBegin - begin + length;
            components.hostEnd = other.hostEnd - begin + length;
            components.port = other.port;
            components.setForm(Part::userInfo, other.form(Part::userInfo));
            components.setForm(Part::host, other.form(Part::host));
            append(from.stretch(begin, other.pathBegin));
        }
    }
    void takeSchemeAndAuthority(StoredText const& from) {
        Components const& other = from.components;
        components.schemeEnd = other.schemeEnd;
        if (other.hasHost()) {
            components.hostBegin = other.hostBegin;
            components.hostEnd = other.hostEnd;
            components.port = other.port;
            components.setForm(Part::userInfo, other.form(Part::userInfo));
            components.setForm(Part::host, other.form(Part::host));
        }
        append(from.stretch(0, other.pathBegin));
    }
    /// Takes the path, and whether it is absolute and keeps its dot segments.
    void takePath(StoredText const& from) {
        appendPath(View(), from.given(Part::path), from.components.form(Part::path),
                   from.components.pathIsAbsolute);
        components.dotSegmentsStay = from.components.dotSegmentsStay;
    }
    void takeQuery(StoredText const& from) {
        components.queryIsFormEncoded = from.components.queryIsFormEncoded;
        components.setForm(Part::query, from.components.form(Part::query));
        append(from.stretch(from.components.pathEnd, from.components.queryEnd));
        components.queryEnd = length;
    }
    void takeFragment(StoredText const& from) {
        components.setForm(Part::fragment, from.components.form(Part::fragment));
        append(from.stretch(from.components.queryEnd, from.components.end));
    }
    void takeQueryAndFragment(StoredText const& from) {
        Components const& other = from.components;
        components.queryIsFormEncoded = other.queryIsFormEncoded;
        components.setForm(Part::query, other.form(Part::query));
        components.setForm(Part::fragment, other.form(Part::fragment));
        components.queryEnd = length + other.queryEnd - other.pathEnd;
        append(from.stretch(other.pathEnd, other.end));
    }

    void finish() {
        components.end = length;
        if (guarantee == Guarantee::asParsed) {
            std::fill(std::begin(components.forms), std::end(components.forms), Form::iri);
            result.parsed = true;
        }
        String& text = result.text;
        text.reserve(length);
        for (std::size_t i = 0; i != count; ++i) {
            text.append(pieces[i].begin, pieces[i].size);
        }
    }

private:
    struct Piece { // without initializers: filling all pieces would cost time
        View::const_pointer begin;
        std::size_t size;
    };
    static constexpr std::size_t maxPieces =
        15; // all components and all delimiters; a path takes up to three

    // A view that begins where the last piece ends, as neighbours in another value's text do, lengthens that
    // piece. Two texts are never taken for neighbours: a null ends each of them.
    void append(View view) {
        length += view.size();
        if (count != 0 && lastEnd == view.data()) {
            pieces[count - 1].size += view.size();
        } else if (!view.empty()) {
            pieces[count++] = {view.data(), view.size()};
        } else {
            return;
        }
        lastEnd = view.data() + view.size();
    }
    void appendPath(View front, View rest, Form form, bool absolute) {
        bool const hasHost = components.hostBegin != 0;
        if (!hasHost) {
            components.hostBegin = components.hostEnd = length;
        }
        components.pathBegin = length;
        std::size_t const size = front.size() + rest.size();
        auto const at = [&](std::size_t i) { return i < front.size() ? front[i] : rest[i - front.size()]; };
        if (guarantee != Guarantee::none && !hasHost && size > 1 && at(0) == U'/' && at(1) == U'/') {
            append(U"/.");
        }
        if (guarantee == Guarantee::asParsed && !hasHost && components.schemeEnd == 0) {
            if (hasColonInFirstSegment(front) ||
                (front.find(U'/') == View::npos && hasColonInFirstSegment(rest))) {
                append(U"./");
            }
        }
        append(front);
        append(rest);
        components.hasPath = true;
        components.pathIsAbsolute = absolute;
        components.setForm(Part::path, form);
        components.pathEnd = components.queryEnd = length;
    }

    StoredText& result;
    Components& components;
    Guarantee const guarantee;
    std::array<Piece, maxPieces> pieces; // the first `count` are used
    std::size_t count = 0;
    View::const_pointer lastEnd = nullptr; // of the last piece
    std::size_t length = 0;                // of all pieces
    String ownPath;
    std::array<char32_t, 6> ownPort; // one longer than any port, so that nothing begins where one ends
};

} // namespace foundation::network::iri::detail
