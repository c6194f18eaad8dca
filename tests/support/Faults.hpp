#pragma once

// What a refusal must tell: a plain twin that cuts a text as a reader does and asks the parser itself, one
// character at a time, what a component can hold; and the laws of `tryParse`.

#include "support/Laws.hpp"

#include <foundation/network/ParseResult.hpp>
#include <foundation/network/Utf8.hpp>

#include <algorithm>
#include <string>

namespace support {

using foundation::network::IRIComponent;
using foundation::network::ParseFault;
using foundation::network::ParseReason;
using foundation::network::ParseResult;
using foundation::network::tryParse;

// By `tryParse`, which `faultHolds` finds to take what the constructor takes, and which is quick to refuse.
inline bool isIri(std::u32string const& text) {
    return tryParse(*toUtf16(text)).has_value();
}

/// The fault of a text of whole characters that is no IRI. Offsets count code points.
class FaultTwin {
public:
    explicit FaultTwin(std::u32string of) : text(std::move(of)) {}

    ParseFault find() const {
        std::size_t at = 0;
        std::size_t const colon = text.find_first_of(U":/?#");
        if (colon != text.npos && text[colon] == U':') {
            for (std::size_t i = 0; i != colon; ++i) {
                if (!isIri(text.substr(0, i + 1) + U":")) {
                    return fault(i, IRIComponent::Scheme, ParseReason::NotInScheme);
                }
            }
            if (colon == 0) {
                return fault(0, IRIComponent::Scheme, ParseReason::EmptyScheme);
            }
            at = colon + 1;
        }
        ParseFault found;
        if (text.compare(at, 2, U"//") == 0) {
            std::size_t const end = std::min(text.find_first_of(U"/?#", at + 2), text.size());
            if (isInAuthority(at + 2, end, found)) {
                return found;
            }
            at = end;
        }
        std::size_t const query = std::min(text.find_first_of(U"?#", at), text.size());
        std::size_t const fragment = std::min(text.find(U'#', query), text.size());
        bool const isFound =
            isIn(at, query, U"/", U"", {}, IRIComponent::Path, ParseReason::NotInPath, found) ||
            isIn(query + 1, fragment, U"?", U"", {}, IRIComponent::Query, ParseReason::NotInQuery, found) ||
            isIn(fragment + 1, text.size(), U"#", U"", {}, IRIComponent::Fragment, ParseReason::NotInFragment,
                 found);
        require(isFound, "a refusal without a fault", text);
        return found;
    }

private:
    ParseFault fault(std::size_t at, IRIComponent component, ParseReason reason) const {
        return {at, component, reason, at < text.size() ? text[at] : U'\0'};
    }

    bool isInAuthority(std::size_t begin, std::size_t const end, ParseFault& found) const {
        std::size_t const at = std::min(text.find(U'@', begin), end);
        if (at != end) {
            if (isIn(begin, at, U"//", U"@", true, IRIComponent::UserInfo, ParseReason::NotInUserInfo,
                     found)) {
                return true;
            }
            begin = at + 1;
        }
        std::size_t behind = begin;
        if (begin != end && text[begin] == U'[') {
            behind = text.find(U']', begin) + 1;
            if (behind == 0 || behind > end || !isIri(U"//" + text.substr(begin, behind - begin))) {
                found = fault(begin, IRIComponent::Host, ParseReason::NotAnAddress);
                return true;
            }
        }
        std::u32string const rest = text.substr(behind, end - behind);
        std::size_t const colon = std::min(rest.rfind(U':'), rest.size());
        if (behind != begin && colon != 0) {
            found = fault(behind, IRIComponent::Host, ParseReason::NotInHost);
            return true;
        }
        if (isIn(behind, behind + colon, U"//@", U"", true, IRIComponent::Host, ParseReason::NotInHost,
                 found)) {
            return true;
        }
        std::u32string const port = colon == rest.size() ? U"1" : rest.substr(colon + 1);
        if (isIri(U"//@h:" + port)) {
            return false;
        }
        bool const digits = port.find_first_not_of(U"0123456789") == port.npos;
        found = fault(behind + colon + 1, IRIComponent::Port,
                      port.empty() ? ParseReason::EmptyPort
                      : digits     ? ParseReason::PortTooLarge
                                   : ParseReason::NotInPort);
        return true;
    }

    // Whether a character from `begin` to `end`, or an escape, is none that can stand between the texts.
    bool isIn(std::size_t begin, std::size_t end, std::u32string const& before, std::u32string const& behind,
              bool wholeEscapes, IRIComponent component, ParseReason reason, ParseFault& found) const {
        for (std::size_t i = begin; i < end;) {
            std::size_t const length = wholeEscapes && text[i] == U'%' ? 3 : 1;
            if (i + length > end || !isIri(before + text.substr(i, length) + behind)) {
                found = fault(i, component, length == 3 ? ParseReason::EscapeNotWhole : reason);
                return true;
            }
            i += length;
        }
        return false;
    }

    std::u32string text;
};

/// `tryParse` and the constructors take the same and refuse the same, in both encoding forms; the fault is
/// that of the twin. Returns whether the text is an IRI.
inline bool faultHolds(std::u32string const& text) {
    std::u16string const wide = *toUtf16(text);
    std::string const narrow = foundation::network::toUtf8(wide);
    ParseResult const result = tryParse(wide);
    ParseResult const fromUtf8 = tryParse(narrow);
    auto const iri = parsed(wide);
    require(result.has_value() == iri.has_value() && fromUtf8.has_value() == iri.has_value(),
            "taken by one and refused by another", text);
    if (iri) {
        require(*result == *iri && *fromUtf8 == *iri && foundation::network::iriFromUtf8(narrow) == *iri,
                "another value", text);
        return true;
    }
    ParseFault expected = FaultTwin(text).find();
    std::u16string const before = *toUtf16(text.substr(0, expected.offset));
    expected.offset = before.size();
    require(result.error() == expected, "another fault", text, result.error().describe(),
            expected.describe());
    expected.offset = foundation::network::toUtf8(before).size();
    require(fromUtf8.error() == expected, "another fault in UTF-8", text, fromUtf8.error().describe());
    auto const refusal = [](auto operation) { return thrown<std::logic_error>(operation); };
    require(refusal([&] { (void)result.value(); }) == "IRI parsing failed" &&
                refusal([&] { (void)foundation::network::iriFromUtf8(narrow); }) == "IRI parsing failed",
            "other words", text);
    return false;
}

} // namespace support
