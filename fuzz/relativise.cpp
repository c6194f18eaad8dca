// A reference gives its target back but for the named losses.

#include "Values.hpp"

#include "support/References.hpp"

int fuzz::holds(std::string_view input) {
    return onTwo(input, [](IRI const& iri, IRI const& base) {
        support::relativisationHolds(iri.makeRelativeTo(base), iri, base);
    });
}
