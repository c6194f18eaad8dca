#pragma once

#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Part.hpp>

#include <string>
#include <string_view>

namespace foundation::network::operations {

/// A text in the Raw form as the component holds it in the Iri form: escaped as for a value that is built,
/// and, besides, what the component could not be read with again (a "#" in a fragment, brackets in a query
/// and a fragment, a stray "%" in user information).
std::u32string escaped(iri::detail::Part part, std::u32string text, iri::detail::PartContext const& context);

/// The text of a component for a value in the making: of `Encoding::Raw` it is `escaped`; in any other it is
/// taken as it stands, and must be one by the grammar.
///
/// Throws the `std::logic_error` of the family with "IRI parsing failed"; the `std::out_of_range` of the
/// family for what is no UTF-16.
std::u32string componentText(iri::detail::Part part, std::u16string_view text, iri::Encoding encoding,
                             iri::detail::PartContext const& context);

} // namespace foundation::network::operations
