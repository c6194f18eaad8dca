#pragma once

#include <foundation/network/ParseFault.hpp>
#include <foundation/network/iri/detail/StoredText.hpp>

namespace foundation::network::operations {

/// Where and why a text is no IRI: of one that the grammar has refused, with the places that it has left. The
/// offset counts code points. Linear in the length of the authority, or of the scheme, that is at fault.
ParseFault findFault(iri::detail::StoredText const& refused);

} // namespace foundation::network::operations
