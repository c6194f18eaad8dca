#pragma once

#include "operations/IriFormText.hpp"

#include <optional>
#include <string_view>

namespace foundation::network::operations {

/// Views of the components of a value, in the Iri form; absent ones are empty. Some may be replaced before
/// they are put together again. The texts must outlive this object.
struct ComponentViews {
    using View = std::u32string_view;

    explicit ComponentViews(iri::detail::StoredText const& from);

    std::optional<View> scheme;
    std::optional<View> userInfo;
    std::optional<View> host;
    std::optional<View> port;
    unsigned short portNumber = 0;
    View path;
    std::optional<View> query;
    std::optional<View> fragment;

    /// Puts the components together (RFC 3986, section 5.3). The result is as its text parsed: a path that
    /// would be read as a host or a scheme gets "/." or "./" in front.
    ///
    /// Throws: the internal `std::logic_error`, "User Info requires a host", "Port requires a host" or "Path
    /// cannot be relative if authority present".
    [[nodiscard]] IRI recomposed() const;
};

} // namespace foundation::network::operations
