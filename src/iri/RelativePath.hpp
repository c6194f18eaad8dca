#pragma once

#include <string>
#include <string_view>

/// Algorithms on the text of a path that know nothing of the value around it.
namespace foundation::network::iri {

/// Whether a segment of `path`, between slashes or at either end, is exactly "." or "..". Linear.
bool hasRelativePathSegments(std::u32string_view path) noexcept;

} // namespace foundation::network::iri
