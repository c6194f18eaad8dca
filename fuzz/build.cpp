// What was built can be read again but for the named losses, and taken apart and built again.

#include "Values.hpp"

int fuzz::holds(std::string_view input) {
    IRIArgs const args = argsOf(input);
    auto const built = unlessRefused<std::logic_error>([&] { return IRI(args); });
    if (built) {
        support::buildHolds(*built);
        std::string const before = answers(*built);
        require(answers(IRI(args)) == before, "depends on what was asked before", built->toString(false));
        if (auto const parts = unlessRefused<std::out_of_range>([&] { return IRIArgs(*built); })) {
            auto const again = unlessRefused<std::logic_error>([&] { return IRI(*parts); });
            require(!again ||
                        again->getPath(support::Encoding::Raw) == built->getPath(support::Encoding::Raw),
                    "another path comes back", built->toString(false));
        }
    }
    return 0;
}
