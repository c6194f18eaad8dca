#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <array>
#include <string>
#include <utility>

namespace foundation::network::iri::detail {

/// A value under construction from pieces of others.
///
/// The pieces are views of the operands, or a path of its own; `finish` copies them all into one text, of
/// which the parts of the new value are slices, each in the form in which it was stored. So the parts pass
/// through unchanged, and the whole takes one allocation.
template <class String>
class TemplateIRI<String>::Draft {
public:
    Flags& flags() { return result.flags; }

    void takeScheme(TemplateIRI const& from) {
        result.flags.hasScheme = from.flags.hasScheme;
        result.scheme = from.scheme;
    }

    /// User information, host and port, where they are present.
    void takeAuthority(TemplateIRI const& from) {
        result.flags.hasUserInfo = from.flags.hasUserInfo;
        result.flags.hasHost = from.flags.hasHost;
        result.flags.hasPort = from.flags.hasPort;
        take(from.flags.hasUserInfo, Part::userInfo, from);
        take(from.flags.hasHost, Part::host, from);
        result.port = from.port;
        result.portString = from.portString;
    }

    /// The path as it was stored, with what is known of its shape.
    void takePath(TemplateIRI const& from) {
        result.flags.hasAbsolutePath = from.flags.hasAbsolutePath;
        result.flags.pathIsEmpty = from.flags.pathIsEmpty;
        result.flags.pathHasDotSegments = from.flags.pathHasDotSegments;
        take(from.parts.has(Part::path), Part::path, from);
    }

    /// A path in `Encoding::Raw` that an operand holds.
    void setPath(View path, bool absolute) {
        result.flags.hasAbsolutePath = absolute;
        result.flags.pathIsEmpty = path.empty();
        piece(Part::path) = {path, Encoding::Raw};
    }

    /// A new path in `Encoding::Raw`. It is absolute exactly when it begins with "/".
    void setPath(String path) {
        ownPath = std::move(path);
        setPath(View(ownPath), !ownPath.empty() && ownPath.front() == FORWARD_SLASH);
    }

    View path() const { return pieces[static_cast<std::size_t>(Part::path)].first; }

    void takeQuery(TemplateIRI const& from) {
        result.flags.hasQuery = from.flags.hasQuery;
        result.flags.queryIsFormEncoded = from.flags.queryIsFormEncoded;
        take(from.flags.hasQuery, Part::query, from);
    }

    void takeFragment(TemplateIRI const& from) {
        result.flags.hasFragment = from.flags.hasFragment;
        take(from.flags.hasFragment, Part::fragment, from);
    }

    TemplateIRI finish() {
        // Without an authority, a path that begins with "//" would be read as one.
        constexpr char32_t noHost[] = {FORWARD_SLASH, FULL_STOP};
        View const path = piece(Part::path).first;
        bool const guarded =
            !result.flags.hasHost && path.size() > 1 && path[0] == FORWARD_SLASH && path[1] == FORWARD_SLASH;
        View const guard(noHost, guarded ? 2 : 0);
        String text;
        std::size_t length = guard.size();
        for (auto const& each : pieces) {
            length += each.first.size();
        }
        text.reserve(length);
        Flags const& has = result.flags;
        for (auto const& [part, present] :
             {std::pair(Part::userInfo, has.hasUserInfo), std::pair(Part::host, has.hasHost),
              std::pair(Part::path, true), std::pair(Part::query, has.hasQuery),
              std::pair(Part::fragment, has.hasFragment)}) {
            if (present) {
                std::size_t const at = text.size();
                auto const& [view, encoding] = piece(part);
                text.append(part == Part::path ? guard : View()).append(view);
                result.parts.setSlice(part, at, text.size() - at, encoding);
            }
        }
        result.parts.setFormEncoded(has.queryIsFormEncoded);
        result.parts.setSchemePresent(has.hasScheme);
        result.parts.adoptSource(std::move(text));
        result.close();
        return std::move(result);
    }

private:
    using Piece = std::pair<View, Encoding>;

    Piece& piece(Part part) { return pieces[static_cast<std::size_t>(part)]; }

    void take(bool present, Part part, TemplateIRI const& from) {
        piece(part) = present ? from.parts.storedView(part) : Piece(View(), Encoding::Raw);
    }

    TemplateIRI result;
    String ownPath;
    std::array<Piece, 5> pieces{};
};

} // namespace foundation::network::iri::detail
