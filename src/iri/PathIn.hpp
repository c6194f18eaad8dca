#pragma once

#include <foundation/network/iri/detail/StoredText.hpp>

#include "iri/RelativePath.hpp"

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// The path of a value in one form, and what that text looks like.
struct PathIn {
    /// As it was given.
    explicit PathIn(StoredText const& value)
        : text(value.given(Part::path)),
          shape(shapeOf(text)),
          form(value.components.form(Part::path)),
          hasDotSegments(shape.hasDotSegments && !value.components.dotSegmentsStay) {}

    /// In `wanted`; where that is another text, `own` holds it.
    PathIn(StoredText const& value, Form wanted, std::u32string& own) : PathIn(value) {
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
    /// Whether a resolution removes dot segments of the path: those of the path as it was given, not such as
    /// it only decodes to ("%2E").
    bool hasDotSegments;
};

} // namespace foundation::network::iri::detail
