#include <foundation/network/ParseResult.hpp>

#include "iri/ReadText.hpp"
#include "iri/ValueAccess.hpp"
#include "operations/FindFault.hpp"
#include "text/CodePoints.hpp"
#include "text/Transcoding.hpp"

#include <array>
#include <cstdio>
#include <ostream>

namespace foundation::network {

using iri::detail::ValueAccess;

namespace {

// How many units of `form` the first `count` code points of a text take.
std::size_t unitsIn(std::u16string_view /*form*/, std::u32string_view text, std::size_t count) {
    std::size_t units = count;
    for (char32_t const c : text.substr(0, count)) {
        units += c > 0xFFFF ? 1U : 0U;
    }
    return units;
}
std::size_t unitsIn(std::string_view /*form*/, std::u32string_view text, std::size_t count) {
    std::size_t units = 0;
    for (char32_t const c : text.substr(0, count)) {
        units += text::utf8Length(c);
    }
    return units;
}

ParseFault noText(std::u16string_view text, std::size_t at) {
    return {at, IRIComponent::Text, ParseReason::NotUtf16, text[at]};
}
ParseFault noText(std::string_view utf8, std::size_t at) {
    return {at, IRIComponent::Text, ParseReason::NotUtf8, static_cast<unsigned char>(utf8[at])};
}

// What the message says of the character at fault.
char const* predicateOf(ParseFault const& fault) {
    switch (fault.reason) {
    case ParseReason::NotUtf16:
        return " is half of a surrogate pair alone";
    case ParseReason::NotUtf8:
        return " begins no well-formed UTF-8 sequence";
    case ParseReason::EmptyScheme:
        return " stands where a scheme should";
    case ParseReason::NotInScheme:
        return fault.offset == 0 ? " cannot begin a scheme" : " cannot stand in a scheme";
    case ParseReason::NotInUserInfo:
        return " cannot stand in user information";
    case ParseReason::NotInHost:
        return " cannot stand in a host";
    case ParseReason::NotAnAddress:
        return " begins no address in brackets";
    case ParseReason::EmptyPort:
        return " stands where a port should";
    case ParseReason::NotInPort:
        return " begins a port that is no number";
    case ParseReason::PortTooLarge:
        return " begins a port above 65535";
    case ParseReason::NotInPath:
        return " cannot stand in a path";
    case ParseReason::NotInQuery:
        return " cannot stand in a query";
    case ParseReason::NotInFragment:
        return " cannot stand in a fragment";
    default:
        return " begins no whole escape";
    }
}

} // namespace

std::string ParseFault::describe() const {
    std::array<char, 16> name{"The end"}; // a fault at the end of the text is a missing port
    if (reason == ParseReason::NotUtf8) {
        std::snprintf(name.data(), name.size(), "Byte 0x%02X", static_cast<unsigned>(character));
    } else if (character != 0 || reason != ParseReason::EmptyPort) {
        std::snprintf(name.data(), name.size(), "U+%04X", static_cast<unsigned>(character));
    }
    return std::string(name.data()) + predicateOf(*this) + ", at offset " + std::to_string(offset);
}

std::ostream& operator<<(std::ostream& stream, ParseFault const& fault) {
    return stream << fault.describe();
}

template <class Unit>
ParseResult::ParseResult(std::basic_string_view<Unit> text) : iri(std::in_place) {
    iri::detail::StoredText& stored = ValueAccess::stored(*iri);
    iri::ReadOutcome const outcome = iri::readText(text, stored);
    if (outcome.isIri) {
        return;
    }
    if (outcome.malformedAt != text::noFault) {
        fault = noText(text, outcome.malformedAt);
        if constexpr (sizeof(Unit) == sizeof(char16_t)) {
            misplacedUnit = text::misplacedUnit(text, outcome.malformedAt);
        }
    } else {
        fault = operations::findFault(stored);
        if (text.size() != stored.text.size()) {
            fault.offset = unitsIn(text, stored.text, fault.offset);
        }
    }
    iri.reset();
}

void ParseResult::refuse() const {
    switch (fault.reason) {
    case ParseReason::NotUtf16:
        text::throwNotUtf16(misplacedUnit);
    case ParseReason::NotUtf8:
        text::throwNotUtf8();
    default:
        iri::throwParsingFailed();
    }
}

ParseResult tryParse(std::u16string_view text) {
    return ParseResult(text);
}

ParseResult tryParse(std::string_view utf8) {
    return ParseResult(utf8);
}

} // namespace foundation::network
