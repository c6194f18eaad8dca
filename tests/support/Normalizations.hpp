#pragma once

// The laws of normalisation, for any value and any set of steps.

#include "support/References.hpp"

#include <foundation/network/Normalization.hpp>
#include <foundation/network/With.hpp>

#include <algorithm>
#include <string>

namespace support {

using foundation::network::areEquivalent;
using foundation::network::getEffectivePort;
using foundation::network::isSameOrigin;
using foundation::network::Normalization;
using foundation::network::normalize;

constexpr unsigned ALL_SETS = 32;

constexpr bool has(Normalization steps, Normalization step) {
    return (steps & step) == step;
}

inline Text inLowerCase(Text text) {
    for (char16_t& c : text) {
        c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    }
    return text;
}

// The bytes that a text in the Uri form stands for.
inline std::string bytesOf(Text const& uri) {
    std::string bytes;
    auto const digit = [&uri](std::size_t at) {
        return Text(u"0123456789abcdef").find(inLowerCase(uri.substr(at, 1)));
    };
    for (std::size_t at = 0; at < uri.size(); ++at) {
        bool const escape = isEscape(uri, at);
        bytes += static_cast<char>(escape ? digit(at + 1) * 16 + digit(at + 2) : uri[at]);
        at += escape ? 2 : 0;
    }
    return bytes;
}

// What must stand in a text as often as before, in the same order: what is reserved, and what is no character
// of an IRI or turns its text around.
inline Text markedOf(Text const& text) {
    Text marked;
    std::copy_if(text.begin(), text.end(), std::back_inserter(marked), [](char16_t c) {
        return Text(u":/?#[]@!$&'()*+,;=").find(c) != Text::npos || c < 0x21 || (c > 0x7E && c < 0xA0) ||
               c == 0x61C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
               (c >= 0x2066 && c <= 0x2069) || (c >= 0xE000 && c < 0xF900) || c >= 0xFFF0;
    });
    return marked;
}

// The same bytes, the same marks; the same text, or but for the case of letters, where no more was asked for.
inline bool isRespelt(Text const& before, Text const& beforeUri, Text const& after, Text const& afterUri,
                      Normalization steps) {
    bool const alike = has(steps, Normalization::Escapes) ? bytesOf(beforeUri) == bytesOf(afterUri)
                       : has(steps, Normalization::Case)  ? inLowerCase(before) == inLowerCase(after)
                                                          : before == after;
    return alike && markedOf(before) == markedOf(after);
}

inline bool isAscii(Text const& text) {
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
}

inline bool isPlainName(Text const& host) {
    return inLowerCase(host).find_first_not_of(u"abcdefghijklmnopqrstuvwxyz0123456789-_.") == Text::npos;
}

// Returns whether a step has changed anything. `thoroughly`: all answers are compared.
inline bool normalizationHolds(IRI const& iri, Normalization steps, bool thoroughly = false) {
    IRI const result = normalize(iri, steps);
    Text const before = iri.toString(false);
    Text const after = result.toString(false);
    IRI const again(after); // it can be read again,
    require(again == result && (!thoroughly || answers(again) == answers(result)), "another value", before,
            after);
    require(normalize(result, steps) == result, "not normal", before, after,
            normalize(result, steps).toString(false)); // is normal,
    require(areEquivalent(result, iri, steps), "not equivalent", before, after);
    if (!canBeReadAgain(iri)) { // what is escaped of it changes its parts
        return before != after;
    }
    bool const folds = has(steps, Normalization::Case);
    auto const folded = [&](Text const& text) { return folds ? inLowerCase(text) : text; };
    for (auto const there :
         {&IRI::hasScheme, &IRI::hasUserInfo, &IRI::hasHost, &IRI::hasQuery, &IRI::hasFragment}) {
        require((iri.*there)() == (result.*there)(), "another shape", before, after); // and has its parts,
    }
    require(getEffectivePort(iri) == getEffectivePort(result) &&
                (has(steps, Normalization::Scheme) || iri.hasPort() == result.hasPort()),
            "another port", before, after);
    for (std::size_t at = after.find(u'%'); folds && at != Text::npos; at = after.find(u'%', at + 1)) {
        Text const digits = after.substr(at, 3);
        require(!isEscape(after, at) || digits.find_first_of(u"abcdef") == Text::npos,
                "an escape in lower case", before, after);
    }
    require(!iri.hasScheme() || folded(iri.getScheme()) == folded(result.getScheme()), "another scheme",
            before, after);
    // which say what they said,
    auto const respelt = [&](bool there, Text (IRI::*get)(Encoding const&) const) {
        return !there || isRespelt((iri.*get)(Iri), (iri.*get)(Encoding::Uri), (result.*get)(Iri),
                                   (result.*get)(Encoding::Uri), steps);
    };
    require(respelt(iri.hasUserInfo(), &IRI::getUserInfo), "other user information", before, after);
    require(respelt(iri.hasQuery(), &IRI::getQuery), "another query", before, after);
    require(respelt(iri.hasFragment(), &IRI::getFragment), "another fragment", before, after);
    if (iri.hasHost()) {
        Text const host = result.getHost(Iri);
        Text const unconverted = normalize(iri, steps & ~Normalization::AsciiHost).getHost(Iri);
        if (host != unconverted) {
            require(has(steps, Normalization::AsciiHost) && isPlainName(host) && !isAscii(unconverted),
                    "another host", before, after);
        } else {
            Text const own = iri.getHost(Iri);
            auto const uri = [&](IRI const& of) { // escapes may hide letters from the folding
                std::string const bytes = bytesOf(of.getHost(Encoding::Uri));
                return folded(Text(bytes.begin(), bytes.end()));
            };
            require(uri(iri) == uri(result) && isRespelt(folded(own), u"", folded(host), u"", steps),
                    "a host that says something else", before, after);
            require(!iri.hasScheme() || own.empty() || isSameOrigin(iri, result), "another origin", before,
                    after);
        }
    }
    // and the path that the steps before lead to.
    if (has(steps, Normalization::Segments) && (iri.hasScheme() || iri.hasHost())) {
        IRI const dotted = normalize(iri, steps & ~Normalization::Segments);
        require(resolveExactly(dotted, IRI()).getPath(Iri) == result.getPath(Iri), "other dots", before,
                after);
    } else if (!iri.isEmpty()) {
        bool const becomesRoot = has(steps, Normalization::Scheme) && iri.hasHost() &&
                                 iri.getPath(Iri).empty() && getEffectivePort(withoutPort(iri));
        require(becomesRoot ? result.getPath(Iri) == u"/" : respelt(true, &IRI::getPath), "another path",
                before, after);
    }
    return before != after;
}

} // namespace support
