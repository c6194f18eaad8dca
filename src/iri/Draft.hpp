#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/RelativePath.hpp"

#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// What stands before a path that begins with "//" and would be read as a host.
inline constexpr std::u32string_view noHost = U"/.";

/// A value under construction, whose text is written from its start to its end, in the order and with the
/// delimiters of an IRI. The parts of the new value are slices of that text, each in the form in which it was
/// given. So parts pass through unchanged, the whole takes one allocation, and where all are in one form the
/// text is that form of the whole.
///
/// What `set...` takes is in `Encoding::Raw`. What `take...` takes of another value comes as that one stored
/// it; the text of a value is one stretch before the path, the path, and one stretch behind it, so neighbours
/// are copied together.
template <class String>
class TemplateIRI<String>::Draft {
public:
    /// Writes into `target`, which must be as `IRI()`.
    explicit Draft(TemplateIRI& target) : result(target), flags(target.flags) {}
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    ~Draft() = default;

    /// Makes room for what is going to be taken; a path that is made of it can be a little longer.
    void reserve(std::size_t length) { text.reserve(length + 1 + noHost.size()); }

    void setScheme(View scheme) {
        flags.hasScheme = true;
        result.scheme = {0, scheme.size()};
        text.append(scheme).push_back(COLON);
    }
    void setUserInfo(View userInfo) {
        flags.hasUserInfo = true;
        text.append(2, FORWARD_SLASH);
        put(Part::userInfo, userInfo);
        text.push_back(COMMERCIAL_AT);
    }
    void setHost(View host) {
        flags.hasHost = true;
        text.append(flags.hasUserInfo ? 0 : 2, FORWARD_SLASH);
        put(Part::host, host);
    }
    void setPort(unsigned short number) {
        std::array<char, 5> digits{};
        char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        flags.hasPort = true;
        result.port = number;
        text.push_back(COLON);
        result.portText = {text.size(), static_cast<std::size_t>(end - digits.data())};
        text.append(digits.data(), end);
    }
    /// Every value gets a path, between its authority and its query.
    void setPath(View path, bool absolute) {
        flags.hasAbsolutePath = absolute;
        flags.pathIsEmpty = path.empty();
        put(Part::path, path);
    }
    /// The same for a path that is absolute exactly when it begins with "/".
    void setPath(View path) { setPath(path, !path.empty() && path.front() == FORWARD_SLASH); }
    /// The same for one that `write` appends to the text that it is given.
    template <class Write>
    void writePath(Write write) {
        std::size_t const begin = text.size();
        write(text);
        flags.hasAbsolutePath = begin != text.size() && text[begin] == FORWARD_SLASH;
        flags.pathIsEmpty = begin == text.size();
        result.parts.setSlice(Part::path, {begin, text.size() - begin}, Form::raw);
    }
    void setPathHasDotSegments(bool has) { flags.pathHasDotSegments = has; }
    void setQuery(View query, bool formEncoded) {
        flags.hasQuery = true;
        flags.queryIsFormEncoded = formEncoded;
        text.push_back(QUESTION_MARK);
        put(Part::query, query);
    }
    void setFragment(View fragment) {
        flags.hasFragment = true;
        text.push_back(HASH_SIGN);
        put(Part::fragment, fragment);
    }

    /// Scheme and authority.
    void takeFront(TemplateIRI const& from) {
        takeScheme(from);
        takeAuthority(from);
    }
    void takeScheme(TemplateIRI const& from) {
        flags.hasScheme = from.flags.hasScheme;
        result.scheme = from.scheme;
        text.append(from.sourceText(), 0, authorityBegin(from));
    }
    /// User information, host and port.
    void takeAuthority(TemplateIRI const& from) {
        if (!from.flags.hasHost) {
            return;
        }
        std::size_t const begin = authorityBegin(from);
        std::size_t const to = text.size();
        text.append(from.sourceText(), begin, from.parts.slice(Part::path).begin - begin);
        flags.hasHost = true;
        move(Part::host, from, begin, to);
        if (from.flags.hasUserInfo) {
            flags.hasUserInfo = true;
            move(Part::userInfo, from, begin, to);
        }
        if (from.flags.hasPort) {
            flags.hasPort = true;
            result.port = from.port;
            result.portText = {from.portText.begin - begin + to, from.portText.length};
        }
    }
    /// The path, with what is known of its shape.
    void takePath(TemplateIRI const& from) {
        Slice const& path = from.parts.slice(Part::path);
        flags.hasAbsolutePath = from.flags.hasAbsolutePath;
        flags.pathIsEmpty = from.flags.pathIsEmpty;
        flags.pathHasDotSegments = from.pathHasDotSegments();
        std::size_t const to = text.size();
        text.append(from.sourceText(), path.begin, path.length);
        move(Part::path, from, path.begin, to);
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

    /// Ends the path of a relative reference: the next resolution removes dot segments of it.
    void closePath() {
        Slice const& path = result.parts.slice(Part::path);
        flags.pathHasDotSegments = hasRelativePathSegments(View(text).substr(path.begin, path.length));
        guardPath();
    }
    /// Ends the path of a reference, before anything behind it is written: one that begins with "//" beside
    /// no host gets "/." in front.
    void guardPath() {
        Slice const path = result.parts.slice(Part::path);
        if (!flags.hasHost && View(text).substr(path.begin, 2) == U"//") {
            text.insert(path.begin, noHost);
            result.parts.setSlice(Part::path, {path.begin, path.length + noHost.size()},
                                  result.parts.storedForm(Part::path));
        }
    }

    /// Ends the value.
    void finish() {
        result.parts.adoptSource(std::move(text));
        result.parts.setContext(flags.hasScheme, flags.queryIsFormEncoded);
        flags.empty = result.parts.isEmpty() && !flags.hasScheme && !flags.hasPort;
        flags.hasAuthority = flags.hasHost;
        if (flags.hasScheme) {
            flags.isAbsolute = true;
            flags.isOpaque = !flags.hasHost && !flags.hasAbsolutePath;
        }
    }

private:
    static std::size_t authorityBegin(TemplateIRI const& value) {
        return value.flags.hasScheme ? value.scheme.length + 1 : 0;
    }

    void put(Part part, View raw) {
        result.parts.setSlice(part, {text.size(), raw.size()}, Form::raw);
        text.append(raw);
    }
    // A part of a stretch that was copied from `begin` of the one text to `to` of the other.
    void move(Part part, TemplateIRI const& from, std::size_t begin, std::size_t to) {
        Slice const& slice = from.parts.slice(part);
        result.parts.setSlice(part, {slice.begin - begin + to, slice.length}, from.parts.storedForm(part));
    }
    void takeDelimited(Part part, TemplateIRI const& from) {
        Slice const& slice = from.parts.slice(part);
        std::size_t const to = text.size();
        text.append(from.sourceText(), slice.begin - 1, slice.length + 1);
        move(part, from, slice.begin - 1, to);
    }

    TemplateIRI& result;
    Flags& flags;
    String text;
};

} // namespace foundation::network::iri::detail
