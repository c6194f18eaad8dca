#include "iri/grammar/PortReader.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <boost/spirit/include/qi_parse.hpp>
#include <boost/spirit/include/qi_uint.hpp>

namespace foundation::network::iri::grammar {

std::optional<unsigned short> readPort(std::u32string_view text) noexcept {
    static boost::spirit::qi::uint_parser<unsigned short> const port{};
    auto const* at = text.data();
    auto const* const end = at + text.size();
    unsigned short number = 0;
    if (!boost::spirit::qi::parse(at, end, port, number) || at != end) {
        return std::nullopt;
    }
    return number;
}

} // namespace foundation::network::iri::grammar

namespace foundation::network::iri::detail {

template <class String>
bool portStringToNumeric(String const& text, unsigned short& value) {
    auto const number = grammar::readPort(text);
    if (number) {
        value = *number;
    }
    return number.has_value();
}

template bool portStringToNumeric<std::u32string>(std::u32string const&, unsigned short&);

} // namespace foundation::network::iri::detail
