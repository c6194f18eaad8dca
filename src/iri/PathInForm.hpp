#pragma once

#include <foundation/network/iri/detail/StoredText.hpp>

#include "iri/Paths.hpp"

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// The path of a value in one form, with what a scan of that text has found.
struct PathInForm {
    /// The path as it was given.
    explicit PathInForm(StoredText const& value)
        : text(value.given(Part::path)),
          shape(shapeOf(text)),
          form(value.components.form(Part::path)),
          hasDotSegments(shape.hasDotSegments && !value.components.dotSegmentsStay) {}

    /// The path in the form `wanted`; where that is another text, `own` holds it.
    PathInForm(StoredText const& value, Form wanted, std::u32string& own) : PathInForm(value) {
        convert(value, wanted, own);
    }

    void convert(StoredText const& value, Form wanted, std::u32string& own) {
        bool const alike = form == wanted || (form == Form::iri && wanted == Form::raw && shape.isRaw);
        if (!alike && !text.empty()) {
            text = value.inForm(Part::path, wanted, own);
            shape = shapeOf(text);
        }
        form = wanted;
    }

    std::u32string_view text;
    PathShape shape;
    Form form;
    /// Whether a resolution removes the path's dot segments: only those that it was given with, none that
    /// appear when "%2E" is decoded.
    bool hasDotSegments;
};

} // namespace foundation::network::iri::detail
