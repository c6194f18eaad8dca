#pragma once

#include <foundation/network/IRI.hpp>

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

} // namespace foundation::network::detail
