#pragma once

// What tests of IRI values share.

#include "support/Show.hpp"

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/IRI.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace support {

using foundation::network::Encoding;
using foundation::network::IRI;

inline constexpr Encoding encodings[] = {Encoding::Raw, Encoding::Iri, Encoding::IriStrict, Encoding::Uri,
                                         Encoding::UriStrict};

/// The words of an exception of the family that is an Std.
template <class Std, class Operation>
std::string thrown(Operation operation) {
    try {
        operation();
    } catch (foundation::core::except::detail::AnonymousInternalException<Std> const& e) {
        return e.what();
    }
    return "nothing thrown";
}

/// A text as UTF-16, where it has such a form.
inline std::optional<std::u16string> toUtf16(std::u32string const& text) {
    std::u16string utf16;
    for (char32_t const c : text) {
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
            return std::nullopt;
        }
        if (c > 0xFFFF) {
            utf16 += {static_cast<char16_t>(0xD7C0 + (c >> 10)), static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
        } else {
            utf16 += static_cast<char16_t>(c);
        }
    }
    return utf16;
}

/// The IRI of a text, where it is one.
inline std::optional<IRI> parsed(std::optional<std::u16string> const& text) {
    try {
        return text ? std::optional<IRI>(IRI(*text)) : std::nullopt;
    } catch (std::logic_error const&) {
        return std::nullopt;
    }
}

/// A letter for each predicate that holds.
inline std::string traits(IRI const& iri) {
    constexpr std::pair<char, bool (IRI::*)() const> predicates[] = {
        {'e', &IRI::isEmpty},         {'s', &IRI::hasScheme}, {'A', &IRI::hasAuthority},
        {'a', &IRI::isAbsolute},      {'o', &IRI::hasPort},   {'q', &IRI::hasQuery},
        {'f', &IRI::hasFragment},     {'h', &IRI::hasHost},   {'u', &IRI::hasUserInfo},
        {'p', &IRI::hasAbsolutePath}, {'O', &IRI::isOpaque}};
    std::string letters;
    for (auto const& [letter, predicate] : predicates) {
        letters.append((iri.*predicate)() ? 1 : 0, letter);
    }
    return letters;
}

/// Everything that a value answers, in one text.
inline std::string answers(IRI const& iri) {
    std::string all;
    auto const ask = [&all](auto getter) {
        try {
            all += show(getter()) + '|';
            return true;
        } catch (std::exception const& e) {
            all += std::string("! ") + e.what() + '|';
            return !dynamic_cast<std::runtime_error const*>(&e); // the part is there, this form is not
        }
    };
    for (auto const getter : {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery,
                              &IRI::getFragment, &IRI::getAuthority, &IRI::getSchemeSpecificPart}) {
        bool present = true;
        for (Encoding const encoding : encodings) {
            present = present && ask([&] { return (iri.*getter)(encoding); });
        }
    }
    for (bool const strict : {false, true}) {
        ask([&] { return iri.toString(strict); });
        ask([&] { return iri.toAsciiString(strict); });
    }
    ask([&] { return iri.getScheme(); });
    ask([&] { return iri.getPort(); });
    return all + traits(iri) + std::to_string(iri.hashValue());
}

} // namespace support
