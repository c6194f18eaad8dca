// What each set of steps makes of a value keeps the laws of normalisation, and leaves the value as it was.

#include "Values.hpp"

#include "support/Normalizations.hpp"

int fuzz::holds(std::string_view input) {
    if (auto const iri = valueOf(input)) {
        Text const before = iri->toString(false);
        for (unsigned set = 0; set != support::ALL_SETS; ++set) {
            support::normalizationHolds(*iri, static_cast<support::Normalization>(set),
                                        set == input.size() % support::ALL_SETS);
        }
        require(iri->toString(false) == before, "an operand has changed", input);
    }
    return 0;
}
