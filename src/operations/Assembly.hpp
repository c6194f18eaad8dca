#pragma once

#include "operations/InIriForm.hpp"

#include <optional>
#include <string_view>

namespace foundation::network::operations {

/// The components of a value that is put together out of another one: views of texts in the Iri form, an
/// absent one empty. Each is that of the other value until it is changed.
struct Assembly {
    using View = std::u32string_view;

    explicit Assembly(iri::detail::StoredText const& from);

    std::optional<View> scheme;
    std::optional<View> userInfo;
    std::optional<View> host;
    std::optional<View> port;
    unsigned short portNumber = 0;
    View path;
    std::optional<View> query;
    std::optional<View> fragment;

    /// The value of these components, which is as its text parsed: with "/." or "./" in front of a path that
    /// would read as something else.
    ///
    /// Throws the `std::logic_error` of the family with "User Info requires a host", "Port requires a host"
    /// or "Path cannot be relative if authority present".
    [[nodiscard]] IRI assembled() const;
};

} // namespace foundation::network::operations
