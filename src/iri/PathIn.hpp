#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/RelativePath.hpp"

namespace foundation::network::iri::detail {

/// The path of a value in one form, and what that text looks like.
template <class String>
struct TemplateIRI<String>::PathIn {
    View text;
    PathShape shape;
    Form form;
    /// Whether dot segments are to be removed in a resolution: those of a parsed path as it was written, and
    /// of the path that a value was built with. Others stay, like one that only decodes to dots ("%2E").
    bool hasDotSegments;
};

template <class String>
inline auto TemplateIRI<String>::storedPath() const -> PathIn {
    View const text = storedView(Part::path);
    PathShape const shape = shapeOf(text);
    return {text, shape, parts.storedForm(Part::path),
            flags.textCurrent ? shape.hasDotSegments : flags.pathHasDotSegments};
}

template <class String>
inline auto TemplateIRI<String>::pathIn(Form form) const -> PathIn {
    PathIn path = storedPath();
    bool const alike = path.form == form || (path.form == Form::iri && form == Form::raw && path.shape.isRaw);
    if (!alike && parts.has(Part::path)) {
        path.text = parts.view(Part::path, encodingOf(form));
        path.shape = shapeOf(path.text);
    }
    path.form = form;
    return path;
}

} // namespace foundation::network::iri::detail
