#include <foundation/network/IRI.hpp>

namespace foundation::network {

IRI::IRI() noexcept = default;
IRI::IRI(std::u16string const& text) : value(text) {}
IRI::IRI(IRI const& other) = default;
IRI::IRI(IRI&& other) noexcept = default;
IRI& IRI::operator=(IRI const& other) = default;
IRI& IRI::operator=(IRI&& other) noexcept = default;
IRI::~IRI() = default;

} // namespace foundation::network
