#pragma once

#include "support/Iris.hpp"

#include <foundation/network/IRIArgs.hpp>

#include <functional>
#include <sstream>
#include <vector>

namespace support {

using Question = std::function<std::u16string(IRI const& iri, IRI const& other)>;

inline std::u16string wide(std::string const& text) {
    return {text.begin(), text.end()};
}

/// Everything that a value can be asked, with another one where a question takes two.
inline std::vector<Question> questions() {
    using Text = std::u16string;
    std::vector<Question> all = {
        [](auto& iri, auto&) { return iri.toString(false); },
        [](auto& iri, auto&) { return iri.toString(true); },
        [](auto& iri, auto&) { return iri.toAsciiString(false); },
        [](auto& iri, auto&) { return iri.toAsciiString(true); },
        [](auto& iri, auto&) { return iri.getScheme() + iri.getPort(); },
        [](auto& iri, auto&) { return wide(std::to_string(iri.hashValue())); },
        [](auto& iri, auto&) { return wide(std::to_string(iri.getPortNumber())); },
        [](auto& iri, auto& other) { return Text(iri == other || iri != IRI(iri) ? u"same" : u"other"); },
        [](auto& iri, auto& other) { return Text(iri < other ? u"less" : u"not less"); },
        [](auto& iri, auto& other) {
            return Text(foundation::network::IRITextLess()(other, iri) ? u"greater" : u"not greater");
        },
        [](auto& iri, auto& other) { return iri.resolveAgainst(other).toString(true); },
        [](auto& iri, auto& other) { return other.resolveAgainst(iri).toString(true); },
        [](auto& iri, auto& other) { return iri.makeRelativeTo(other).toString(true); },
        [](auto& iri, auto& other) { return other.makeRelativeTo(iri).toString(true); },
        [](auto& iri, auto&) { return IRI(foundation::network::IRIArgs(iri)).getPath(Encoding::Uri); },
        [](auto& iri, auto&) {
            std::ostringstream stream;
            stream.exceptions(std::ios::badbit);
            stream << iri << iri.isOpaque();
            return wide(stream.str());
        }};
    for (Encoding const encoding : encodings) {
        for (auto const getter : {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery,
                                  &IRI::getFragment, &IRI::getAuthority, &IRI::getSchemeSpecificPart}) {
            all.emplace_back([=](auto& iri, auto&) { return (iri.*getter)(encoding); });
        }
    }
    return all;
}

} // namespace support
