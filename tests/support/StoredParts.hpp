#pragma once

// The parts of an IRI as they are stored, by number, and the laws of their conversions.

#include "support/Laws.hpp"

#include <foundation/network/iri/detail/StringParts.hpp>

#include <array>
#include <string>

namespace support {

using StringParts = foundation::network::iri::detail::StringParts<std::u32string>;

enum StoredPart : std::size_t { userInfo, host, path, query, fragment, formEncoded };

// A text, or what was thrown instead: its words behind a mark that is no character and in no text of a test.
inline std::u32string refusal(std::string const& words) {
    return U'\xFFFFFFFF' + std::u32string(words.begin(), words.end());
}
template <class Operation>
std::u32string outcome(Operation operation) {
    try {
        return operation();
    } catch (std::exception const& e) {
        return refusal(e.what());
    }
}

inline std::u32string converted(std::size_t part, Encoding from, Encoding to, std::u32string const& text) {
    constexpr std::array setters{&StringParts::setUserInfo, &StringParts::setHost, &StringParts::setPath,
                                 &StringParts::setFragment, &StringParts::setFragment};
    constexpr std::array getters{&StringParts::getUserInfo, &StringParts::getHost,
                                 &StringParts::getPath,     &StringParts::getQuery,
                                 &StringParts::getFragment, &StringParts::getQuery};
    StringParts parts;
    if (part == query || part == formEncoded) {
        parts.setQuery(text, from, part == formEncoded);
    } else {
        (parts.*setters.at(part))(text, from);
    }
    return outcome([&] { return (parts.*getters.at(part))(to); });
}

// A conversion looks at characters and escapes, never at where they stand: letters before and behind change
// nothing.
inline void conversionsHold(std::u32string const& text, std::size_t before) {
    std::u32string const letters(before, U'z');
    for (std::size_t part = userInfo; part <= formEncoded; ++part) {
        for (Encoding const from : {Encoding::Raw, Encoding::Iri, Encoding::Uri}) {
            for (Encoding const to : {Encoding::Raw, Encoding::Iri, Encoding::Uri}) {
                std::u32string const plain = converted(part, from, to, text);
                std::u32string const framed = converted(part, from, to, letters + text + letters);
                require(framed == (plain.starts_with(U'\xFFFFFFFF') ? plain : letters + plain + letters),
                        "converted by its place: part, text", std::to_string(part), text, framed);
            }
        }
    }
}

} // namespace support
