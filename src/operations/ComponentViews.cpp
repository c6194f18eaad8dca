#include "operations/ComponentViews.hpp"

namespace foundation::network::operations {

using iri::detail::Draft;
using iri::detail::Form;
using iri::detail::Part;
using iri::detail::ValueAccess;

ComponentViews::ComponentViews(iri::detail::StoredText const& from)
    : portNumber(from.components.port), path(from.given(Part::path)) {
    auto const& components = from.components;
    if (components.hasScheme()) {
        scheme = from.scheme();
    }
    if (components.hasUserInfo()) {
        userInfo = from.given(Part::userInfo);
    }
    if (components.hasHost()) {
        host = from.given(Part::host);
    }
    if (components.hasPort()) {
        port = from.port();
    }
    if (components.hasQuery()) {
        query = from.given(Part::query);
    }
    if (components.hasFragment()) {
        fragment = from.given(Part::fragment);
    }
}

IRI ComponentViews::recomposed() const {
    iri::detail::requireHost(userInfo.has_value(), host.has_value(), port.has_value(), path);
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Guarantee::asParsed);
    if (scheme) {
        draft.setScheme(*scheme);
    }
    if (userInfo) {
        draft.setUserInfo(*userInfo, Form::iri);
    }
    if (host) {
        draft.setHost(*host, Form::iri);
    }
    if (port) {
        draft.setPort(*port, portNumber);
    }
    draft.setPath(path, Form::iri);
    if (query) {
        draft.setQuery(*query, Form::iri, false);
    }
    if (fragment) {
        draft.setFragment(*fragment, Form::iri);
    }
    draft.finish();
    return result;
}

} // namespace foundation::network::operations
