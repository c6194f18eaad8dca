// Values made in every way: what was built can be read again but for the named losses, and taken apart and
// built again; equality, order and hash over all; copies, swaps and moves among them.

#include "Values.hpp"

int fuzz::holds(std::string_view input) {
    constexpr auto Raw = support::Encoding::Raw;
    std::vector<IRI> pool(1);
    for (auto const line : split(input, '\n')) {
        if (auto iri = valueOf(line)) {
            pool.push_back(*iri);
        }
    }
    for (auto const& a : pool) {
        support::buildHolds(a);
        auto const parts = unlessRefused<std::exception>([&] { return IRIArgs(a); });
        auto const again =
            parts ? unlessRefused<std::logic_error>([&] { return IRI(*parts); }) : std::nullopt;
        require(!again || again->getPath(Raw) == a.getPath(Raw), "another path comes back",
                a.toString(false));
        for (auto const& b : pool) {
            support::equalityHolds(a, b);
        }
    }
    support::valuesTravel(pool.back(), pool[pool.size() / 2], [](IRI const& iri) { // whatever never throws
        return support::show(iri.toString(true) + iri.toAsciiString(false)) + support::traits(iri) +
               std::to_string(iri.hashValue());
    });
    return 0;
}
