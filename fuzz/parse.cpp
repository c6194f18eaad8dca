// A text is taken exactly where the plain matcher takes it, apart as the matcher does, and every form is that
// of the plain conversions.

#include "Input.hpp"

#include "support/ReferenceMatcher.hpp"
#include "support/StoredParts.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

using foundation::network::iri::detail::portStringToNumeric;
using fuzz::require;
using fuzz::Text;
using support::Encoding;
using support::IRI;
namespace plain = support::plain;

namespace {

void partHolds(IRI const& iri, int number, std::optional<std::u32string> const& part) {
    constexpr decltype(&IRI::getPath) getters[] = {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath,
                                                   &IRI::getQuery, &IRI::getFragment};
    constexpr char32_t const* names[] = {U"UserInfo", U"Host", U"Path", U"Query", U"Fragment"};
    for (Encoding const form : {Encoding::Raw, Encoding::Iri, Encoding::Uri}) {
        std::u32string const expected = part ? plain::expected(number, Encoding::Iri, form, *part)
                                             : std::u32string(U"! Item not set: ") + names[number];
        Text const given = plain::outcome([&] { return (iri.*getters[number])(form); });
        require(given == support::toUtf16(expected), "another form of a part", given, expected);
    }
}

} // namespace

int fuzz::holds(std::string_view input) {
    Text const text = units(input);
    std::u32string const native = codePoints(input);
    bool const sound = support::toUtf16(native).has_value();
    auto match = sound ? support::ReferenceMatcher::match(native) : std::nullopt;
    unsigned short port = 0;
    if (match && match->port && !portStringToNumeric(*match->port, port)) {
        match.reset();
    }
    std::optional<IRI> iri;
    try {
        iri.emplace(text);
    } catch (std::out_of_range const&) {
        require(!sound, "refused as no UTF-16", text);
    } catch (std::logic_error const&) {
        require(sound, "no UTF-16 was read", text);
    }
    require(iri.has_value() == match.has_value(), "taken or refused unlike the grammar", text);
    if (iri) {
        require(iri->toString(false) == text, "another text", text);
        int number = 0;
        for (auto const& part : {match->userInfo, match->host, match->path, match->query, match->fragment}) {
            partHolds(*iri, number++, part);
        }
        support::formsHold(*iri);
        require(answers(*iri) == answers(IRI(text)), "depends on what was asked before", text);
    }
    return 0;
}
