#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

namespace foundation::network::iri::detail {

/// The getters behind `IRI`, with `std::u16string`, and behind `Utf8View`, with `std::string`. Each makes its
/// results from the value's own texts, not by way of the other. `IRI` documents what they return and throw.
template <class String>
class ValueReader {
public:
    explicit ValueReader(TemplateIRI<std::u32string> const& of);

    String scheme() const;
    String port() const;
    String component(Part part, Encoding encoding) const;
    String authority(Encoding encoding) const;
    String schemeSpecificPart(Encoding encoding) const;
    String whole(bool strict) const;
    String wholeInAscii(bool strict) const;

private:
    TemplateIRI<std::u32string> const& value;
    StoredText const& stored;
};

} // namespace foundation::network::iri::detail
