// Reference resolution: RFC 3986, section 5.2.2, on the parts of two values. Where it differs:
//   - The path is merged in its Raw form, so a "%2F" in it comes out as "/", and the Iri form is made anew.
//   - An empty path of a base with an authority is a root behind which the reference stands as it is, dots
//   included.
//   - The base's dot segments go before its last segment does.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/PathIn.hpp"

namespace foundation::network::iri::detail {

template <class String>
TemplateIRI<String> TemplateIRI<String>::doResolve(TemplateIRI const& base) const {
    TemplateIRI result;
    Draft draft(result, Draft::Kind::reference);
    // R is this value, the reference; T the draft.
    if (flags.hasScheme || flags.hasHost) {
        // if defined(R.scheme) or defined(R.authority):
        //    T.authority = R.authority; T.path = remove_dot_segments(R.path); T.query = R.query
        draft.takeScheme(flags.hasScheme ? *this : base);
        draft.takeAuthority(*this);
        setCleanPath(base, draft);
        draft.takeQuery(*this);
    } else {
        // T.authority = Base.authority; T.scheme = Base.scheme
        draft.takeScheme(base);
        draft.takeAuthority(base);
        if (flags.empty) {
            draft.takePath(base);
        } else if (flags.pathIsEmpty) {
            // T.path = Base.path
            draft.setPath(base.pathIn(Form::raw).text, base.flags.hasAbsolutePath);
        } else if (flags.hasAbsolutePath) {
            // if (R.path starts-with "/") T.path = remove_dot_segments(R.path)
            setCleanPath(base, draft);
        } else {
            // T.path = remove_dot_segments(merge(Base.path, R.path))
            setMergedPath(base, draft);
        }
        // if (R.path == "") T.query = R.query if defined(R.query), else Base.query; else T.query = R.query
        draft.takeQuery(flags.pathIsEmpty && !flags.hasQuery ? base : *this);
    }
    draft.takeFragment(*this); // T.fragment = R.fragment
    draft.finish();
    return result;
}

// The reference's own path without its dot segments.
template <class String>
void TemplateIRI<String>::setCleanPath(TemplateIRI const& base, Draft& draft) const {
    PathIn const path = pathIn(Form::raw);
    if (path.hasDotSegments) {
        draft.setPath(
            removeRelativePathSegments(path.text, flags.hasAbsolutePath || base.flags.hasAbsolutePath));
    } else {
        draft.setPath(path.text, flags.hasAbsolutePath);
    }
}

// A relative path seen from the base's.
template <class String>
void TemplateIRI<String>::setMergedPath(TemplateIRI const& base, Draft& draft) const {
    PathIn const path = pathIn(Form::raw);
    if (base.flags.hasHost && base.flags.pathIsEmpty) {
        return draft.setPath(U"/", path.text);
    }
    PathIn const basePath = base.pathIn(Form::raw);
    View front = basePath.text.substr(0, basePath.text.rfind(FORWARD_SLASH) + 1); // nothing without a slash
    View rest = path.text;
    if (path.hasDotSegments || basePath.hasDotSegments) {
        bool const absolute = base.flags.hasAbsolutePath;
        if (!absolute || basePath.shape.hasDotSegments) {
            return draft.setPath(merged(basePath, path, absolute));
        }
        // No dot segment, decoded ones included, stands before those of the reference: components and texts
        // give the same then, and texts are quicker.
        goUp(front, rest);
        if (hasRelativePathSegments(rest)) {
            return draft.setPath(mergeAsTexts(front, rest, absolute));
        }
    }
    draft.setPath(front, rest);
}

// Merges two paths one of which has dot segments.
template <class String>
String TemplateIRI<String>::merged(PathIn const& base, PathIn const& reference, bool absolute) {
    if (base.shape.hasEmptySegments || (reference.hasDotSegments && reference.shape.hasEmptySegments)) {
        return mergeAsTexts(base.text, reference.text, absolute);
    }
    // The components are views of this text.
    String const clean =
        base.hasDotSegments ? removeRelativePathSegments(base.text, absolute) : String(base.text);
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

template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doResolve(TemplateIRI const&) const;
template auto TemplateIRI<std::u32string>::storedPath() const -> PathIn;
template auto TemplateIRI<std::u32string>::pathIn(Form) const -> PathIn;
template void TemplateIRI<std::u32string>::setCleanPath(TemplateIRI const&, Draft&) const;
template void TemplateIRI<std::u32string>::setMergedPath(TemplateIRI const&, Draft&) const;
template std::u32string TemplateIRI<std::u32string>::merged(PathIn const&, PathIn const&, bool);

} // namespace foundation::network::iri::detail
