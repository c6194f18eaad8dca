#pragma once

#include <foundation/network/IRI.hpp>
#include <foundation/network/ParseFault.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/Utf8.hpp>

#include <string>

namespace foundation::network::detail {

/// What `operator<<` writes for a value: the text of its formatters.
template <class Value>
std::string printed(Value const& value) {
    return value.toString();
}

inline std::string printed(IRI const& iri) {
    std::string text;
    for (char16_t const unit : iri.toAsciiString(false)) {
        text += unit < 0x80 ? static_cast<char>(unit) : '\x1A';
    }
    return text;
}

inline std::string printed(Utf8View const& view) {
    return view.toString(false);
}

inline std::string printed(ParseFault const& fault) {
    return fault.describe();
}

inline std::string printed(QueryParameters const& parameters) {
    return toUtf8(parameters.toQuery());
}

} // namespace foundation::network::detail
