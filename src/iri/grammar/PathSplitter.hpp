#pragma once

#include <string_view>
#include <vector>

namespace foundation::network::iri::grammar {

/// Splits a path into its elements, each with the slash in front of it: `/a/b/` gives `/a`, `/b`, `/`. They
/// are views of `path`, and joined they are the path again.
///
/// Returns false for a path that is empty or holds "//", and leaves `elements` as it was. But a path may
/// begin with "//" and a segment that is not empty: `//a/b` gives `//a`, `/b`. Linear. The grammar is made by
/// the first call in the process; any number of threads may split at once.
bool splitPath(std::u32string_view path, std::vector<std::u32string_view>& elements);

} // namespace foundation::network::iri::grammar
