#include <foundation/network/Escapes.hpp>

#include "operations/ComponentText.hpp"
#include "operations/Decoding.hpp"
#include "text/Transcoding.hpp"

namespace foundation::network {

using iri::detail::Part;

std::u16string percentEncode(std::u16string_view text, IRIComponent component) {
    Part part = Part::userInfo;
    switch (component) {
    case IRIComponent::UserInfo:
        break;
    case IRIComponent::Host:
        part = Part::host;
        break;
    case IRIComponent::Path:
        part = Part::path;
        break;
    case IRIComponent::Query:
        part = Part::query;
        break;
    case IRIComponent::Fragment:
        part = Part::fragment;
        break;
    default:
        return std::u16string(text);
    }
    iri::detail::PartContext context;
    context.schemePresent = true;
    return text::toUtf16(operations::escaped(part, text::toUtf32(text), context));
}

std::u16string percentDecode(std::u16string_view text) {
    return operations::decoded(text, operations::Plus::asItStands);
}

} // namespace foundation::network
