// Makes a reference that leads from a base to this value, the target.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "except/Refuse.hpp"
#include "iri/Draft.hpp"
#include "iri/PathInForm.hpp"
#include "iri/encoding/Conversions.hpp"
#include "text/Scans.hpp"

#include <algorithm>

namespace foundation::network::iri::detail {

using core::except::refuse;

namespace {

bool hasSameRaw(Part part, StoredText const& target, StoredText const& base) {
    if (!target.components.has(part) || !base.components.has(part)) {
        return target.components.has(part) == base.components.has(part);
    }
    bool const sameForm = target.components.form(part) == base.components.form(part);
    if (sameForm && text::isSame(target.given(part), base.given(part)) &&
        (part != Part::query || target.components.queryIsFormEncoded == base.components.queryIsFormEncoded)) {
        return true; // even if they cannot be decoded
    }
    try {
        std::u32string decoded;
        std::u32string decodedOfBase;
        return text::isSame(target.inForm(part, Form::raw, decoded),
                            base.inForm(part, Form::raw, decodedOfBase));
    } catch (std::out_of_range const&) {
        return false; // equal to nothing else; whoever needs its Raw form will throw
    }
}

bool hasSameAuthority(StoredText const& target, StoredText const& base) {
    return target.components.hasPort() == base.components.hasPort() && target.port() == base.port() &&
           hasSameRaw(Part::userInfo, target, base) && hasSameRaw(Part::host, target, base);
}

void takePathAndQuery(StoredText const& target, Draft& draft) {
    draft.takePath(target);
    draft.takeQuery(target);
}

void takeAllButFragment(StoredText const& target, Draft& draft) {
    draft.takeSchemeAndAuthority(target);
    takePathAndQuery(target, draft);
}

// A network-path reference (RFC 3986, section 4.2), without its fragment.
void takeNetworkPathReference(StoredText const& target, Draft& draft) {
    draft.takeAuthority(target);
    takePathAndQuery(target, draft);
}

// The relative path that leads from the target's directory to its last segment. A reference with an empty
// path would take the base's query.
std::u32string getMinimalRelativePath(StoredText const& target) {
    std::u32string decoded;
    std::u32string_view const raw = target.inForm(Part::path, Form::raw, decoded);
    std::u32string const path = removeRelativePathSegments(raw, target.components.pathIsAbsolute);
    if (path.empty() || path.back() == U'/') {
        return U".";
    }
    std::size_t const slash = path.rfind(U'/');
    return slash == std::u32string::npos ? U"./" + path : U"." + path.substr(slash);
}

// Sets the relative path that leads from the base's path to the target's. Sets nothing and returns false if
// they differ in dot segments only. The draft reads `buffer` until it is finished.
bool setRelativePath(StoredText const& target, StoredText const& base, Draft& draft, std::u32string& buffer) {
    // The paths are compared in the Iri form if the target was parsed; only the result is decoded.
    Form const form = target.parsed ? Form::iri : Form::raw;
    std::u32string baseBuffer;
    PathInForm to(target, form, buffer);
    PathInForm from(base, form, baseBuffer);
    // A resolution, too, looks at this before dot segments are removed.
    bool const canBeSplit = !to.shape.hasEmptySegments && !from.shape.hasEmptySegments;
    bool const absolute = target.components.pathIsAbsolute;
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
        // Throws if the base's path cannot be decoded: the result could not be resolved against it.
        std::u32string unused;
        (void)base.inForm(Part::path, Form::raw, unused);
    }
    RelativePath relative{0, to.text};
    if (canBeSplit) {
        relative = relativePathBetween(from.text, to.text, absolute);
    } else if (to.text.substr(0, 1) != U"/") {
        // Paths that cannot be split are not compared, so a rootless target is reached from where the base's
        // path starts.
        relative.dotDots = static_cast<std::size_t>(std::count(from.text.begin(), from.text.end(), U'/'));
    }
    constexpr std::u32string_view someDotDots = U"../../../../../../../../";
    if (!decodes && 3 * relative.dotDots <= someDotDots.size()) { // most paths; nothing is allocated
        draft.setPath(someDotDots.substr(0, 3 * relative.dotDots), relative.rest, Form::raw);
        return true;
    }
    std::u32string path = toText(relative);
    if (decodes) {
        if (auto decoded = encoding::rawFromIri(Part::path, path, PartContext())) {
            path = std::move(*decoded);
        }
    }
    draft.setPath(std::move(path), Form::raw);
    return true;
}

// Sets path and query if neither path is empty.
void setRelativePathAndQuery(StoredText const& target, StoredText const& base, Draft& draft,
                             std::u32string& buffer) {
    bool const same = hasSameRaw(Part::path, target, base);
    if (same && hasSameRaw(Part::query, target, base)) {
        return draft.setPath(std::u32string_view(), Form::raw);
    }
    if (same || !setRelativePath(target, base, draft, buffer)) {
        bool const dropsBaseQuery = base.components.hasQuery() && !target.components.hasQuery();
        draft.setPath(dropsBaseQuery ? getMinimalRelativePath(target) : std::u32string(), Form::raw);
    }
    draft.takeQuery(target);
}

void setAllButFragment(StoredText const& target, StoredText const& base, Draft& draft,
                       std::u32string& buffer) {
    Components const& t = target.components;
    Components const& b = base.components;
    // Equal texts in equal forms are the same, even if they cannot be decoded.
    bool const sameSchemeAndAuthority =
        t.hasSchemeAndAuthorityLike(b) &&
        text::isSame(target.stretch(0, t.pathBegin), base.stretch(0, b.pathBegin));
    bool const sameScheme = sameSchemeAndAuthority || target.scheme() == base.scheme();
    bool const sameAuthority = sameSchemeAndAuthority || (sameScheme && hasSameAuthority(target, base));
    if (t.hasScheme() && !sameScheme) {
        return takeAllButFragment(target, draft);
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
        return takeAllButFragment(target, draft);
    }
    if (t.hasHost() && !sameAuthority) {
        return takeNetworkPathReference(target, draft);
    }
    // From here on both have the same scheme and authority.
    if (!t.pathIsEmpty() && !b.pathIsEmpty()) {
        return setRelativePathAndQuery(target, base, draft, buffer);
    }
    if (!t.pathIsEmpty()) {
        draft.setPath(target.inForm(Part::path, Form::raw, buffer), Form::raw, t.pathIsAbsolute);
        return draft.takeQuery(target);
    }
    bool const nothingBefore = !t.hasScheme() && !t.hasHost();
    if (nothingBefore && !b.pathIsEmpty()) {
        refuse("Cannot make relative to base as base has path but this does not");
    }
    if (nothingBefore && !t.hasQuery() && b.hasQuery()) {
        refuse("Cannot make relative to base as base has query but this does not");
    }
    if (!b.pathIsEmpty() || (!t.hasQuery() && b.hasQuery())) {
        // An empty path alone would take the base's path or query, so the authority or the scheme is
        // repeated.
        if (t.hasHost()) {
            draft.takeAuthority(target);
        } else {
            draft.takeScheme(target);
        }
    }
    draft.setPath(std::u32string_view(), Form::raw);
    if (!b.pathIsEmpty() || !hasSameRaw(Part::query, target, base)) {
        draft.takeQuery(target);
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
    Draft draft(result.stored, Draft::Guarantee::noFalseHost);
    setAllButFragment(stored, base.stored, draft, buffer);
    draft.takeFragment(stored);
    draft.finish();
    return result;
}

} // namespace foundation::network::iri::detail
