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
bool TemplateIRI<String>::pathHasDotSegments() const {
    return flags.textCurrent ? storedPath().hasDotSegments : flags.pathHasDotSegments;
}

template <class String>
auto TemplateIRI<String>::storedPath() const -> PathIn {
    View const text = storedView(Part::path);
    PathShape const shape = shapeOf(text);
    return {text, shape, parts.storedForm(Part::path),
            flags.textCurrent ? shape.hasDotSegments : flags.pathHasDotSegments};
}

template <class String>
auto TemplateIRI<String>::pathIn(Form form) const -> PathIn {
    PathIn path = storedPath();
    bool const alike = path.form == form || (path.form == Form::iri && form == Form::raw && path.shape.isRaw);
    if (!alike && parts.has(Part::path)) {
        path.text = parts.view(Part::path, encodingOf(form));
        path.shape = shapeOf(path.text);
    }
    path.form = form;
    return path;
}

template <class String>
TemplateIRI<String> TemplateIRI<String>::doResolve(TemplateIRI const& base) const {
    TemplateIRI result;
    Draft draft(result);
    // R is this value, the reference; T the draft.
    if (flags.hasScheme || flags.hasHost) {
        // if defined(R.scheme) or defined(R.authority): T.authority = R.authority;
        //    T.path = remove_dot_segments(R.path); T.query = R.query
        draft.reserve(base.scheme.length + sourceText().size());
        draft.takeScheme(flags.hasScheme ? *this : base);
        draft.takeAuthority(*this);
        PathIn const path = pathIn(Form::raw);
        if (path.hasDotSegments) {
            draft.setPath(
                removeRelativePathSegments(path.text, flags.hasAbsolutePath || base.flags.hasAbsolutePath));
        } else {
            draft.setPath(path.text, flags.hasAbsolutePath);
        }
        draft.guardPath();
        draft.takeQuery(*this);
    } else {
        // T.authority = Base.authority; T.scheme = Base.scheme
        Slice const& basePath = base.parts.slice(Part::path);
        draft.reserve(basePath.begin + basePath.length + sourceText().size());
        draft.takeFront(base);
        if (flags.empty) {
            draft.takePath(base);
        } else if (flags.pathIsEmpty) {
            // T.path = Base.path
            draft.setPath(base.pathIn(Form::raw).text, base.flags.hasAbsolutePath);
        } else {
            resolvePath(base, draft);
        }
        draft.guardPath();
        // if (R.path == "") T.query = R.query if defined(R.query), else Base.query; else T.query = R.query
        draft.takeQuery(flags.pathIsEmpty && !flags.hasQuery ? base : *this);
    }
    draft.takeFragment(*this); // T.fragment = R.fragment
    draft.finish();
    return result;
}

// T.path of a reference with a path and no authority.
template <class String>
void TemplateIRI<String>::resolvePath(TemplateIRI const& base, Draft& draft) const {
    PathIn const path = pathIn(Form::raw);
    if (flags.hasAbsolutePath) {
        // if (R.path starts-with "/") T.path = remove_dot_segments(R.path)
        if (path.hasDotSegments) {
            draft.setPath(removeRelativePathSegments(path.text, true));
        } else {
            draft.setPath(path.text, true);
        }
        return;
    }
    // T.path = remove_dot_segments(merge(Base.path, R.path))
    PathIn const basePath = base.pathIn(Form::raw);
    draft.writePath([&](String& text) {
        if (base.flags.hasHost && base.flags.pathIsEmpty) {
            text.append(1, FORWARD_SLASH).append(path.text);
        } else if (!path.hasDotSegments && !basePath.hasDotSegments) {
            View const front = basePath.text.substr(0, basePath.text.rfind(FORWARD_SLASH) + 1);
            text.append(front).append(path.text); // nothing of the base where there is no slash
        } else {
            appendMerged(basePath, path, base.flags.hasAbsolutePath, text);
        }
    });
}

// Merges two paths one of which has dot segments.
template <class String>
void TemplateIRI<String>::appendMerged(PathIn const& base, PathIn const& reference, bool absolute,
                                       String& text) {
    // Against an absolute path without dot segments, decoded ones included, both ways give the same, and this
    // one is the shorter.
    bool const cleanBase = absolute && !base.shape.hasDotSegments;
    if (cleanBase || base.shape.hasEmptySegments ||
        (reference.hasDotSegments && reference.shape.hasEmptySegments)) {
        return mergeAsTexts(base.text, reference.text, absolute, cleanBase, text);
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
    text.append(joined(components));
}

template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doResolve(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::pathHasDotSegments() const;
template auto TemplateIRI<std::u32string>::storedPath() const -> PathIn;
template auto TemplateIRI<std::u32string>::pathIn(Form) const -> PathIn;
template void TemplateIRI<std::u32string>::resolvePath(TemplateIRI const&, Draft&) const;
template void TemplateIRI<std::u32string>::appendMerged(PathIn const&, PathIn const&, bool, std::u32string&);

} // namespace foundation::network::iri::detail
