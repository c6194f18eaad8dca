// Reference resolution: RFC 3986, section 5.2.2, on the parts of two values. Where it differs:
//   - The path is merged in its Raw form, so a "%2F" in it comes out as "/", and the Iri form is made anew.
//   - An empty path of a base with an authority is a root behind which the reference stands as it is, dots
//   included.
//   - The base's dot segments go before its last segment does.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/PathIn.hpp"

namespace foundation::network::iri::detail {

namespace {

// Merges two paths one of which has dot segments.
std::u32string merged(PathIn const& base, PathIn const& reference, bool absolute) {
    if (base.shape.hasEmptySegments || (reference.hasDotSegments && reference.shape.hasEmptySegments)) {
        return mergeAsTexts(base.text, reference.text, absolute);
    }
    // The components are views of this text.
    std::u32string const clean =
        base.hasDotSegments ? removeRelativePathSegments(base.text, absolute) : std::u32string(base.text);
    PathComponents components = componentsOf(clean);
    if (!components.empty()) {
        bool const onlyOne = components.size() == 1;
        components.pop_back();
        if (onlyOne && absolute) {
            components.push_back({true, {}});
        }
    }
    appendPathComponents(reference.text, components, absolute, reference.hasDotSegments);
    return joined(components);
}

// The reference's own path without its dot segments.
void setCleanPath(StoredText const& reference, StoredText const& base, Draft& draft, std::u32string& own) {
    PathIn const path(reference, Form::raw, own);
    bool const isAbsolute = reference.components.pathIsAbsolute;
    if (path.hasDotSegments) {
        bool const absolute = isAbsolute || base.components.pathIsAbsolute;
        draft.setPath(removeRelativePathSegments(path.text, absolute), Form::raw);
    } else {
        draft.setPath(path.text, Form::raw, isAbsolute);
    }
}

// A relative path seen from the base's.
void setMergedPath(StoredText const& reference, StoredText const& base, Draft& draft, std::u32string& own,
                   std::u32string& ownOfBase) {
    PathIn const path(reference, Form::raw, own);
    if (base.components.hasHost() && base.components.pathIsEmpty()) {
        return draft.setPath(U"/", path.text, Form::raw);
    }
    PathIn const basePath(base, Form::raw, ownOfBase);
    std::u32string_view front =
        basePath.text.substr(0, basePath.text.rfind(U'/') + 1); // none without a slash
    std::u32string_view rest = path.text;
    if (path.hasDotSegments || basePath.hasDotSegments) {
        bool const absolute = base.components.pathIsAbsolute;
        bool const beginsWithEscapedSlash = rest.front() == U'/';
        if (!absolute || basePath.shape.hasDotSegments || beginsWithEscapedSlash) {
            return draft.setPath(merged(basePath, path, absolute), Form::raw);
        }
        // No dot segment, decoded ones included, stands before those of the reference, and one slash between
        // the two: components and texts give the same then, and texts are quicker.
        goUp(front, rest);
        if (hasRelativePathSegments(rest)) {
            return draft.setPath(mergeAsTexts(front, rest, absolute), Form::raw);
        }
    }
    draft.setPath(front, rest, Form::raw);
}

// `base` is Base, `reference` R, and `target` T, which must be new.
void resolve(StoredText const& reference, StoredText const& base, StoredText& target) {
    std::u32string path; // the draft reads these until it is finished
    std::u32string basePath;
    Draft draft(target, Draft::Kind::reference);
    Components const& r = reference.components;
    if (r.hasScheme() || r.hasHost()) {
        // if defined(R.scheme) or defined(R.authority):
        //    T.authority = R.authority; T.path = remove_dot_segments(R.path); T.query = R.query
        draft.takeScheme(r.hasScheme() ? reference : base);
        draft.takeAuthority(reference);
        setCleanPath(reference, base, draft, path);
        draft.takeQuery(reference);
    } else {
        // T.authority = Base.authority; T.scheme = Base.scheme
        draft.takeFront(base);
        if (reference.isEmpty()) {
            draft.takePath(base);
        } else if (r.pathIsEmpty()) {
            // T.path = Base.path
            draft.setPath(PathIn(base, Form::raw, basePath).text, Form::raw, base.components.pathIsAbsolute);
        } else if (r.pathIsAbsolute) {
            // if (R.path starts-with "/") T.path = remove_dot_segments(R.path)
            setCleanPath(reference, base, draft, path);
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
