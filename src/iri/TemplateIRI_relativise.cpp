// Making a reference: what, resolved against a base, gives this value again.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "except/Refuse.hpp"
#include "iri/Draft.hpp"
#include "iri/PathIn.hpp"
#include "iri/encoding/Conversions.hpp"
#include "text/Scans.hpp"

#include <algorithm>

namespace foundation::network::iri::detail {

using core::except::refuse;

namespace {

bool hasSameRaw(Part part, StoredText const& own, StoredText const& base) {
    if (!own.components.has(part) || !base.components.has(part)) {
        return own.components.has(part) == base.components.has(part);
    }
    bool const sameForm = own.components.form(part) == base.components.form(part);
    if (sameForm && text::isSame(own.given(part), base.given(part)) &&
        (part != Part::query || own.components.queryIsFormEncoded == base.components.queryIsFormEncoded)) {
        return true; // whether it can be decoded or not
    }
    try {
        std::u32string decoded;
        std::u32string decodedOfBase;
        return text::isSame(own.inForm(part, Form::raw, decoded),
                            base.inForm(part, Form::raw, decodedOfBase));
    } catch (std::out_of_range const&) {
        return false; // what cannot be decoded reads like nothing else; it fails where its Raw form is wanted
    }
}

bool hasSameAuthority(StoredText const& own, StoredText const& base) {
    return own.components.hasPort() == base.components.hasPort() && own.port() == base.port() &&
           hasSameRaw(Part::userInfo, own, base) && hasSameRaw(Part::host, own, base);
}

void takePathAndQuery(StoredText const& own, Draft& draft) {
    draft.takePath(own);
    draft.takeQuery(own);
}

// All but the fragment.
void takeWhole(StoredText const& own, Draft& draft) {
    draft.takeFront(own);
    takePathAndQuery(own, draft);
}

// The same without its scheme: a network-path reference.
void takeNetworkPath(StoredText const& own, Draft& draft) {
    draft.takeAuthority(own);
    takePathAndQuery(own, draft);
}

// A reference to the last segment of the path, which keeps the base's query out.
std::u32string getMinimalRelativePath(StoredText const& own) {
    std::u32string decoded;
    std::u32string_view const raw = own.inForm(Part::path, Form::raw, decoded);
    std::u32string const path = removeRelativePathSegments(raw, own.components.pathIsAbsolute);
    if (path.empty() || path.back() == U'/') {
        return U".";
    }
    std::size_t const slash = path.rfind(U'/');
    return slash == std::u32string::npos ? U"./" + path : U"." + path.substr(slash);
}

// The way from the base's path to the own one; nothing, and false, where they differ in dot segments only.
// `buffer` holds what the draft reads.
bool setRelativePath(StoredText const& own, StoredText const& base, Draft& draft, std::u32string& buffer) {
    // A parsed value is compared as it was written, and only the result is decoded.
    Form const form = own.parsed ? Form::iri : Form::raw;
    std::u32string baseBuffer;
    PathIn to(own, form, buffer);
    PathIn from(base, form, baseBuffer);
    // Whether a path can be split is told before its dots are removed, as a resolution tells it.
    bool const canBeSplit = !to.shape.hasEmptySegments && !from.shape.hasEmptySegments;
    bool const absolute = own.components.pathIsAbsolute;
    bool const decodes = form == Form::iri && !to.shape.isRaw;
    if (to.shape.hasDotSegments) {
        buffer = removeRelativePathSegments(to.text, absolute);
        to.text = buffer;
    }
    if (from.shape.hasDotSegments) {
        baseBuffer = removeRelativePathSegments(from.text, base.components.pathIsAbsolute);
        from.text = baseBuffer;
    }
    if (text::isSame(from.text, to.text)) {
        return false;
    }
    if (form == Form::iri && !from.shape.isRaw) {
        std::u32string unread; // a base that cannot be decoded is refused: the result could never be resolved
        (void)base.inForm(Part::path, Form::raw, unread);
    }
    Way way{0, to.text};
    if (canBeSplit) {
        way = wayBetween(from.text, to.text, absolute);
    } else if (to.text.substr(0, 1) != U"/") {
        // Nothing is known of what the two share: the own path, from the start of the base's.
        way.up = static_cast<std::size_t>(std::count(from.text.begin(), from.text.end(), U'/'));
    }
    constexpr std::u32string_view parents = U"../../../../../../../../";
    if (!decodes && 3 * way.up <= parents.size()) {
        draft.setPath(parents.substr(0, 3 * way.up), way.rest, Form::raw); // needs no text of its own
        return true;
    }
    std::u32string path = textOf(way);
    if (decodes) {
        if (auto decoded = encoding::rawFromIri(Part::path, path, PartContext())) {
            path = std::move(*decoded);
        }
    }
    draft.setPath(std::move(path), Form::raw);
    return true;
}

// Path and query where both have a path.
void setRelativePathAndQuery(StoredText const& own, StoredText const& base, Draft& draft,
                             std::u32string& buffer) {
    bool const same = hasSameRaw(Part::path, own, base);
    if (same && hasSameRaw(Part::query, own, base)) {
        return draft.setPath(std::u32string_view(), Form::raw);
    }
    if (same || !setRelativePath(own, base, draft, buffer)) {
        bool const keepsQueryOut = base.components.hasQuery() && !own.components.hasQuery();
        draft.setPath(keepsQueryOut ? getMinimalRelativePath(own) : std::u32string(), Form::raw);
    }
    draft.takeQuery(own);
}

// All but the fragment.
void setReference(StoredText const& own, StoredText const& base, Draft& draft, std::u32string& buffer) {
    Components const& t = own.components;
    Components const& b = base.components;
    // Written alike, in the same forms, they are the same, whether they can be decoded or not.
    bool const sameFront =
        t.hasFrontLike(b) && text::isSame(own.stretch(0, t.pathBegin), base.stretch(0, b.pathBegin));
    bool const sameScheme = sameFront || own.scheme() == base.scheme();
    bool const sameAuthority = sameFront || (sameScheme && hasSameAuthority(own, base));
    if (t.hasScheme() && !sameScheme) {
        return takeWhole(own, draft);
    }
    if (!t.hasScheme()) {
        if (b.hasScheme()) {
            refuse("Cannot make relative to base as base has scheme but this does not");
        }
        if (!t.hasHost() && b.hasHost()) {
            refuse("Cannot make relative to base as base has authority but this does not");
        }
    }
    if (!t.hasHost() && b.hasHost()) {
        return takeWhole(own, draft);
    }
    if (t.hasHost() && !sameAuthority) {
        return takeNetworkPath(own, draft);
    }
    // Scheme and authority are the same.
    if (!t.pathIsEmpty() && !b.pathIsEmpty()) {
        return setRelativePathAndQuery(own, base, draft, buffer);
    }
    if (!t.pathIsEmpty()) {
        draft.setPath(own.inForm(Part::path, Form::raw, buffer), Form::raw, t.pathIsAbsolute);
        return draft.takeQuery(own);
    }
    bool const nothingBefore = !t.hasScheme() && !t.hasHost();
    if (nothingBefore && !b.pathIsEmpty()) {
        refuse("Cannot make relative to base as base has path but this does not");
    }
    if (nothingBefore && !t.hasQuery() && b.hasQuery()) {
        refuse("Cannot make relative to base as base has query but this does not");
    }
    if (!b.pathIsEmpty() || (!t.hasQuery() && b.hasQuery())) {
        // A mere empty path would take the base's, or its query: the reference names its start.
        if (t.hasHost()) {
            draft.takeAuthority(own);
        } else {
            draft.takeScheme(own);
        }
    }
    draft.setPath(std::u32string_view(), Form::raw);
    if (!b.pathIsEmpty() || !hasSameRaw(Part::query, own, base)) {
        draft.takeQuery(own);
    }
}

} // namespace

TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doRelativise(TemplateIRI const& base) const {
    Components const& t = stored.components;
    Components const& b = base.stored.components;
    if (!t.pathIsAbsolute && b.pathIsAbsolute && !t.pathIsEmpty()) {
        refuse("Cannot make relative to base. Already relative");
    }
    if (t.pathIsAbsolute && !b.pathIsAbsolute && !b.pathIsEmpty()) {
        refuse("Cannot make relative. Base is relative");
    }
    std::u32string buffer; // the draft reads it until it is finished
    TemplateIRI result;
    Draft draft(result.stored, Draft::Kind::reference);
    setReference(stored, base.stored, draft, buffer);
    draft.takeFragment(stored);
    draft.finish();
    return result;
}

} // namespace foundation::network::iri::detail
