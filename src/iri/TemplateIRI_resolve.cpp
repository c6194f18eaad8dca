// Reference resolution: RFC 3986, section 5.2.2, on the parts of two values. Where it differs:
//   - The path is merged in its Raw form, so a "%2F" in it comes out as "/", and the Iri form is made anew.
//   - An empty path of a base with an authority is a root behind which the reference stands as it is, dots
//   included.
//   - The base's dot segments go before its last segment does.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/RelativePath.hpp"
#include "iri/encoding/Conversions.hpp"

namespace foundation::network::iri::detail {

template <class String>
typename TemplateIRI<String>::View TemplateIRI<String>::rawPath() const {
    if (auto const iri = parts.unconvertedIri(Part::path, Form::raw); iri && encoding::isRawAlready(*iri)) {
        return *iri;
    }
    return parts.has(Part::path) ? parts.view(Part::path, Encoding::Raw) : View();
}

template <class String>
TemplateIRI<String> TemplateIRI<String>::doResolve(TemplateIRI const& base) const {
    TemplateIRI result;
    Draft draft(result);
    // R is this value, the reference; T the draft.
    if (flags.empty) {
        draft.takeScheme(base);
        draft.takeAuthority(base);
        draft.takePath(base);
        draft.takeQuery(base);
        draft.finish();
        return result;
    }
    bool const absolute = flags.hasAbsolutePath || base.flags.hasAbsolutePath;
    if (flags.hasScheme || flags.hasHost) {
        // if defined(R.scheme) or defined(R.authority): T.authority = R.authority;
        //    T.path = remove_dot_segments(R.path); T.query = R.query
        draft.takeScheme(flags.hasScheme ? *this : base);
        draft.takeAuthority(*this);
        if (flags.pathHasDotSegments) {
            draft.setPath(removeRelativePathSegments(rawPath(), absolute));
        } else {
            draft.setPath(rawPath(), flags.hasAbsolutePath);
        }
        draft.takeQuery(*this);
    } else {
        // T.authority = Base.authority; T.scheme = Base.scheme
        draft.takeScheme(base);
        draft.takeAuthority(base);
        if (flags.pathIsEmpty) {
            // T.path = Base.path; T.query = R.query if defined(R.query), else Base.query
            draft.setPath(base.rawPath(), base.flags.hasAbsolutePath);
            draft.takeQuery(flags.hasQuery ? *this : base);
        } else {
            resolvePath(base, draft);
            draft.takeQuery(*this);
        }
    }
    draft.takeFragment(*this); // T.fragment = R.fragment
    draft.finish();
    return result;
}

// T.path of a reference with a path and no authority.
template <class String>
void TemplateIRI<String>::resolvePath(TemplateIRI const& base, Draft& draft) const {
    if (flags.hasAbsolutePath) {
        // if (R.path starts-with "/") T.path = remove_dot_segments(R.path)
        if (flags.pathHasDotSegments) {
            draft.setPath(removeRelativePathSegments(rawPath(), true));
        } else {
            draft.setPath(rawPath(), true);
        }
        return;
    }
    // T.path = remove_dot_segments(merge(Base.path, R.path))
    View const path = rawPath();
    View const basePath = base.rawPath();
    if (base.flags.hasHost && base.flags.pathIsEmpty) {
        draft.setPath(String(1, FORWARD_SLASH).append(path));
    } else if (!flags.pathHasDotSegments && !base.flags.pathHasDotSegments) {
        String merged(
            basePath.substr(0, basePath.rfind(FORWARD_SLASH) + 1)); // nothing where there is no slash
        draft.setPath(std::move(merged.append(path)));
    } else {
        draft.setPath(mergedPath(base));
    }
}

// Merges two paths one of which has dot segments.
template <class String>
String TemplateIRI<String>::mergedPath(TemplateIRI const& base) const {
    View const path = rawPath();
    View const basePath = base.rawPath();
    bool const absolute = base.flags.hasAbsolutePath;
    // Against an absolute path without dot segments, decoded ones included, both ways give the same, and this
    // one is the shorter.
    bool const simple = absolute && !hasRelativePathSegments(basePath);
    if (simple || !canBeSplit(basePath) || (flags.pathHasDotSegments && !canBeSplit(path))) {
        return mergeAsTexts(basePath, path, absolute);
    }
    // The components are views of this text.
    String const clean =
        base.flags.pathHasDotSegments ? removeRelativePathSegments(basePath, absolute) : String(basePath);
    PathComponents components = componentsOf(clean);
    if (!components.empty()) {
        bool const onlyOne = components.size() == 1;
        components.pop_back();
        if (onlyOne && absolute) {
            components.push_back({true, {}});
        }
    }
    appendPathComponents(path, components, absolute, flags.pathHasDotSegments);
    return joined(components);
}

template TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doResolve(TemplateIRI const&) const;
template std::u32string_view TemplateIRI<std::u32string>::rawPath() const;
template void TemplateIRI<std::u32string>::resolvePath(TemplateIRI const&, Draft&) const;
template std::u32string TemplateIRI<std::u32string>::mergedPath(TemplateIRI const&) const;

} // namespace foundation::network::iri::detail
