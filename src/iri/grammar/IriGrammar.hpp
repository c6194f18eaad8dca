#pragma once

#include <foundation/network/iri/detail/Parts.hpp>

#include <string>

namespace foundation::network::iri::grammar {

/// Matches all of `text` as an `IRI-reference` of RFC 3987 and fills `parts` with ranges of `text`.
///
/// Returns false for a text that is no IRI reference; `parts` then holds nothing of use. Linear in the length
/// of the text, constant stack; copies no component. The grammar is made by the first call in the process and
/// only read afterwards: any number of threads may match at once.
bool matchIriReference(std::u32string const& text, detail::Parts<std::u32string::const_iterator>& parts);

/// Whether all of `text` is a `scheme`.
bool matchScheme(std::u32string const& text);

} // namespace foundation::network::iri::grammar
