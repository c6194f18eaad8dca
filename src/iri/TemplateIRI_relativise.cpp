// Making a reference: what, resolved against a base, gives this value again.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/PathIn.hpp"
#include "iri/SameText.hpp"
#include "iri/encoding/Conversions.hpp"

#include <algorithm>

namespace foundation::network::iri::detail {

namespace {

[[noreturn]] void refuse(char const* message) {
    throw core::except::detail::makeInternalException(std::logic_error(message));
}

} // namespace

template <class String>
bool TemplateIRI<String>::hasSameRaw(Part part, TemplateIRI const& base) const {
    if (!parts.has(part) || !base.parts.has(part)) {
        return parts.has(part) == base.parts.has(part);
    }
    bool const sameForm = parts.storedForm(part) == base.parts.storedForm(part);
    if (sameForm && isSame(storedView(part), base.storedView(part)) &&
        (part != Part::query || flags.queryIsFormEncoded == base.flags.queryIsFormEncoded)) {
        return true; // whether it can be decoded or not
    }
    try {
        return isSame(parts.view(part, Encoding::Raw), base.parts.view(part, Encoding::Raw));
    } catch (std::out_of_range const&) {
        return false; // what cannot be decoded reads like nothing else; it fails where its Raw form is wanted
    }
}

template <class String>
bool TemplateIRI<String>::hasSameAuthority(TemplateIRI const& base) const {
    return flags.hasPort == base.flags.hasPort && portView() == base.portView() &&
           hasSameRaw(Part::userInfo, base) && hasSameRaw(Part::host, base);
}

// Whether schemes and authorities are written alike, in the same forms: they are the same then, whether they
// can be decoded or not.
template <class String>
bool TemplateIRI<String>::isFrontLike(TemplateIRI const& base) const {
    auto const isSamePart = [&](Part part) {
        return parts.slice(part) == base.parts.slice(part) &&
               parts.storedForm(part) == base.parts.storedForm(part);
    };
    auto const frontOf = [](TemplateIRI const& value) {
        return View(value.sourceText()).substr(0, value.parts.slice(Part::path).begin);
    };
    // A part that is absent has an empty slice at the start, where none that is present can stand.
    return scheme == base.scheme && portText == base.portText && isSamePart(Part::host) &&
           isSamePart(Part::userInfo) && isSame(frontOf(*this), frontOf(base));
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
    Draft draft(result, Draft::Kind::reference);
    relativiseInto(draft, base);
    draft.takeFragment(*this);
    draft.finish();
    return result;
}

// All but the fragment.
template <class String>
void TemplateIRI<String>::relativiseInto(Draft& draft, TemplateIRI const& base) const {
    bool const sameFront = isFrontLike(base);
    bool const sameScheme =
        sameFront || (flags.hasScheme == base.flags.hasScheme && schemeView() == base.schemeView());
    bool const sameAuthority = sameFront || (sameScheme && hasSameAuthority(base));
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
    // Scheme and authority are the same.
    if (!flags.pathIsEmpty && !base.flags.pathIsEmpty) {
        return relativisePath(draft, base);
    }
    if (!flags.pathIsEmpty) {
        PathIn const path = pathIn(Form::raw);
        draft.setPath(path.text, flags.hasAbsolutePath);
        draft.setPathHasDotSegments(path.shape.hasDotSegments);
        return draft.takeQuery(*this);
    }
    bool const nothingBefore = !flags.hasScheme && !flags.hasHost;
    if (nothingBefore && !base.flags.pathIsEmpty) {
        refuse("Cannot make relative to base as base has path but this does not");
    }
    if (nothingBefore && !flags.hasQuery && base.flags.hasQuery) {
        refuse("Cannot make relative to base as base has query but this does not");
    }
    if (!base.flags.pathIsEmpty || (!flags.hasQuery && base.flags.hasQuery)) {
        // A mere empty path would take the base's, or its query: the reference names its start.
        if (flags.hasHost) {
            draft.takeAuthority(*this);
        } else {
            draft.takeScheme(*this);
        }
    }
    draft.setPath(View());
    if (!base.flags.pathIsEmpty || !hasSameRaw(Part::query, base)) {
        draft.takeQuery(*this);
    }
}

// Path and query where both have a path.
template <class String>
void TemplateIRI<String>::relativisePath(Draft& draft, TemplateIRI const& base) const {
    PathIn const own = storedPath();
    PathIn const from = base.storedPath();
    bool const undecoded =
        own.form == Form::iri && from.form == Form::iri && own.shape.isRaw && from.shape.isRaw;
    bool const same = (own.form == from.form && isSame(own.text, from.text)) ||
                      (!undecoded && hasSameRaw(Part::path, base));
    if (same && hasSameRaw(Part::query, base)) {
        return draft.setPath(View());
    }
    if (same || !setRelativePath(own, from, draft, base)) {
        bool const keepsQueryOut = base.flags.hasQuery && !flags.hasQuery;
        String path = keepsQueryOut ? getMinimalRelativePath() : String();
        draft.setPathHasDotSegments(keepsQueryOut);
        draft.setPath(std::move(path));
    }
    draft.takeQuery(*this);
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

// The way from the base's path to the own one; nothing, and false, where they differ in dot segments only.
template <class String>
bool TemplateIRI<String>::setRelativePath(PathIn own, PathIn from, Draft& draft,
                                          TemplateIRI const& base) const {
    // A parsed value is compared as it was written, and only the result is decoded.
    Form const form = flags.textCurrent ? Form::iri : Form::raw;
    if (own.form != form) {
        own = pathIn(form);
    }
    if (from.form != form) {
        from = base.pathIn(form);
    }
    String cleanOwn;
    String cleanFrom;
    if (own.shape.hasDotSegments) {
        cleanOwn = removeRelativePathSegments(own.text, flags.hasAbsolutePath);
        own.text = cleanOwn;
        own.shape = shapeOf(cleanOwn);
    }
    if (from.shape.hasDotSegments) {
        cleanFrom = removeRelativePathSegments(from.text, base.flags.hasAbsolutePath);
        from.text = cleanFrom;
        from.shape = shapeOf(cleanFrom);
    }
    if (isSame(from.text, own.text)) {
        return false;
    }
    Way way{0, own.text};
    if (!own.shape.hasEmptySegments && !from.shape.hasEmptySegments) {
        way = wayBetween(from.text, own.text, flags.hasAbsolutePath);
    } else if (own.text.substr(0, 1) != U"/") {
        // Nothing is known of what the two share: the own path, from the start of the base's.
        way.up = static_cast<std::size_t>(std::count(from.text.begin(), from.text.end(), FORWARD_SLASH));
    }
    constexpr View parents = U"../../../../../../../../";
    bool const decodes = form == Form::iri && !own.shape.isRaw;
    if (!decodes && cleanOwn.empty() && 3 * way.up <= parents.size()) {
        // The usual way needs no text of its own, and what is left of the own path has no dot segments.
        draft.setPathHasDotSegments(way.up != 0 || way.rest == U"." || way.rest == U"./");
        draft.setPath(parents.substr(0, 3 * way.up), way.rest);
        return true;
    }
    String path = textOf(way);
    if (decodes) {
        if (auto decoded = encoding::rawFromIri(Part::path, path, PartContext())) {
            path = std::move(*decoded);
        }
    }
    draft.setPathHasDotSegments(hasRelativePathSegments(path));
    draft.setPath(std::move(path));
    return true;
}

template <class String>
String TemplateIRI<String>::getMinimalRelativePath() const {
    String const path = removeRelativePathSegments(pathIn(Form::raw).text, flags.hasAbsolutePath);
    if (path.empty() || path.back() == FORWARD_SLASH) {
        return U".";
    }
    std::size_t const slash = path.rfind(FORWARD_SLASH);
    return slash == String::npos ? U"./" + path : U"." + path.substr(slash);
}

template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doRelativise(TemplateIRI const&) const;
template void TemplateIRI<std::u32string>::takeWhole(Draft&, bool) const;
template void TemplateIRI<std::u32string>::relativiseInto(Draft&, TemplateIRI const&) const;
template void TemplateIRI<std::u32string>::relativisePath(Draft&, TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::hasSameRaw(Part, TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::hasSameAuthority(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::isFrontLike(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::setRelativePath(PathIn, PathIn, Draft&, TemplateIRI const&) const;
template std::u32string TemplateIRI<std::u32string>::getMinimalRelativePath() const;

} // namespace foundation::network::iri::detail
