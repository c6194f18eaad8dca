// A resolution is that of RFC 3986 but for the named differences, and a relative reference gives its target
// back but for the named losses; both leave their operands as they were.

#include "Values.hpp"

#include "support/References.hpp"

int fuzz::holds(std::string_view input) {
    auto const found = split(input, '\n');
    auto const left = found.size() == 2 ? valueOf(found[0]) : std::nullopt;
    auto const right = left ? valueOf(found[1]) : std::nullopt;
    if (right && support::canBeReadAgain(*left) && support::canBeReadAgain(*right)) {
        std::string const before = answers(*left) + answers(*right);
        (void)unlessRefused<std::logic_error>([&] { return support::resolutionHolds(*left, *right); });
        (void)unlessRefused<std::logic_error>(
            [&] { return support::relativisationHolds(left->makeRelativeTo(*right), *left, *right); });
        require(answers(*left) + answers(*right) == before, "an operand has changed", input);
    }
    return 0;
}
