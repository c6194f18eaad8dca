#pragma once

#include <foundation/network/IRI.hpp>

namespace foundation::network::iri::detail {

/// Gives operations that are not members of `IRI` access to the value behind it and to its stored text. Only
/// a new value that nobody else uses yet may be written to.
struct ValueAccess {
    using Value = TemplateIRI<std::u32string>;

    static Value const& value(IRI const& iri) noexcept { return iri.value; }

    static StoredText const& stored(Value const& value) noexcept { return value.stored; }
    static StoredText const& stored(IRI const& iri) noexcept { return iri.value.stored; }
    static StoredText& stored(IRI& iri) noexcept { return iri.value.stored; }

    /// The whole in the Iri or the Raw form, which the value keeps.
    static std::u32string const& kept(Value const& value, Form form) { return value.kept(form); }
};

} // namespace foundation::network::iri::detail
