#pragma once

#include <string_view>
#include <vector>

namespace foundation::network::iri::grammar {

/// Cuts a path into its elements, each with the slash that leads it: `/a/b/` gives `/a`, `/b`, `/`. Joined,
/// they are the path again.
///
/// A path that holds an empty segment is refused, but for one that begins with "//" and a segment (`//a/b`
/// gives
/// `//a`, `/b`); so is an empty one. Then it returns false and leaves `elements` as it was. The elements are
/// views of `path`. Linear. The grammar is made by the first call in the process; any number of threads may
/// split at once.
bool splitPath(std::u32string_view path, std::vector<std::u32string_view>& elements);

} // namespace foundation::network::iri::grammar
