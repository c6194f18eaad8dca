// A resolution is that of RFC 3986 but for the named differences.

#include "Values.hpp"

#include "support/References.hpp"

int fuzz::holds(std::string_view input) {
    return onTwo(input, &support::resolutionHolds);
}
