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

/// Whether a path has a ":" in its first segment.
[[nodiscard]] inline bool beginsLikeScheme(std::u32string_view path) {
    for (char32_t const c : path) {
        if (c == U'/' || c == U':') {
            return c == U':';
        }
    }
    return false;
}

/// Throws the `std::logic_error` of the family where components do not go together: "User Info requires a
/// host", "Port requires a host", "Path cannot be relative if authority present".
void requireHost(bool hasUserInfo, bool hasHost, bool hasPort, std::u32string_view path);

/// The one writer of new values. A value is told from its start to its end in views, which must stay until
/// then; the end copies them all into one text, in the order and with the delimiters of an IRI. So components
/// pass through unchanged, each in the form in which it was given, and the whole takes one allocation.
///
/// What `set...` takes is in the form that it names; what `take...` takes of another value comes as that one
/// holds it. Call them in the order of an IRI; a path must be set.
class Draft {
public:
    using String = std::u32string;
    using View = std::u32string_view;

    /// `reference`: a path that begins with "//" beside no host would be read as a host, and gets "/." in
    /// front. `exact`: besides, a first segment with ":" beside no scheme and no host would be read as a
    /// scheme, and gets "./" in front; all components come in the Iri form, and the value is as its text
    /// parsed. Otherwise all stays as it is.
    enum class Kind : unsigned char { built, reference, exact };

    /// Makes `target`, which must be new.
    Draft(StoredText& target, Kind draftKind)
        : result(target), components(target.components), kind(draftKind) {}
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    ~Draft() = default;

    void setScheme(View text) {
        put(text);
        components.schemeEnd = length;
        put(U":");
    }
    void setUserInfo(View userInfo, Form form) {
        put(U"//");
        components.setForm(Part::userInfo, form);
        put(userInfo);
        put(U"@");
        components.hostBegin = length;
    }
    void setHost(View host, Form form) {
        if (components.hostBegin == 0) { // no user information
            put(U"//");
            components.hostBegin = length;
        }
        components.setForm(Part::host, form);
        put(host);
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
        put(U":");
        put(digits);
    }

    /// Every value gets a path, behind its authority; this one counts as absolute as told.
    void setPath(View path, Form form, bool absolute) { putPath(View(), path, form, absolute); }
    /// A path that is absolute exactly when it begins with "/", in one piece or in two.
    void setPath(View path, Form form) { setPath(View(), path, form); }
    void setPath(String&& path, Form form) {
        ownPath = std::move(path);
        setPath(View(ownPath), form);
    }
    void setPath(View front, View rest, Form form) {
        View const first = front.empty() ? rest : front;
        putPath(front, rest, form, !first.empty() && first.front() == U'/');
    }
    /// The next resolution does not remove the path's dot segments.
    void keepDotSegments() { components.dotSegmentsStay = true; }
    void setQuery(View query, Form form, bool formEncoded) {
        components.queryIsFormEncoded = formEncoded;
        components.setForm(Part::query, form);
        put(U"?");
        put(query);
        components.queryEnd = length;
    }
    void setFragment(View fragment, Form form) {
        components.setForm(Part::fragment, form);
        put(U"#");
        put(fragment);
    }

    void takeScheme(StoredText const& from) {
        components.schemeEnd = from.components.schemeEnd;
        put(from.stretch(0, from.components.authorityBegin()));
    }
    /// User information, host and port, which stand between the scheme and the path.
    void takeAuthority(StoredText const& from) {
        Components const& other = from.components;
        if (other.hasHost()) {
            std::size_t const begin = other.authorityBegin();
            components.hostBegin = other.hostBegin - begin + length;
            components.hostEnd = other.hostEnd - begin + length;
            components.port = other.port;
            components.setForm(Part::userInfo, other.form(Part::userInfo));
            components.setForm(Part::host, other.form(Part::host));
            put(from.stretch(begin, other.pathBegin));
        }
    }
    /// Scheme and authority.
    void takeFront(StoredText const& from) {
        Components const& other = from.components;
        components.schemeEnd = other.schemeEnd;
        if (other.hasHost()) {
            components.hostBegin = other.hostBegin;
            components.hostEnd = other.hostEnd;
            components.port = other.port;
            components.setForm(Part::userInfo, other.form(Part::userInfo));
            components.setForm(Part::host, other.form(Part::host));
        }
        put(from.stretch(0, other.pathBegin));
    }
    /// The path, with what is known of it.
    void takePath(StoredText const& from) {
        putPath(View(), from.given(Part::path), from.components.form(Part::path),
                from.components.pathIsAbsolute);
        components.dotSegmentsStay = from.components.dotSegmentsStay;
    }
    void takeQuery(StoredText const& from) {
        components.queryIsFormEncoded = from.components.queryIsFormEncoded;
        components.setForm(Part::query, from.components.form(Part::query));
        put(from.stretch(from.components.pathEnd, from.components.queryEnd));
        components.queryEnd = length;
    }
    void takeFragment(StoredText const& from) {
        components.setForm(Part::fragment, from.components.form(Part::fragment));
        put(from.stretch(from.components.queryEnd, from.components.end));
    }

    /// Query and fragment.
    void takeBehindPath(StoredText const& from) {
        Components const& other = from.components;
        components.queryIsFormEncoded = other.queryIsFormEncoded;
        components.setForm(Part::query, other.form(Part::query));
        components.setForm(Part::fragment, other.form(Part::fragment));
        components.queryEnd = length + other.queryEnd - other.pathEnd;
        put(from.stretch(other.pathEnd, other.end));
    }

    void finish() {
        components.end = length;
        if (kind == Kind::exact) {
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
    struct Piece { // without a constructor, which would fill them all
        View::const_pointer begin;
        std::size_t size;
    };
    static constexpr std::size_t MOST_PIECES = 15; // all components, all delimiters, a path in three

    // Neighbours in one text, as the components of another value mostly are, become one piece. Every text
    // ends in a null, so views of two are never neighbours.
    void put(View view) {
        length += view.size();
        if (count != 0 && behind == view.data()) {
            pieces[count - 1].size += view.size();
        } else if (!view.empty()) {
            pieces[count++] = {view.data(), view.size()};
        } else {
            return;
        }
        behind = view.data() + view.size();
    }
    void putPath(View front, View rest, Form form, bool absolute) {
        bool const hasHost = components.hostBegin != 0;
        if (!hasHost) {
            components.hostBegin = components.hostEnd = length;
        }
        components.pathBegin = length;
        std::size_t const size = front.size() + rest.size();
        auto const at = [&](std::size_t i) { return i < front.size() ? front[i] : rest[i - front.size()]; };
        if (kind != Kind::built && !hasHost && size > 1 && at(0) == U'/' && at(1) == U'/') {
            put(U"/.");
        }
        if (kind == Kind::exact && !hasHost && components.schemeEnd == 0) {
            if (beginsLikeScheme(front) || (front.find(U'/') == View::npos && beginsLikeScheme(rest))) {
                put(U"./");
            }
        }
        put(front);
        put(rest);
        components.hasPath = true;
        components.pathIsAbsolute = absolute;
        components.setForm(Part::path, form);
        components.pathEnd = components.queryEnd = length;
    }

    StoredText& result;
    Components& components;
    Kind const kind;
    std::array<Piece, MOST_PIECES> pieces; // `count` of them
    std::size_t count = 0;
    View::const_pointer behind = nullptr; // the last piece
    std::size_t length = 0;               // of all pieces
    String ownPath;
    std::array<char32_t, 6> ownPort; // longer than any, so that nothing is its neighbour
};

} // namespace foundation::network::iri::detail
