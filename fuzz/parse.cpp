// A text is taken exactly where the plain matcher takes it, apart as the matcher does, and every form is that
// of the plain conversions.

#include "Input.hpp"

#include "support/ReferenceMatcher.hpp"
#include "support/StoredParts.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <array>

using foundation::network::iri::detail::portStringToNumeric;
using fuzz::require;
using fuzz::Text;
using support::Encoding;
using support::IRI;
namespace plain = support::plain;
using namespace std::string_view_literals;

namespace {

void partHolds(IRI const& iri, std::size_t number, std::optional<std::u32string> const& part) {
    constexpr std::array getters{&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery,
                                 &IRI::getFragment};
    constexpr std::array names{U"UserInfo"sv, U"Host"sv, U"Path"sv, U"Query"sv, U"Fragment"sv};
    for (Encoding const form : {Encoding::Raw, Encoding::Iri, Encoding::Uri}) {
        std::u32string const expected =
            part ? plain::expected(static_cast<int>(number), Encoding::Iri, form, *part)
                 : std::u32string(U"! Item not set: ").append(names.at(number));
        Text const given = plain::outcome([&] { return (iri.*getters.at(number))(form); });
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
        std::size_t number = 0;
        for (auto const& part : {match->userInfo, match->host, match->path, match->query, match->fragment}) {
            partHolds(*iri, number++, part);
        }
        support::formsHold(*iri);
        require(answers(*iri) == answers(IRI(text)), "depends on what was asked before", text);
    }
    return 0;
}
