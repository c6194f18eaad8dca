#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

/// What stands before a path that begins with "//" and would be read as a host.
inline constexpr std::u32string_view noHost = U"/.";

/// A value under construction from pieces, which are views of operands, of arguments, or of texts of its own.
///
/// The end copies them all into one text, in the order and with the delimiters of an IRI; the parts of the
/// new value are slices of it, each in the form in which it was given. So parts pass through unchanged, the
/// whole takes one allocation, and where all pieces are in one form the text is that form of the whole.
template <class String>
class TemplateIRI<String>::Draft {
public:
    /// The end writes into `target`, which must be as `IRI()`.
    explicit Draft(TemplateIRI& target) : result(target) {}
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    ~Draft() = default;

    Flags& flags() { return result.flags; }

    void setScheme(View text) {
        result.flags.hasScheme = true;
        scheme = text;
    }
    void setUserInfo(View text) {
        result.flags.hasUserInfo = true;
        piece(Part::userInfo) = {text, Encoding::Raw};
    }
    void setHost(View text) {
        result.flags.hasHost = true;
        piece(Part::host) = {text, Encoding::Raw};
    }
    void setPort(unsigned short number) {
        std::array<char, 5> digits{};
        char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        result.flags.hasPort = true;
        result.port = number;
        ownPort.assign(digits.data(), end);
        portText = ownPort;
    }
    /// A path in `Encoding::Raw` that somebody else keeps.
    void setPath(View path, bool absolute) {
        result.flags.hasAbsolutePath = absolute;
        result.flags.pathIsEmpty = path.empty();
        piece(Part::path) = {path, Encoding::Raw};
    }
    /// A path in `Encoding::Raw`. It is absolute exactly when it begins with "/".
    void setPath(String path) {
        ownPath = std::move(path);
        setPath(View(ownPath), !ownPath.empty() && ownPath.front() == FORWARD_SLASH);
    }
    void setQuery(String text, bool formEncoded) {
        result.flags.hasQuery = true;
        result.flags.queryIsFormEncoded = formEncoded;
        ownQuery = std::move(text);
        piece(Part::query) = {ownQuery, Encoding::Raw};
    }
    void setFragment(View text) {
        result.flags.hasFragment = true;
        piece(Part::fragment) = {text, Encoding::Raw};
    }

    // Of another value, what it has of a part, in the form in which it was stored.

    void takeScheme(TemplateIRI const& from) {
        result.flags.hasScheme = from.flags.hasScheme;
        scheme = from.schemeView();
    }
    /// User information, host and port.
    void takeAuthority(TemplateIRI const& from) {
        result.flags.hasUserInfo = from.flags.hasUserInfo;
        result.flags.hasHost = from.flags.hasHost;
        result.flags.hasPort = from.flags.hasPort;
        take(Part::userInfo, from);
        take(Part::host, from);
        result.port = from.port;
        portText = from.portView();
    }
    /// The path, with what is known of its shape.
    void takePath(TemplateIRI const& from) {
        result.flags.hasAbsolutePath = from.flags.hasAbsolutePath;
        result.flags.pathIsEmpty = from.flags.pathIsEmpty;
        result.flags.pathHasDotSegments = from.flags.pathHasDotSegments;
        take(Part::path, from);
    }
    void takeQuery(TemplateIRI const& from) {
        result.flags.hasQuery = from.flags.hasQuery;
        result.flags.queryIsFormEncoded = from.flags.queryIsFormEncoded;
        take(Part::query, from);
    }
    void takeFragment(TemplateIRI const& from) {
        result.flags.hasFragment = from.flags.hasFragment;
        take(Part::fragment, from);
    }

    [[nodiscard]] View path() const { return pieces[static_cast<std::size_t>(Part::path)].first; }

    /// Ends the value, for a reference: a path that begins with "//" beside no host gets "/." in front.
    void finish() {
        bool const guarded = !result.flags.hasHost && path().size() > 1 && path()[0] == FORWARD_SLASH &&
                             path()[1] == FORWARD_SLASH;
        finishBehind(guarded ? View(noHost) : View());
    }

    /// Ends the value as its pieces are.
    void finishAsGiven() { finishBehind(View()); }

private:
    using Piece = std::pair<View, Encoding>;

    Piece& piece(Part part) { return pieces[static_cast<std::size_t>(part)]; }

    void take(Part part, TemplateIRI const& from) {
        piece(part) = from.parts.has(part) ? from.parts.storedView(part) : Piece(View(), Encoding::Raw);
    }

    void finishBehind(View beforePath) {
        constexpr std::size_t delimiters = 7; // ":" "//" "@" ":" "?" "#"
        std::size_t length = scheme.size() + portText.size() + beforePath.size() + delimiters;
        for (auto const& each : pieces) {
            length += each.first.size();
        }
        String text;
        text.reserve(length);
        auto const put = [this, &text](Part part, View before) {
            auto const& [view, encoding] = piece(part);
            Slice const slice{text.size(), before.size() + view.size()};
            text.append(before).append(view);
            result.parts.setSlice(part, slice, formOf(encoding));
        };
        Flags const& has = result.flags;
        if (has.hasScheme) {
            result.scheme = {0, scheme.size()};
            text.append(scheme).push_back(COLON);
        }
        if (has.hasHost) {
            text.append(2, FORWARD_SLASH);
            if (has.hasUserInfo) {
                put(Part::userInfo, View());
                text.push_back(COMMERCIAL_AT);
            }
            put(Part::host, View());
            if (has.hasPort) {
                text.push_back(COLON);
                result.portText = {text.size(), portText.size()};
                text.append(portText);
            }
        }
        put(Part::path, beforePath);
        if (has.hasQuery) {
            text.push_back(QUESTION_MARK);
            put(Part::query, View());
        }
        if (has.hasFragment) {
            text.push_back(HASH_SIGN);
            put(Part::fragment, View());
        }
        result.parts.adoptSource(std::move(text));
        result.parts.setContext(has.hasScheme, has.queryIsFormEncoded);
        result.close();
    }

    TemplateIRI& result;
    View scheme;
    View portText;
    std::array<Piece, 5> pieces{};
    String ownPort;
    String ownPath;
    String ownQuery;
};

} // namespace foundation::network::iri::detail
