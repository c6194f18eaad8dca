#pragma once

#include <foundation/network/ParseFault.hpp>
#include <foundation/network/iri/detail/StoredText.hpp>

namespace foundation::network::operations {

/// Finds where and why a text is no IRI. The grammar must have refused it; `refused` holds the places up to
/// which it matched. The offset counts code points. Linear in the length of the text.
ParseFault findFault(iri::detail::StoredText const& refused);

} // namespace foundation::network::operations
