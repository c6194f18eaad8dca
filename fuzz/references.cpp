// A resolution is that of RFC 3986 but for the named differences, and a relative reference gives its target
// back but for the named losses; to the letter there are neither, nor a refusal. All leave their operands as
// they were.

#include "Values.hpp"

#include "support/References.hpp"

int fuzz::holds(std::string_view input) {
    // The search for a shorter reference takes long: short inputs alone, of one length in four.
    bool const searches = input.size() <= 24 && input.size() % 4 == 0;
    auto const found = split(input, '\n');
    auto const left = found.size() == 2 ? valueOf(found[0]) : std::nullopt;
    auto const right = left ? valueOf(found[1]) : std::nullopt;
    if (!right) {
        return 0;
    }
    std::string const before = answers(*left) + answers(*right);
    IRI const target = resolveExactly(*left, *right);
    IRI const reference = makeRelativeExactly(*left, *right);
    if (support::canBeReadAgain(*left) && support::canBeReadAgain(*right)) {
        (void)unlessRefused<std::logic_error>([&] { return support::resolutionHolds(*left, *right); });
        (void)unlessRefused<std::logic_error>(
            [&] { return support::relativisationHolds(left->makeRelativeTo(*right), *left, *right); });
        (void)support::exactResolutionHolds(*left, *right);
        (void)support::exactRelativisationHolds(*left, *right, searches);
        support::isAsParsed(target, *right);
        support::isAsParsed(reference, target);
    }
    require(answers(*left) + answers(*right) == before, "an operand has changed", input);
    return 0;
}
