// Equality, order and hash over a pool of values made in every way; copies, swaps and moves among them.

#include "Values.hpp"

int fuzz::holds(std::string_view input) {
    std::vector<IRI> pool(1);
    for (auto const line : split(input, '\n')) {
        if (auto iri = valueOf(line)) {
            pool.push_back(*iri);
        }
    }
    for (auto const& a : pool) {
        for (auto const& b : pool) {
            support::equalityHolds(a, b);
        }
    }
    for (std::size_t i = 0; i + 1 < pool.size(); i += 2) {
        support::valuesTravel(pool[i], pool[i + 1]);
    }
    return 0;
}
