#pragma once

#include <foundation/network/iri/detail/Components.hpp>

#include <string_view>

namespace foundation::network::iri::grammar {

/// Matches all of `text` as an `IRI-reference` of RFC 3987, reads the number of its port, and fills `found`,
/// which must be new.
///
/// Returns false for a text that is no IRI reference; `found` then holds the places up to which the grammar
/// matched. Linear in the length of the text, constant stack; copies nothing. The grammar is made by the
/// first call in the process and only read afterwards: any number of threads may match at once.
bool matchIriReference(std::u32string_view text, detail::Components& found);

/// Whether all of `text` is a `scheme`.
bool matchScheme(std::u32string_view text);

} // namespace foundation::network::iri::grammar
