#pragma once

// What a refusal must tell: a reference implementation, which cuts a text at its delimiters and asks the
// parser, one character at a time, what a component can hold; and the laws of `tryParse`.

#include "support/Laws.hpp"

#include <foundation/network/ParseResult.hpp>
#include <foundation/network/Utf8.hpp>

#include <algorithm>
#include <optional>
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
class ReferenceFault {
public:
    explicit ReferenceFault(std::u32string of) : text(std::move(of)) {}

    ParseFault find() {
        std::size_t at = 0;
        std::size_t const colon = text.find_first_of(U":/?#");
        if (colon != text.npos && text[colon] == U':') {
            for (std::size_t i = 0; i != colon; ++i) {
                fault(!isIri(text.substr(0, i + 1) + U":"), i, C::Scheme, R::NotInScheme);
            }
            fault(colon == 0, 0, C::Scheme, R::EmptyScheme);
            at = colon + 1;
        }
        if (text.compare(at, 2, U"//") == 0) {
            std::size_t const end = std::min(text.find_first_of(U"/?#", at + 2), text.size());
            authority(at + 2, end);
            at = end;
        }
        std::size_t const query = std::min(text.find_first_of(U"?#", at), text.size());
        std::size_t const fragment = std::min(text.find(U'#', query), text.size());
        each(at, query, U"/", U"", C::Path, R::NotInPath);
        each(query + 1, fragment, U"?", U"", C::Query, R::NotInQuery);
        each(fragment + 1, text.size(), U"#", U"", C::Fragment, R::NotInFragment);
        require(found.has_value(), "a refusal without a fault", text);
        return *found;
    }

private:
    using C = IRIComponent;
    using R = ParseReason;

    // The first one counts.
    void fault(bool is, std::size_t at, C component, R reason) {
        if (is && !found) {
            found = {at, component, reason, at < text.size() ? text[at] : U'\0'};
        }
    }

    void authority(std::size_t begin, std::size_t const end) {
        std::size_t const at = std::min(text.find(U'@', begin), end);
        if (at != end) {
            each(begin, at, U"//", U"@", C::UserInfo, R::NotInUserInfo);
            begin = at + 1;
        }
        std::size_t behind = begin;
        if (begin != end && text[begin] == U'[') {
            behind = text.find(U']', begin) + 1;
            bool const closed = behind != 0 && behind <= end;
            fault(!closed || !isIri(U"//" + text.substr(begin, behind - begin)), begin, C::Host,
                  R::NotAnAddress);
            behind = closed ? behind : end;
        }
        std::u32string const rest = text.substr(behind, end - behind);
        std::size_t const colon = std::min(rest.rfind(U':'), rest.size());
        fault(behind != begin && colon != 0, behind, C::Host, R::NotInHost);
        each(behind, behind + colon, U"//@", U"", C::Host, R::NotInHost);
        std::u32string const port = colon == rest.size() ? U"1" : rest.substr(colon + 1);
        bool const digits = port.find_first_not_of(U"0123456789") == port.npos;
        fault(!isIri(U"//@h:" + port), behind + colon + 1, C::Port,
              port.empty() ? R::EmptyPort
              : digits     ? R::PortTooLarge
                           : R::NotInPort);
    }

    // Each character from `begin` to `end`, and in an authority each escape, can stand between the texts.
    void each(std::size_t begin, std::size_t end, std::u32string const& before, std::u32string const& behind,
              C component, R reason) {
        for (std::size_t i = begin; i < end && !found;) {
            std::size_t const length = before.starts_with(U"//") && text[i] == U'%' ? 3 : 1;
            fault(i + length > end || !isIri(before + text.substr(i, length) + behind), i, component,
                  length == 3 ? R::EscapeNotWhole : reason);
            i += length;
        }
    }

    std::u32string text;
    std::optional<ParseFault> found;
};

/// `tryParse` and the constructors take the same and refuse the same, in both encoding forms; the fault is
/// that of the reference implementation. Returns whether the text is an IRI.
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
    ParseFault expected = ReferenceFault(text).find();
    std::u16string const before = *toUtf16(text.substr(0, expected.offset));
    expected.offset = before.size();
    require(result.error() == expected, "another fault", text, result.error().describe());
    expected.offset = foundation::network::toUtf8(before).size();
    require(fromUtf8.error() == expected, "another fault in UTF-8", text, fromUtf8.error().describe());
    auto const words = thrown<std::logic_error>([&] { (void)foundation::network::iriFromUtf8(narrow); });
    require(words == "IRI parsing failed", "other words", text);
    return false;
}

} // namespace support
