#include <foundation/network/ParseResult.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "iri/ReadText.hpp"
#include "iri/ValueAccess.hpp"
#include "operations/FindFault.hpp"
#include "text/CodePoints.hpp"
#include "text/Transcoding.hpp"

#include <array>
#include <cstdio>
#include <ostream>
#include <stdexcept>

namespace foundation::network {

using iri::detail::ValueAccess;

namespace {

// How many units the first `count` code points of a text take.
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

// The sentence up to the place; the character stands for the "%s".
char const* sentenceOf(ParseFault const& fault) {
    switch (fault.reason) {
    case ParseReason::NotUtf16:
        return "%s is half of a surrogate pair alone";
    case ParseReason::NotUtf8:
        return "%s begins no well-formed UTF-8 sequence";
    case ParseReason::EmptyScheme:
        return "%s stands where a scheme should";
    case ParseReason::NotInScheme:
        return fault.offset == 0 ? "%s cannot begin a scheme" : "%s cannot stand in a scheme";
    case ParseReason::NotInUserInfo:
        return "%s cannot stand in user information";
    case ParseReason::NotInHost:
        return "%s cannot stand in a host";
    case ParseReason::NotAnAddress:
        return "%s begins no address in brackets";
    case ParseReason::EmptyPort:
        return "%s stands where a port should";
    case ParseReason::NotInPort:
        return "%s begins a port that is no number";
    case ParseReason::PortTooLarge:
        return "%s begins a port above 65535";
    case ParseReason::NotInPath:
        return "%s cannot stand in a path";
    case ParseReason::NotInQuery:
        return "%s cannot stand in a query";
    case ParseReason::NotInFragment:
        return "%s cannot stand in a fragment";
    default:
        return "%s begins no whole escape";
    }
}

} // namespace

std::string ParseFault::describe() const {
    std::array<char, 16> name{"The end"}; // only a port can be missing there
    if (reason == ParseReason::NotUtf8) {
        std::snprintf(name.data(), name.size(), "Byte 0x%02X", static_cast<unsigned>(character));
    } else if (character != 0 || reason != ParseReason::EmptyPort) {
        std::snprintf(name.data(), name.size(), "U+%04X", static_cast<unsigned>(character));
    }
    std::array<char, 96> sentence{};
    int const length = std::snprintf(sentence.data(), sentence.size(), sentenceOf(*this), name.data());
    return std::string(sentence.data(), static_cast<std::size_t>(length)) + ", at offset " +
           std::to_string(offset);
}

std::ostream& operator<<(std::ostream& stream, ParseFault const& fault) {
    return stream << fault.describe();
}

template <class Unit>
ParseResult::ParseResult(std::basic_string_view<Unit> text) : iri(std::in_place) {
    iri::detail::StoredText& stored = ValueAccess::stored(*iri);
    iri::ReadOutcome const outcome = iri::readText(text, stored);
    if (outcome.taken) {
        return;
    }
    if (outcome.notText != text::NO_FAULT) {
        fault = noText(text, outcome.notText);
        if constexpr (sizeof(Unit) == sizeof(char16_t)) {
            misplacedUnit = text::misplacedUnit(text, outcome.notText);
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
        throw core::except::detail::makeInternalException(std::logic_error("IRI parsing failed"));
    }
}

ParseResult tryParse(std::u16string_view text) {
    return ParseResult(text);
}

ParseResult tryParse(std::string_view utf8) {
    return ParseResult(utf8);
}

} // namespace foundation::network
