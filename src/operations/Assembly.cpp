#include "operations/Assembly.hpp"

#include <foundation/core/except/InternalException.hpp>

#include <stdexcept>

namespace foundation::network::operations {

using iri::detail::Draft;
using iri::detail::Form;
using iri::detail::Part;
using iri::detail::ValueAccess;

namespace {

[[noreturn]] void refuse(char const* message) {
    throw core::except::detail::makeInternalException(std::logic_error(message));
}

} // namespace

Assembly::Assembly(iri::detail::StoredText const& from)
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

IRI Assembly::assembled() const {
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Kind::exact);
    if (scheme) {
        draft.setScheme(*scheme);
    }
    if (userInfo) {
        if (!host) {
            refuse("User Info requires a host");
        }
        draft.setUserInfo(*userInfo, Form::iri);
    }
    if (host) {
        draft.setHost(*host, Form::iri);
    }
    if (port) {
        if (!host) {
            refuse("Port requires a host");
        }
        draft.setPort(*port, portNumber);
    }
    if (host && !path.empty() && path.front() != U'/') {
        refuse("Path cannot be relative if authority present");
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
