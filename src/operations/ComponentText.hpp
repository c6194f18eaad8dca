#pragma once

#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Part.hpp>

#include <string>
#include <string_view>

namespace foundation::network::operations {

/// Converts a component from Raw to Iri so that it can be read again. Besides what `iriFromRaw` escapes, it
/// escapes a "#" in a fragment, brackets in a query and a fragment, and a stray "%" in user information.
std::u32string escaped(iri::detail::Part part, std::u32string text, iri::detail::PartContext const& context);

/// Appends the text of a component in the Iri form. A text in `Encoding::Raw` is `escaped`. A text in any
/// other encoding is taken as it is, and the grammar must accept it.
///
/// Throws: the internal `std::logic_error`, "IRI parsing failed"; the internal `std::out_of_range` for what
/// is no UTF-16.
void appendComponent(std::u32string& out, iri::detail::Part part, std::u16string_view text,
                     iri::Encoding encoding, iri::detail::PartContext const& context);

} // namespace foundation::network::operations
