// The life cycle of a value, and what it answers without its stored parts.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/encoding/Transcoding.hpp"

#include <utility>

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI const& other) = default;

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI&& other) noexcept
    : flags(std::exchange(other.flags, Flags())),
      port(std::exchange(other.port, static_cast<unsigned short>(0))),
      parts(std::move(other.parts)),
      scheme(std::exchange(other.scheme, Slice())),
      portText(std::exchange(other.portText, Slice())),
      hash(std::exchange(other.hash, CachedHash())),
      wholeTexts(std::move(other.wholeTexts)) {}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(TemplateIRI const& other) {
    if (this != &other) {
        *this = TemplateIRI(other);
    }
    return *this;
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(TemplateIRI&& other) noexcept {
    if (this != &other) {
        flags = std::exchange(other.flags, Flags());
        port = std::exchange(other.port, static_cast<unsigned short>(0));
        parts = std::move(other.parts);
        scheme = std::exchange(other.scheme, Slice());
        portText = std::exchange(other.portText, Slice());
        hash = std::exchange(other.hash, CachedHash());
        wholeTexts = std::move(other.wholeTexts);
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
    parts.swap(other.parts);
    std::swap(scheme, other.scheme);
    std::swap(portText, other.portText);
    std::swap(hash, other.hash);
    wholeTexts.swap(other.wholeTexts);
}

template <class String>
std::u16string TemplateIRI<String>::getScheme() const {
    if (!flags.hasScheme) {
        throw makeInternalException(std::runtime_error("No scheme"));
    }
    return encoding::toUtf16(schemeView());
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const {
    if (!flags.hasPort) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return encoding::toUtf16(portView());
}

template <class String>
unsigned short TemplateIRI<String>::getPortNumber() const {
    if (!flags.hasPort) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return port;
}

// The members that are defined here, and the class's virtual table; the others are instantiated where they
// are defined.
template class TemplateIRI<std::u32string>;

} // namespace foundation::network::iri::detail
