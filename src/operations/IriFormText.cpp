#include "operations/IriFormText.hpp"

#include <string>

namespace foundation::network::operations {

using iri::detail::Components;
using iri::detail::Draft;
using iri::detail::Form;
using iri::detail::Part;

void IriFormText::convert(iri::detail::StoredText& made) const {
    std::u32string texts[5]; // the draft reads them until it is finished
    auto const text = [&](Part part) {
        return source.inForm(part, Form::iri, texts[static_cast<std::size_t>(part)]);
    };
    Components const& components = source.components;
    Draft draft(made, Draft::Guarantee::none);
    if (components.hasScheme()) {
        draft.setScheme(source.scheme());
    }
    if (components.hasUserInfo()) {
        draft.setUserInfo(text(Part::userInfo), Form::iri);
    }
    if (components.hasHost()) {
        draft.setHost(text(Part::host), Form::iri);
    }
    if (components.hasPort()) {
        draft.setPort(source.port(), components.port);
    }
    draft.setPath(components.hasPath ? text(Part::path) : std::u32string_view(), Form::iri);
    if (components.hasQuery()) {
        draft.setQuery(text(Part::query), Form::iri, false);
    }
    if (components.hasFragment()) {
        draft.setFragment(text(Part::fragment), Form::iri);
    }
    draft.finish();
}

} // namespace foundation::network::operations
