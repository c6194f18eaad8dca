#pragma once

// What tests of IRI values share.

#include "support/Show.hpp"

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/References.hpp>
#include <foundation/network/Utf8.hpp>

#include <functional>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

/// The text that an operation gives, or "! " and the words of what it throws.
template <class Operation>
std::string said(Operation operation) {
    try {
        return show(operation());
    } catch (std::exception const& e) {
        return std::string("! ") + e.what();
    }
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

inline std::u16string wide(std::string const& text) {
    return {text.begin(), text.end()};
}

/// Everything that a value can be asked, with another one where a question takes two.
using Question = std::function<std::u16string(IRI const& iri, IRI const& other)>;
inline std::vector<Question> questions() {
    std::vector<Question> all = {
        [](auto& iri, auto&) { return iri.toString(false); },
        [](auto& iri, auto&) { return iri.toString(true); },
        [](auto& iri, auto&) { return iri.toAsciiString(false); },
        [](auto& iri, auto&) { return iri.toAsciiString(true); },
        [](auto& iri, auto&) { return iri.getScheme() + iri.getPort(); },
        [](auto& iri, auto&) { return wide(traits(iri) + std::to_string(iri.hashValue())); },
        [](auto& iri, auto&) { return wide(std::to_string(iri.getPortNumber())); },
        [](auto& iri, auto& other) { return wide(std::to_string((iri == other) + 2 * (iri < other))); },
        [](auto& iri, auto& other) {
            return wide(std::to_string(foundation::network::IRITextLess()(other, iri)));
        },
        [](auto& iri, auto& other) { return iri.resolveAgainst(other).toString(true); },
        [](auto& iri, auto& other) { return other.resolveAgainst(iri).toString(true); },
        [](auto& iri, auto& other) { return iri.makeRelativeTo(other).toString(true); },
        [](auto& iri, auto& other) { return other.makeRelativeTo(iri).toString(true); },
        [](auto& iri, auto& other) { return resolveExactly(iri, other).toString(false); },
        [](auto& iri, auto& other) { return makeRelativeExactly(other, iri).toString(false); },
        [](auto& iri, auto&) { return foundation::network::fromUtf8(utf8(iri).toString(true)); },
        [](auto& iri, auto&) { return IRI(foundation::network::IRIArgs(iri)).getPath(Encoding::Uri); },
        [](auto& iri, auto&) {
            std::ostringstream stream;
            stream.exceptions(std::ios::badbit);
            stream << iri;
            return wide(stream.str());
        }};
    // What is absent is refused in every encoding alike, and asked for in one: exceptions take long.
    using Component = std::pair<bool (IRI::*)() const, std::u16string (IRI::*)(Encoding const&) const>;
    constexpr Component components[] = {{&IRI::hasUserInfo, &IRI::getUserInfo},
                                        {&IRI::hasHost, &IRI::getHost},
                                        {nullptr, &IRI::getPath},
                                        {&IRI::hasQuery, &IRI::getQuery},
                                        {&IRI::hasFragment, &IRI::getFragment},
                                        {&IRI::hasHost, &IRI::getAuthority},
                                        {nullptr, &IRI::getSchemeSpecificPart}};
    for (Encoding const encoding : encodings) {
        for (auto const& [has, get] : components) {
            all.emplace_back([has = has, get = get, encoding](auto& iri, auto&) {
                bool const asks = encoding == Encoding::Iri || has == nullptr || (iri.*has)();
                return asks ? (iri.*get)(encoding) : u"";
            });
        }
    }
    return all;
}

/// Everything that a value answers, in one text.
inline std::string answers(IRI const& iri) {
    static std::vector<Question> const all = questions();
    std::string text;
    for (auto const& question : all) {
        text += said([&] { return question(iri, iri); }) + '|';
    }
    return text;
}

} // namespace support
