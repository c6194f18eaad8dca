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

} // namespace foundation::network::iri::detail
