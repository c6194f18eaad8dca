// Making a reference: what, resolved against a base, gives this value again.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/RelativePath.hpp"
#include "iri/SameText.hpp"
#include "iri/encoding/Conversions.hpp"

#include <algorithm>

namespace foundation::network::iri::detail {

namespace {

[[noreturn]] void refuse(char const* message) {
    throw core::except::detail::makeInternalException(std::logic_error(message));
}

bool beginsWithSlash(std::u32string_view path) {
    return !path.empty() && path.front() == U'/';
}

// `up` times "../".
std::u32string parents(std::size_t up) {
    std::u32string text;
    text.reserve(3 * up);
    for (; up != 0; --up) {
        text.append(U"../");
    }
    return text;
}

// How many components a path that is not empty has, each with its leading slash.
std::size_t countComponents(std::u32string_view path) {
    return 1 + static_cast<std::size_t>(std::count(path.begin() + 1, path.end(), U'/'));
}

// The way from one path to another, both without dot segments, that differ and can be split. `absolute`: the
// other one counts as beginning with "/".
std::u32string wayBetween(std::u32string_view from, std::u32string_view to, bool absolute) {
    if (from.empty()) {
        return std::u32string(to);
    }
    std::size_t const baseCount = countComponents(from);
    if (baseCount == 1 && from.front() == U'/' && beginsWithSlash(to)) {
        return to.size() == 1 ? U"." : std::u32string(to.substr(1));
    }
    // Leading components that are equal, and where the first other one begins. The last component of the
    // shorter path is never common: a reference to it must name it.
    std::size_t const most = to.empty() ? 0 : std::min(baseCount, countComponents(to)) - 1;
    std::size_t common = 0;
    std::size_t behind = 0;
    for (std::size_t at = 1; common != most && from[at - 1] == to[at - 1]; ++at) {
        bool const ends = from[at] == U'/' && to[at] == U'/';
        common += ends ? 1 : 0;
        behind = ends ? at : behind;
    }
    if (common == 0) {
        std::u32string way = parents(std::max<std::size_t>(baseCount - 1, 1));
        return way.append(to.substr(absolute && !to.empty() ? 1 : 0));
    }
    std::size_t const up = baseCount - common - 1;
    if (up == 0) { // "." and the rest, of which "./" goes again unless it is all
        return to.size() - behind > 1 ? std::u32string(to.substr(behind + 1)) : U"./";
    }
    std::u32string way = parents(up);
    return way.append(to.substr(behind + 1));
}

// A path without its dot segments; `clean` takes the text where there are some.
std::u32string_view withoutDotSegments(std::u32string_view path, bool absolute, std::u32string& clean) {
    if (!hasRelativePathSegments(path)) {
        return path;
    }
    clean = removeRelativePathSegments(path, absolute);
    return clean;
}

} // namespace

template <class String>
bool TemplateIRI<String>::hasSameRaw(Part part, TemplateIRI const& base) const {
    if (!parts.has(part) || !base.parts.has(part)) {
        return parts.has(part) == base.parts.has(part);
    }
    auto const [text, encoding] = parts.storedView(part);
    auto const [baseText, baseEncoding] = base.parts.storedView(part);
    if (encoding == baseEncoding && isSame(text, baseText) &&
        (part != Part::query || flags.queryIsFormEncoded == base.flags.queryIsFormEncoded)) {
        return true; // whether it can be decoded or not
    }
    try {
        if (encoding == Encoding::Iri && baseEncoding == Encoding::Iri && part != Part::query &&
            encoding::isRawAlready(text) && encoding::isRawAlready(baseText)) {
            return false;
        }
        return isSame(parts.view(part, Encoding::Raw), base.parts.view(part, Encoding::Raw));
    } catch (std::out_of_range const&) {
        return false; // what cannot be decoded reads like nothing else; it fails where its Raw form is wanted
    }
}

template <class String>
bool TemplateIRI<String>::hasSameAuthority(TemplateIRI const& base) const {
    return flags.hasHost == base.flags.hasHost && flags.hasUserInfo == base.flags.hasUserInfo &&
           flags.hasPort == base.flags.hasPort && portView() == base.portView() &&
           hasSameRaw(Part::userInfo, base) && hasSameRaw(Part::host, base);
}

// Whether all but the authorities and the fragments are the same.
template <class String>
bool TemplateIRI<String>::isSameBehindAuthority(TemplateIRI const& base) const {
    return flags.hasScheme == base.flags.hasScheme && schemeView() == base.schemeView() &&
           flags.hasQuery == base.flags.hasQuery && flags.pathIsEmpty == base.flags.pathIsEmpty &&
           (flags.pathIsEmpty || hasSameRaw(Part::path, base)) && hasSameRaw(Part::query, base);
}

template <class String>
TemplateIRI<String> TemplateIRI<String>::doRelativise(TemplateIRI const& base) const {
    if (!flags.hasAbsolutePath && base.flags.hasAbsolutePath && !flags.pathIsEmpty) {
        refuse("Cannot make relative to base. Already relative");
    }
    if (flags.hasAbsolutePath && !base.flags.hasAbsolutePath && !base.flags.pathIsEmpty) {
        refuse("Cannot make relative. Base is relative");
    }
    TemplateIRI result;
    Draft draft(result);
    draft.takeFragment(*this);
    relativiseInto(draft, base);
    draft.finish();
    return result;
}

template <class String>
void TemplateIRI<String>::relativiseInto(Draft& draft, TemplateIRI const& base) const {
    bool const sameScheme = flags.hasScheme == base.flags.hasScheme && schemeView() == base.schemeView();
    bool const sameAuthority = sameScheme && hasSameAuthority(base);
    if (sameAuthority && isSameBehindAuthority(base)) {
        return;
    }
    if (flags.hasScheme && !sameScheme) {
        return takeWhole(draft, true);
    }
    if (!flags.hasScheme) {
        if (base.flags.hasScheme) {
            refuse("Cannot make relative to base as base has scheme but this does not");
        }
        if (!flags.hasHost && base.flags.hasHost) {
            refuse("Cannot make relative to base as base has authority but this does not");
        }
    }
    if (!flags.hasHost && base.flags.hasHost) {
        return takeWhole(draft, true);
    }
    if (flags.hasHost && !sameAuthority) {
        return takeWhole(draft, false); // a network-path reference
    }
    if (flags.pathIsEmpty) {
        bool const nothingBefore = !flags.hasScheme && !flags.hasHost;
        if (nothingBefore && !base.flags.pathIsEmpty) {
            refuse("Cannot make relative to base as base has path but this does not");
        }
        if (nothingBefore && !flags.hasQuery && base.flags.hasQuery) {
            refuse("Cannot make relative to base as base has query but this does not");
        }
        draft.takeQuery(*this);
        if (!base.flags.pathIsEmpty || (!flags.hasQuery && base.flags.hasQuery)) {
            // A mere empty path would take the base's, or its query: the reference names its start.
            if (flags.hasHost) {
                draft.takeAuthority(*this);
            } else {
                draft.takeScheme(*this);
            }
        }
        return;
    }
    draft.takeQuery(*this);
    if (base.flags.pathIsEmpty) {
        draft.setPath(rawPath(), flags.hasAbsolutePath);
    } else {
        String path = hasSameRaw(Part::path, base) ? String() : getRelativePath(base);
        if (path.empty() && base.flags.hasQuery && !flags.hasQuery) {
            path = getMinimalRelativePath(); // keeps the base's query out
        }
        draft.setPath(std::move(path));
    }
    draft.flags().pathHasDotSegments = hasRelativePathSegments(draft.path());
}

template <class String>
void TemplateIRI<String>::takeWhole(Draft& draft, bool withScheme) const {
    if (withScheme) {
        draft.takeScheme(*this);
    }
    draft.takeAuthority(*this);
    draft.takePath(*this);
    draft.takeQuery(*this);
}

template <class String>
String TemplateIRI<String>::getRelativePath(TemplateIRI const& base) const {
    // A parsed value is compared as it was written, and only the result is decoded.
    Encoding const form = flags.textCurrent ? Encoding::Iri : Encoding::Raw;
    String cleanBase;
    String cleanOwn;
    View const from =
        withoutDotSegments(base.parts.view(Part::path, form), base.flags.hasAbsolutePath, cleanBase);
    View const to = withoutDotSegments(parts.view(Part::path, form), flags.hasAbsolutePath, cleanOwn);
    if (isSame(from, to)) {
        return String();
    }
    String way;
    if (canBeSplit(from) && canBeSplit(to)) {
        way = wayBetween(from, to, flags.hasAbsolutePath);
    } else {
        // Nothing is known of what the two share: the own path, from the root or from the start of the
        // base's.
        if (!beginsWithSlash(to)) {
            way = parents(static_cast<std::size_t>(std::count(from.begin(), from.end(), FORWARD_SLASH)));
        }
        way.append(to);
    }
    if (form == Encoding::Iri && !encoding::isRawAlready(way)) {
        if (auto decoded = encoding::rawFromIri(Part::path, way, PartContext())) {
            way = std::move(*decoded);
        }
    }
    return way;
}

template <class String>
String TemplateIRI<String>::getMinimalRelativePath() const {
    String const path = removeRelativePathSegments(rawPath(), flags.hasAbsolutePath);
    if (path.empty() || path.back() == FORWARD_SLASH) {
        return U".";
    }
    std::size_t const slash = path.rfind(FORWARD_SLASH);
    return slash == String::npos ? U"./" + path : U"." + path.substr(slash);
}

template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doRelativise(TemplateIRI const&) const;
template void TemplateIRI<std::u32string>::takeWhole(Draft&, bool) const;
template void TemplateIRI<std::u32string>::relativiseInto(Draft&, TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::hasSameRaw(Part, TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::hasSameAuthority(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::isSameBehindAuthority(TemplateIRI const&) const;
template std::u32string TemplateIRI<std::u32string>::getRelativePath(TemplateIRI const&) const;
template std::u32string TemplateIRI<std::u32string>::getMinimalRelativePath() const;

} // namespace foundation::network::iri::detail
