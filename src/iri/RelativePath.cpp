#include "iri/RelativePath.hpp"

namespace foundation::network::iri {

bool hasRelativePathSegments(std::u32string_view path) noexcept {
    // Few paths hold a dot behind a slash at all: only those are looked at more closely.
    for (std::size_t at = 0; at < path.size();) {
        if (path[at] == U'.') {
            std::size_t end = at + 1;
            if (end < path.size() && path[end] == U'.') {
                ++end;
            }
            if (end == path.size() || path[end] == U'/') {
                return true;
            }
        }
        at = path.find(U'/', at);
        if (at == std::u32string_view::npos) {
            return false;
        }
        ++at;
    }
    return false;
}

} // namespace foundation::network::iri
