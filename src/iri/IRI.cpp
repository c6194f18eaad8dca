#include <foundation/network/IRI.hpp>

#include <foundation/network/IRIArgs.hpp>

#include "platform/TextConverters.hpp"

#include <ostream>
#include <utility>

namespace foundation::network {

IRI::IRI() noexcept = default;
IRI::IRI(std::u16string const& text) : value(text) {}
IRI::IRI(IRIArgs const& args) : value(static_cast<iri::detail::ArgsBase<std::u32string> const&>(args)) {}
IRI::IRI(IRI const& other) = default;
IRI::IRI(IRI&& other) noexcept = default;
IRI& IRI::operator=(IRI const& other) = default;
IRI& IRI::operator=(IRI&& other) noexcept = default;
IRI::~IRI() = default;

IRI IRI::resolveAgainst(IRI const& base) const {
    return IRI(std::in_place, [&] { return value.doResolve(base.value); });
}

IRI IRI::makeRelativeTo(IRI const& base) const {
    return IRI(std::in_place, [&] { return value.doRelativise(base.value); });
}

void IRI::toArgs(IRIArgs& args) const {
    value.toArgs(args);
}

std::ostream& operator<<(std::ostream& stream, IRI const& iri) {
    return stream << fl::i18n::codecvt_ustring_to_ascii(false).convert(iri.toAsciiString(false));
}

} // namespace foundation::network
