#include <foundation/network/IRI.hpp>

#include "platform/TextConverters.hpp"

#include <ostream>

namespace foundation::network {

IRI::IRI() noexcept = default;
IRI::IRI(std::u16string const& text) : value(text) {}
IRI::IRI(IRI const& other) = default;
IRI::IRI(IRI&& other) noexcept = default;
IRI& IRI::operator=(IRI const& other) = default;
IRI& IRI::operator=(IRI&& other) noexcept = default;
IRI::~IRI() = default;

std::ostream& operator<<(std::ostream& stream, IRI const& iri) {
    return stream << fl::i18n::codecvt_ustring_to_ascii(false).convert(iri.toAsciiString(false));
}

} // namespace foundation::network
