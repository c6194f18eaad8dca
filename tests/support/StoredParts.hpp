#pragma once

// The parts of an IRI as they are stored, by number, beside their plain conversions.

#include "support/Laws.hpp"
#include "support/PlainConversions.hpp"

#include <foundation/network/iri/detail/StringParts.hpp>

#include <string>
#include <type_traits>
#include <utility>

namespace support::plain {

using StringParts = foundation::network::iri::detail::StringParts<std::u32string>;

inline constexpr int userInfo = 0, host = 1, query = 3, fragment = 4;

inline void set(StringParts& parts, int part, Text text, Encoding encoding) {
    if (part == query || part == formEncoded) {
        return parts.setQuery(std::move(text), encoding, part == formEncoded);
    }
    auto const setter = part == userInfo ? &StringParts::setUserInfo
                        : part == host   ? &StringParts::setHost
                        : part == path   ? &StringParts::setPath
                                         : &StringParts::setFragment;
    (parts.*setter)(std::move(text), encoding);
}

inline Text const& get(StringParts const& parts, int part, Encoding encoding) {
    constexpr std::array getters{&StringParts::getUserInfo, &StringParts::getHost,
                                 &StringParts::getPath,     &StringParts::getQuery,
                                 &StringParts::getFragment, &StringParts::getQuery};
    return (parts.*getters.at(static_cast<std::size_t>(part)))(encoding);
}

// A text, or "! " and the words of what was thrown instead.
template <class Operation>
std::decay_t<std::invoke_result_t<Operation>> outcome(Operation operation) {
    try {
        return operation();
    } catch (std::exception const& e) {
        std::string const words = std::string("! ") + e.what();
        return {words.begin(), words.end()};
    }
}

inline Text converted(int part, Encoding from, Encoding to, Text const& text, bool schemePresent = false) {
    return outcome([&] {
        StringParts parts;
        set(parts, part, text, from);
        parts.setSchemePresent(schemePresent);
        return get(parts, part, to);
    });
}

inline Text expected(int part, Encoding from, Encoding to, Text const& text, bool bare = true) {
    return outcome([&] {
        Text const iri = from == Encoding::Raw   ? iriFromRaw(part, text, bare)
                         : from == Encoding::Uri ? iriFromUri(part, text, bare)
                                                 : text;
        return to == Encoding::Raw ? rawFromIri(part, iri) : to == Encoding::Uri ? toUriForm(iri) : iri;
    });
}

inline constexpr std::pair<Encoding, Encoding> conversions[] = {
    {Encoding::Raw, Encoding::Iri}, {Encoding::Raw, Encoding::Uri}, {Encoding::Iri, Encoding::Raw},
    {Encoding::Iri, Encoding::Uri}, {Encoding::Uri, Encoding::Iri}, {Encoding::Uri, Encoding::Raw}};

// Every part, from every form into every other, as the plain conversions have it.
inline void agreesEverywhere(Text const& text) {
    for (int part = userInfo; part <= formEncoded; ++part) {
        for (auto const& [from, to] : conversions) {
            require(converted(part, from, to, text) == expected(part, from, to, text),
                    "converted differently: part, from, to", std::u16string{u"012345"[part]},
                    std::u16string{u"012345"[int(from)]}, std::u16string{u"012345"[int(to)]}, text);
        }
    }
}

} // namespace support::plain
