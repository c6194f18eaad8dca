#pragma once

#include <foundation/network/IRI.hpp>

namespace foundation::network::iri::detail {

/// What operations that stand beside `IRI` see of it: the value behind it, and its text with the record of
/// its components. Whoever writes there has exclusive use of the value, which must be new.
struct ValueAccess {
    using Value = TemplateIRI<std::u32string>;

    static Value const& value(IRI const& iri) noexcept { return iri.value; }

    static StoredText const& stored(Value const& value) noexcept { return value.stored; }
    static StoredText const& stored(IRI const& iri) noexcept { return iri.value.stored; }
    static StoredText& stored(IRI& iri) noexcept { return iri.value.stored; }

    /// The whole in the Iri or the Raw form, which stays with the value.
    static std::u32string const& kept(Value const& value, Form form) { return value.kept(form); }
};

} // namespace foundation::network::iri::detail
