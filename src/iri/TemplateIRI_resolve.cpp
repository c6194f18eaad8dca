// Reference resolution: RFC 3986, section 5.2.2, on the components of two values. What differs from the RFC:
//   - Paths are merged in the Raw form, so a "%2F" becomes a "/".
//   - If the base has an authority and an empty path, the reference's path is put behind "/" as it is, and
//   its
//     dot segments stay.
//   - The base's dot segments are removed before its last segment is.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/PathInForm.hpp"

namespace foundation::network::iri::detail {

namespace {

// Merges two paths, at least one of which has dot segments.
std::u32string mergedBySegments(PathInForm const& base, PathInForm const& reference, bool absolute) {
    if (base.shape.hasEmptySegments || (reference.hasDotSegments && reference.shape.hasEmptySegments)) {
        return mergeAndRemoveDotSegments(base.text, reference.text, absolute);
    }
    std::u32string const baseText = // the segments are views of it
        base.hasDotSegments ? removeRelativePathSegments(base.text, absolute) : std::u32string(base.text);
    PathSegments segments = segmentsOf(baseText);
    if (!segments.empty()) {
        bool const onlyOne = segments.size() == 1;
        segments.pop_back();
        if (onlyOne && absolute) {
            segments.push_back({true, {}});
        }
    }
    appendPathSegments(reference.text, segments, absolute, reference.hasDotSegments);
    return joined(segments);
}

// T.path = remove_dot_segments(R.path).
void setPathWithoutDotSegments(StoredText const& reference, StoredText const& base, Draft& draft,
                               std::u32string& own) {
    PathInForm const path(reference, Form::raw, own);
    bool const isAbsolute = reference.components.pathIsAbsolute;
    if (path.hasDotSegments) {
        bool const absolute = isAbsolute || base.components.pathIsAbsolute;
        draft.setPath(removeRelativePathSegments(path.text, absolute), Form::raw);
    } else {
        draft.setPath(path.text, Form::raw, isAbsolute);
    }
}

// T.path = remove_dot_segments(merge(Base.path, R.path)).
void setMergedPath(StoredText const& reference, StoredText const& base, Draft& draft, std::u32string& own,
                   std::u32string& ownOfBase) {
    PathInForm const path(reference, Form::raw, own);
    if (base.components.hasHost() && base.components.pathIsEmpty()) {
        return draft.setPath(U"/", path.text, Form::raw);
    }
    PathInForm const basePath(base, Form::raw, ownOfBase);
    std::u32string_view front =
        basePath.text.substr(0, basePath.text.rfind(U'/') + 1); // empty without a slash
    std::u32string_view rest = path.text;
    if (path.hasDotSegments || basePath.hasDotSegments) {
        bool const absolute = base.components.pathIsAbsolute;
        bool const beginsWithEscapedSlash = rest.front() == U'/';
        if (!absolute || basePath.shape.hasDotSegments || beginsWithEscapedSlash) {
            return draft.setPath(mergedBySegments(basePath, path, absolute), Form::raw);
        }
        // The base has no dot segments, not even escaped ones, and one "/" stands between the two. So
        // segments and text give the same result, and the text is quicker.
        resolveLeadingDotDots(front, rest);
        if (hasRelativePathSegments(rest)) {
            return draft.setPath(mergeAndRemoveDotSegments(front, rest, absolute), Form::raw);
        }
    }
    draft.setPath(front, rest, Form::raw);
}

// The names are those of the RFC: R is `reference`, Base is `base`, and T is `target`, which must be new.
void resolve(StoredText const& reference, StoredText const& base, StoredText& target) {
    std::u32string path; // the draft reads these until it is finished
    std::u32string basePath;
    Draft draft(target, Draft::Guarantee::noFalseHost);
    Components const& r = reference.components;
    if (r.hasScheme() || r.hasHost()) {
        // if defined(R.scheme) or defined(R.authority):
        //    T.authority = R.authority; T.path = remove_dot_segments(R.path); T.query = R.query
        draft.takeScheme(r.hasScheme() ? reference : base);
        draft.takeAuthority(reference);
        setPathWithoutDotSegments(reference, base, draft, path);
        draft.takeQuery(reference);
    } else {
        // T.authority = Base.authority; T.scheme = Base.scheme
        draft.takeSchemeAndAuthority(base);
        if (reference.isEmpty()) {
            draft.takePath(base);
        } else if (r.pathIsEmpty()) {
            // T.path = Base.path
            draft.setPath(PathInForm(base, Form::raw, basePath).text, Form::raw,
                          base.components.pathIsAbsolute);
        } else if (r.pathIsAbsolute) {
            // if (R.path starts-with "/") T.path = remove_dot_segments(R.path)
            setPathWithoutDotSegments(reference, base, draft, path);
        } else {
            // T.path = remove_dot_segments(merge(Base.path, R.path))
            setMergedPath(reference, base, draft, path, basePath);
        }
        // if (R.path == "") T.query = R.query if defined(R.query), else Base.query; else T.query = R.query
        draft.takeQuery(r.pathIsEmpty() && !r.hasQuery() ? base : reference);
    }
    if (!reference.isEmpty()) {
        draft.keepDotSegments();
    }
    draft.takeFragment(reference); // T.fragment = R.fragment
    draft.finish();
}

} // namespace

TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doResolve(TemplateIRI const& base) const {
    TemplateIRI result;
    resolve(stored, base.stored, result.stored);
    return result;
}

} // namespace foundation::network::iri::detail
