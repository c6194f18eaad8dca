// Making a reference: what, resolved against a base, gives this value again.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/RelativePath.hpp"
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

// The way from one path to another, both without dot segments, that differ and can be split. `absolute`: the
// other one counts as beginning with "/".
std::u32string wayBetween(std::u32string_view from, std::u32string_view to, bool absolute) {
    PathComponents const base = componentsOf(from);
    PathComponents const own = componentsOf(to);
    if (base.empty()) {
        return std::u32string(to);
    }
    if (base.size() == 1 && base.front().slash && !own.empty() && own.front().slash) {
        return to.size() == 1 ? U"." : std::u32string(to.substr(1));
    }
    // The last component of the shorter path is never common: a reference to it must name it.
    std::size_t const most = std::max<std::size_t>(std::min(base.size(), own.size()), 1) - 1;
    std::size_t common = 0;
    while (common != most && base[common] == own[common]) {
        ++common;
    }
    if (common == 0) {
        std::u32string way = parents(std::max<std::size_t>(base.size() - 1, 1));
        return way.append(to.substr(absolute && !to.empty() ? 1 : 0));
    }
    std::size_t const up = base.size() - common - 1;
    std::u32string way = up == 0 ? U"." : parents(up);
    if (up != 0) {
        way.pop_back(); // the components that follow bring their slashes
    }
    way.append(joined(PathComponents(own.begin() + static_cast<std::ptrdiff_t>(common), own.end())));
    if (way.size() > 2 && way.compare(0, 2, U"./") == 0) {
        way.erase(0, 2);
    }
    return way;
}

} // namespace

template <class String>
bool TemplateIRI<String>::hasSameRaw(Part part, TemplateIRI const& base) const {
    if (!parts.has(part) || !base.parts.has(part)) {
        return parts.has(part) == base.parts.has(part);
    }
    if (parts.storedView(part) == base.parts.storedView(part) &&
        (part != Part::query || flags.queryIsFormEncoded == base.flags.queryIsFormEncoded)) {
        return true; // whether it can be decoded or not
    }
    try {
        return parts.view(part, Encoding::Raw) == base.parts.view(part, Encoding::Raw);
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

// Whether all but the fragments are the same.
template <class String>
bool TemplateIRI<String>::isSameAs(TemplateIRI const& base) const {
    return flags.hasScheme == base.flags.hasScheme && schemeView() == base.schemeView() &&
           flags.hasQuery == base.flags.hasQuery && flags.pathIsEmpty == base.flags.pathIsEmpty &&
           hasSameAuthority(base) && (flags.pathIsEmpty || hasSameRaw(Part::path, base)) &&
           hasSameRaw(Part::query, base);
}

template <class String>
TemplateIRI<String> TemplateIRI<String>::doRelativise(TemplateIRI const& base) const {
    if (!flags.hasAbsolutePath && base.flags.hasAbsolutePath && !flags.pathIsEmpty) {
        refuse("Cannot make relative to base. Already relative");
    }
    if (flags.hasAbsolutePath && !base.flags.hasAbsolutePath && !base.flags.pathIsEmpty) {
        refuse("Cannot make relative. Base is relative");
    }
    Draft draft;
    draft.takeFragment(*this);
    if (isSameAs(base)) {
        return draft.finish();
    }
    bool const sameScheme = flags.hasScheme == base.flags.hasScheme && schemeView() == base.schemeView();
    if (flags.hasScheme && !sameScheme) {
        return wholeInto(draft, true);
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
        return wholeInto(draft, true);
    }
    if (flags.hasHost && !hasSameAuthority(base)) {
        return wholeInto(draft, false); // a network-path reference
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
        return draft.finish();
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
    return draft.finish();
}

template <class String>
TemplateIRI<String> TemplateIRI<String>::wholeInto(Draft& draft, bool withScheme) const {
    if (withScheme) {
        draft.takeScheme(*this);
    }
    draft.takeAuthority(*this);
    draft.takePath(*this);
    draft.takeQuery(*this);
    return draft.finish();
}

template <class String>
String TemplateIRI<String>::getRelativePath(TemplateIRI const& base) const {
    // A parsed value is compared as it was written, and only the result is decoded.
    Encoding const form = flags.textCurrent ? Encoding::Iri : Encoding::Raw;
    String const from =
        removeRelativePathSegments(base.parts.view(Part::path, form), base.flags.hasAbsolutePath);
    String const to = removeRelativePathSegments(parts.view(Part::path, form), flags.hasAbsolutePath);
    if (from == to) {
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
    if (form == Encoding::Iri) {
        if (auto decoded = encoding::rawFromIri(Part::path, way, PartContext())) {
            way = std::move(*decoded);
        }
    }
    return way;
}

template <class String>
String TemplateIRI<String>::getMinimalRelativePath() const {
    String const path = withoutDotSegments(flags.hasAbsolutePath);
    if (path.empty() || path.back() == FORWARD_SLASH) {
        return U".";
    }
    std::size_t const slash = path.rfind(FORWARD_SLASH);
    return slash == String::npos ? U"./" + path : U"." + path.substr(slash);
}

template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doRelativise(TemplateIRI const&) const;
template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::wholeInto(Draft&, bool) const;
template bool TemplateIRI<std::u32string>::hasSameRaw(Part, TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::hasSameAuthority(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::isSameAs(TemplateIRI const&) const;
template std::u32string TemplateIRI<std::u32string>::getRelativePath(TemplateIRI const&) const;
template std::u32string TemplateIRI<std::u32string>::getMinimalRelativePath() const;

} // namespace foundation::network::iri::detail
