#include <foundation/network/With.hpp>

#include "except/Refuse.hpp"
#include "iri/grammar/IriGrammar.hpp"
#include "operations/Assembly.hpp"
#include "operations/ComponentText.hpp"
#include "text/Transcoding.hpp"

#include <optional>
#include <string>

namespace foundation::network {

using iri::detail::Part;
using iri::detail::PartContext;
using operations::Assembly;
using operations::InIriForm;
using View = std::u32string_view;

namespace {

// The value with what `change` makes of its components.
template <class Change>
IRI changed(IRI const& iri, Change change) {
    InIriForm const form(iri);
    Assembly assembly(form.get());
    change(assembly);
    return assembly.assembled();
}

IRI with(IRI const& iri, Part part, std::optional<View> Assembly::*component, std::u16string_view text,
         Encoding encoding) {
    std::u32string const own = operations::componentText(part, text, encoding, PartContext());
    return changed(iri, [&](Assembly& assembly) { assembly.*component = own; });
}

IRI without(IRI const& iri, std::optional<View> Assembly::*component) {
    return changed(iri, [&](Assembly& assembly) { assembly.*component = std::nullopt; });
}

} // namespace

IRI withScheme(IRI const& iri, std::u16string_view scheme) {
    std::u32string const own = text::toUtf32(scheme);
    if (!iri::grammar::matchScheme(own)) {
        core::except::refuse("Malformed scheme");
    }
    return changed(iri, [&](Assembly& assembly) { assembly.scheme = own; });
}
IRI withoutScheme(IRI const& iri) {
    return without(iri, &Assembly::scheme);
}

IRI withUserInfo(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return with(iri, Part::userInfo, &Assembly::userInfo, text, encoding);
}
IRI withoutUserInfo(IRI const& iri) {
    return without(iri, &Assembly::userInfo);
}

IRI withHost(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return with(iri, Part::host, &Assembly::host, text, encoding);
}
IRI withoutHost(IRI const& iri) {
    return changed(
        iri, [](Assembly& assembly) { assembly.userInfo = assembly.host = assembly.port = std::nullopt; });
}

IRI withPort(IRI const& iri, unsigned short port) {
    std::string const digits = std::to_string(port);
    std::u32string const own(digits.begin(), digits.end());
    return changed(iri, [&](Assembly& assembly) {
        assembly.port = own;
        assembly.portNumber = port;
    });
}
IRI withoutPort(IRI const& iri) {
    return changed(iri, [](Assembly& assembly) {
        assembly.port = std::nullopt;
        assembly.portNumber = 0;
    });
}

IRI withPath(IRI const& iri, std::u16string_view text, Encoding encoding) {
    // What a first segment with ":" becomes depends on what stands before it.
    PartContext const context{iri.hasScheme(), iri.hasUserInfo(), iri.hasHost(), false};
    std::u32string const own = operations::componentText(Part::path, text, encoding, context);
    return changed(iri, [&](Assembly& assembly) { assembly.path = own; });
}

IRI withQuery(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return with(iri, Part::query, &Assembly::query, text, encoding);
}
IRI withoutQuery(IRI const& iri) {
    return without(iri, &Assembly::query);
}

IRI withFragment(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return with(iri, Part::fragment, &Assembly::fragment, text, encoding);
}
IRI withoutFragment(IRI const& iri) {
    return without(iri, &Assembly::fragment);
}

} // namespace foundation::network
