#pragma once

#include <foundation/network/iri/detail/TemplateIRI.hpp>

namespace foundation::network::iri::detail {

/// The getters of a value, which `IRI` gives in UTF-16 and `Utf8View` in UTF-8: `String` is `std::u16string`
/// or `std::string`. Each is made straight from the value's own text. What they give and throw is told at
/// `IRI`.
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
