// The life cycle of a value, and what it answers without its stored parts.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/encoding/Transcoding.hpp"

#include <utility>

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

template <class String>
TemplateIRI<String>::TemplateIRI() noexcept = default;

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI const& other) = default;

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI&& other) noexcept : TemplateIRI() {
    swap(other);
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(TemplateIRI const& other) {
    if (this != &other) {
        TemplateIRI(other).swap(*this);
    }
    return *this;
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(TemplateIRI&& other) noexcept {
    if (this != &other) {
        TemplateIRI(std::move(other)).swap(*this);
    }
    return *this;
}

template <class String>
TemplateIRI<String>::~TemplateIRI() = default;

template <class String>
void TemplateIRI<String>::swap(TemplateIRI& other) noexcept {
    if (this == &other) {
        return;
    }
    std::swap(flags, other.flags);
    std::swap(port, other.port);
    scheme.swap(other.scheme);
    portString.swap(other.portString);
    parts.swap(other.parts);
    for (std::size_t i = 0; i != nativeStrings.size(); ++i) {
        nativeStrings[i].swap(other.nativeStrings[i]);
    }
    std::swap(hash, other.hash);
}

template <class String>
std::u16string TemplateIRI<String>::getScheme() const {
    if (!flags.hasScheme) {
        throw makeInternalException(std::runtime_error("No scheme"));
    }
    return scheme;
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const {
    if (!flags.hasPort) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return portString;
}

template <class String>
unsigned short TemplateIRI<String>::getPortNumber() const {
    if (!flags.hasPort) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return port;
}

template <class String>
String TemplateIRI<String>::nativeScheme() const {
    return encoding::toUtf32(scheme);
}

// The members that are defined here, and the class's virtual table; the others are instantiated where they
// are defined.
template class TemplateIRI<std::u32string>;

} // namespace foundation::network::iri::detail
