#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/PathIn.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

/// A value under construction, told from its start to its end in views, which must stay until then. The end
/// copies them all into one text, in the order and with the delimiters of an IRI; the parts of the new value
/// are slices of it, each in the form in which it was given. So parts pass through unchanged, the whole takes
/// one allocation, and where all are in one form the text is that form of the whole.
///
/// What `set...` takes is in `Encoding::Raw`; what `take...` takes of another value comes as that one stored
/// it.
template <class String>
class TemplateIRI<String>::Draft {
public:
    /// `reference`: a path that begins with "//" beside no host would be read as a host, and gets "/." in
    /// front. Otherwise all stays as it is.
    enum class Kind : bool { built, reference };

    /// Makes `target`, which must be as `IRI()`.
    Draft(TemplateIRI& target, Kind draftKind) : result(target), flags(target.flags), kind(draftKind) {}
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    ~Draft() = default;

    void setScheme(View text) {
        flags.hasScheme = true;
        result.scheme = {0, text.size()};
        put(text);
        put(U":");
    }
    void setUserInfo(View userInfo) {
        flags.hasUserInfo = true;
        put(U"//");
        putPart(Part::userInfo, userInfo, Form::raw);
        put(U"@");
    }
    void setHost(View host) {
        flags.hasHost = true;
        if (!flags.hasUserInfo) {
            put(U"//");
        }
        putPart(Part::host, host, Form::raw);
    }
    void setPort(unsigned short number) {
        std::array<char, 5> digits{};
        char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        std::copy(digits.data(), end, ownPort.data());
        View const text(ownPort.data(), static_cast<std::size_t>(end - digits.data()));
        flags.hasPort = true;
        result.port = number;
        put(U":");
        result.portText = {length, text.size()};
        put(text);
    }
    /// Every value gets a path, behind its authority; this one counts as absolute as told.
    void setPath(View path, bool absolute) {
        putPath(View(), path, Form::raw);
        flags.hasAbsolutePath = absolute;
    }
    /// A path that is absolute exactly when it begins with "/", in one piece or in two.
    void setPath(View path) { setPath(View(), path); }
    void setPath(String&& path) {
        ownPath = std::move(path);
        setPath(View(ownPath));
    }
    void setPath(View front, View rest) {
        View const first = front.empty() ? rest : front;
        putPath(front, rest, Form::raw);
        flags.hasAbsolutePath = !first.empty() && first.front() == FORWARD_SLASH;
    }
    /// Whether the next resolution removes dot segments of the path; not, unless told.
    void setPathHasDotSegments(bool has) { flags.pathHasDotSegments = has; }
    void setQuery(View query, bool formEncoded) {
        flags.hasQuery = true;
        flags.queryIsFormEncoded = formEncoded;
        put(U"?");
        putPart(Part::query, query, Form::raw);
    }
    void setFragment(View fragment) {
        flags.hasFragment = true;
        put(U"#");
        putPart(Part::fragment, fragment, Form::raw);
    }

    void takeScheme(TemplateIRI const& from) {
        flags.hasScheme = from.flags.hasScheme;
        result.scheme = from.scheme;
        put(from.stretch(0, authorityBegin(from)));
    }
    /// User information, host and port, which stand between the scheme and the path.
    void takeAuthority(TemplateIRI const& from) {
        if (!from.flags.hasHost) {
            return;
        }
        std::size_t const begin = authorityBegin(from);
        flags.hasHost = true;
        takeSlice(Part::host, from, begin);
        if (from.flags.hasUserInfo) {
            flags.hasUserInfo = true;
            takeSlice(Part::userInfo, from, begin);
        }
        if (from.flags.hasPort) {
            flags.hasPort = true;
            result.port = from.port;
            result.portText = {from.portText.begin - begin + length, from.portText.length};
        }
        put(from.stretch(begin, from.parts.slice(Part::path).begin));
    }
    /// The path, with what is known of its shape.
    void takePath(TemplateIRI const& from) {
        PathIn const path = from.storedPath();
        putPath(View(), path.text, path.form);
        flags.hasAbsolutePath = from.flags.hasAbsolutePath;
        flags.pathHasDotSegments = path.hasDotSegments;
    }
    void takeQuery(TemplateIRI const& from) {
        if (from.flags.hasQuery) {
            flags.hasQuery = true;
            flags.queryIsFormEncoded = from.flags.queryIsFormEncoded;
            takeDelimited(Part::query, from);
        }
    }
    void takeFragment(TemplateIRI const& from) {
        if (from.flags.hasFragment) {
            flags.hasFragment = true;
            takeDelimited(Part::fragment, from);
        }
    }

    void finish() {
        String& text = result.parts.writableSource();
        text.reserve(length);
        for (std::size_t i = 0; i != count; ++i) {
            text.append(pieces[i].begin, pieces[i].size);
        }
        result.parts.setContext(flags.hasScheme, flags.queryIsFormEncoded);
        flags.empty = result.parts.isEmpty() && !flags.hasScheme && !flags.hasPort;
        flags.hasAuthority = flags.hasHost;
        if (flags.hasScheme) {
            flags.isAbsolute = true;
            flags.isOpaque = !flags.hasHost && !flags.hasAbsolutePath;
        }
    }

private:
    struct Piece { // without a constructor, which would fill them all
        typename View::const_pointer begin;
        std::size_t size;
    };
    static constexpr std::size_t MOST_PIECES = 15; // all parts, all delimiters, a path in three

    static std::size_t authorityBegin(TemplateIRI const& value) {
        return value.flags.hasScheme ? value.scheme.length + 1 : 0;
    }

    // Neighbours in one text, as the parts of another value mostly are, become one piece. Every text ends in
    // a null, so views of two are never neighbours.
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
    void putPart(Part part, View view, Form form) {
        result.parts.setSlice(part, {length, view.size()}, form);
        put(view);
    }
    void putPath(View front, View rest, Form form) {
        std::size_t const begin = length;
        std::size_t const size = front.size() + rest.size();
        auto const at = [&](std::size_t i) { return i < front.size() ? front[i] : rest[i - front.size()]; };
        if (kind == Kind::reference && !flags.hasHost && size > 1 && at(0) == FORWARD_SLASH &&
            at(1) == FORWARD_SLASH) {
            put(U"/.");
        }
        put(front);
        put(rest);
        flags.pathIsEmpty = size == 0;
        result.parts.setSlice(Part::path, {begin, length - begin}, form);
    }
    // A part of a stretch that begins at `begin` in the other value's text, and is put next.
    void takeSlice(Part part, TemplateIRI const& from, std::size_t begin) {
        Slice const& slice = from.parts.slice(part);
        result.parts.setSlice(part, {slice.begin - begin + length, slice.length},
                              from.parts.storedForm(part));
    }
    // A part with the delimiter before it.
    void takeDelimited(Part part, TemplateIRI const& from) {
        Slice const& slice = from.parts.slice(part);
        takeSlice(part, from, slice.begin - 1);
        put(from.stretch(slice.begin - 1, slice.begin + slice.length));
    }

    TemplateIRI& result;
    Flags& flags;
    Kind const kind;
    std::array<Piece, MOST_PIECES> pieces; // `count` of them
    std::size_t count = 0;
    typename View::const_pointer behind = nullptr; // the last piece
    std::size_t length = 0;                        // of all pieces
    String ownPath;
    std::array<typename String::value_type, 6> ownPort; // longer than any, so that nothing is its neighbour
};

} // namespace foundation::network::iri::detail
